#include "gui/display/SingleLineModeController.h"

#include "core/app/AppState.h"
#include "core/display/DisplayFont.h"
#include "core/display/SingleLineGeometry.h"
#include "core/settings/Settings.h"
#include "gui/display/BackgroundDragMover.h"
#include "gui/display/ClickToFocus.h"
#include "gui/display/FloatingWindow.h"
#include "gui/display/SingleLineView.h"
#include "gui/display/WindowFrameAutosave.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

namespace {
QRect mainScreenFrame()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect(0, 0, 1024, 768);
}

// The strip's window: asks to be on every desktop each time it is shown.
class StripWindow : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void showEvent(QShowEvent* event) override
    {
        FloatingWindow::showOnAllDesktops(this);
        QWidget::showEvent(event);
    }
};
} // namespace

SingleLineModeController::SingleLineModeController(Settings* settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
{
}

SingleLineModeController::~SingleLineModeController() = default;

Settings& SingleLineModeController::settings() const
{
    return m_settings ? *m_settings : AppSetting();
}

QSettings* SingleLineModeController::store() const
{
    return &settings().store().settings();
}

std::unique_ptr<QWidget> SingleLineModeController::bordlessWindow(const QRect& contentRect)
{
    auto window = std::make_unique<StripWindow>();
    FloatingWindow::apply(window.get(), false);
    window->setWindowTitle(QStringLiteral("Versewick"));
    window->setWindowOpacity(1.0);
    auto* autosave = new WindowFrameAutosave(window.get(), QLatin1String(kFrameName), store());
    new BackgroundDragMover(window.get());
    new ClickToFocus(window.get()); // the keys "-"/"+" after a click on the plate
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens << screen->geometry();
    window->setGeometry(SingleLineGeometry::initialFrame(mainScreenFrame(), contentRect.size(),
                                                         autosave->savedFrame(), screens));
    return window;
}

QWidget* SingleLineModeController::window()
{
    if (!m_window)
        loadWindow();
    return m_window.get();
}

void SingleLineModeController::loadWindow()
{
    if (m_window)
        return;
    m_window = bordlessWindow(SingleLineGeometry::contentRect(mainScreenFrame()));
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    m_view = new SingleLineView(m_window.get());
    layout->addWidget(m_view);
    connect(m_view, &SingleLineView::inputRectChanged, this, &SingleLineModeController::applyShape);
    updateFromSettings();
    applyShape(m_view->inputRect());
}

// Only what is drawn is part of the window: clicks elsewhere reach the windows below, and
// without a compositor (which would show the transparent rest as black) nothing else is
// painted. A shape cannot be empty, so a blank strip keeps one corner pixel.
void SingleLineModeController::applyShape(const QRect& shown)
{
    if (!m_window)
        return;
    const QRegion region = QRegion(shown).united(m_overlay);
    m_window->setMask(region.isEmpty() ? QRegion(0, 0, 1, 1) : region);
}

void SingleLineModeController::setOverlay(const QRect& area)
{
    m_overlay = area;
    applyShape(m_view ? m_view->inputRect() : QRect());
}

void SingleLineModeController::followState(const AppState* state)
{
    m_state = state;
}

void SingleLineModeController::setContent(const QString& text)
{
    if (!m_window)
        loadWindow();
    m_view->setString(text);
    // A hidden strip runs no frames.
    if (m_state)
        m_view->karaoke().follow(m_window->isVisible() ? m_state->litLine() : KaraokeLine(),
                                 m_state->position());
}

void SingleLineModeController::updateFromSettings()
{
    if (!m_view)
        return;
    m_view->setFont(DisplayFont::fromSetting(settings().fontSingleLine()));
    m_view->setShowBG(settings().isShowSingleLineBG());
    m_view->setFillColors(settings().lyricHighlightColor(), settings().lyricNormalColor());
}
