#include "gui/display/AppController.h"

#include "core/app/AppTexts.h"
#include "core/display/DisplayFont.h"
#include "core/settings/Settings.h"
#include "gui/display/LRCView.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

AppController::AppController(Settings* settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
{
}

AppController::~AppController()
{
    if (m_ownsWindow)
        delete m_window.data();
}

void AppController::applicationDidFinishLaunching(QWidget* host)
{
    if (m_window)
        return;
    m_window = new QWidget(host);
    m_ownsWindow = !host;
    m_window->setAttribute(Qt::WA_TranslucentBackground);
    m_window->setAutoFillBackground(false);
    if (host) {
        auto* hostLayout = qobject_cast<QVBoxLayout*>(host->layout());
        if (!hostLayout) {
            delete host->layout();
            hostLayout = new QVBoxLayout(host);
            hostLayout->setContentsMargins(0, 0, 0, 0);
        }
        hostLayout->addWidget(m_window);
    } else if (QScreen* screen = QGuiApplication::primaryScreen()) {
        m_window->setGeometry(screen->availableGeometry());
    }
    auto* layout = new QVBoxLayout(m_window);
    layout->setContentsMargins(0, 0, 0, 0);
    m_lrcView = new LRCView(m_window);
    layout->addWidget(m_lrcView);
    updateConfigs();
    m_window->show();
}

void AppController::setParser(Lyric* parser)
{
    if (!m_lrcView)
        return;
    m_lrcView->setParser(parser);
}

void AppController::updateTime(float seconds)
{
    if (m_lrcView)
        m_lrcView->updatePlayerTime(seconds);
}

void AppController::setInfo(const QString& text)
{
    if (!m_lrcView)
        return;
    // No player at all: a new user also learns what makes lyrics appear.
    const bool noPlayer = !text.isEmpty() && text == apptext::tr(apptext::kITunesNotRunning);
    m_lrcView->setDefaultString(
        text.isNull() ? QStringLiteral("") : text,
        noPlayer ? tr("Play a song in any MPRIS player (mpv, VLC, Rhythmbox, Spotify...)")
                 : QString());
}

void AppController::updateConfigs()
{
    if (!m_lrcView)
        return;
    Settings& settings = m_settings ? *m_settings : AppSetting();
    m_lrcView->setFont(DisplayFont::fromSetting(settings.lyricFont()));
    // A colour emptied by a settings upgrade keeps the view's own, so the text stays visible.
    if (settings.lyricHighlightColor().isValid())
        m_lrcView->setColorHeight(settings.lyricHighlightColor());
    if (settings.lyricNormalColor().isValid())
        m_lrcView->setColorNormal(settings.lyricNormalColor());
    m_lrcView->setCellPadding(settings.lyricCellHeight());
    m_lrcView->refresh();
}
