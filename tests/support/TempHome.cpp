#include "support/TempHome.h"

#include <QFile>
#include <QStringList>

#include <mutex>

TempHome::TempHome() = default;

QString TempHome::write(const QString& name, const QByteArray& bytes) const {
    const QString path = filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

namespace {
std::mutex gMutex;
QStringList gLines;
QtMessageHandler gPrevious = nullptr;

void capture(QtMsgType, const QMessageLogContext&, const QString& message) {
    std::lock_guard lock(gMutex);
    gLines.append(message);
}
} // namespace

MessageCapture::MessageCapture() {
    std::lock_guard lock(gMutex);
    gLines.clear();
    gPrevious = qInstallMessageHandler(capture);
}

MessageCapture::~MessageCapture() {
    qInstallMessageHandler(gPrevious);
}

QStringList MessageCapture::lines() const {
    std::lock_guard lock(gMutex);
    return gLines;
}
