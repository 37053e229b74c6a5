#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>

// Widgets need a QApplication; offscreen unless a display is given (screenshots).
int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int status = RUN_ALL_TESTS();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return status;
}
