#include "core/app/AppDBusService.h"

#include "core/app/AppDelegate.h"
#include "core/app/SyncControls.h"
#include "core/foundation/RegularFile.h"
#include "core/foundation/SystemLog.h"
#include "core/lyric/Lyric.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTimer>

AppDBusService::AppDBusService(AppDelegate& delegate)
    : QDBusAbstractAdaptor(&delegate)
    , m_delegate(delegate)
{
    setAutoRelaySignals(false);
    AppState& state = delegate.state();
    connect(&state, &AppState::changed, this, &AppDBusService::propertyChanged);
    connect(&state, &AppState::lineChanged, this, &AppDBusService::LineChanged);
}

AppDBusService::~AppDBusService()
{
    unpublish();
}

bool AppDBusService::publish(QDBusConnection bus)
{
    if (m_published)
        return true;
    QDBusConnectionInterface* daemon = bus.interface();
    if (!bus.isConnected() || !daemon)
        return false;
    // Taken, also by this very connection (asking again would answer "already owner").
    if (daemon->isServiceRegistered(QLatin1String(kServiceName)).value())
        return false;
    const auto reply = daemon->registerService(QLatin1String(kServiceName),
                                               QDBusConnectionInterface::DontQueueService,
                                               QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceRegistered)
        return false;
    if (!bus.registerObject(QLatin1String(kObjectPath), &m_delegate,
                            QDBusConnection::ExportAdaptors)) {
        daemon->unregisterService(QLatin1String(kServiceName));
        foundation::systemLog(QStringLiteral("could not export %1 on the session bus")
                                  .arg(QLatin1String(kObjectPath)));
        return false;
    }
    m_bus = bus;
    m_published = true;
    return true;
}

void AppDBusService::unpublish()
{
    if (!m_published)
        return;
    m_bus.unregisterObject(QLatin1String(kObjectPath));
    m_bus.unregisterService(QLatin1String(kServiceName));
    m_published = false;
}

void AppDBusService::propertyChanged(const QString& name, const QVariant& value)
{
    if (!m_published)
        return;
    QDBusMessage signal = QDBusMessage::createSignal(
        QLatin1String(kObjectPath), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"));
    signal << QLatin1String(kInterface) << QVariantMap{{name, value}} << QStringList();
    m_bus.send(signal);
}

int AppDBusService::sourceKind() const
{
    return m_delegate.state().sourceKind();
}
QString AppDBusService::sourceName() const
{
    return m_delegate.state().sourceName();
}
QString AppDBusService::artist() const
{
    return m_delegate.state().artist();
}
QString AppDBusService::title() const
{
    return m_delegate.state().title();
}
QString AppDBusService::panelTitle() const
{
    return m_delegate.state().panelTitle();
}
QString AppDBusService::status() const
{
    return m_delegate.state().status();
}
bool AppDBusService::lyricLoaded() const
{
    return m_delegate.state().lyricLoaded();
}
int AppDBusService::lyricOrigin() const
{
    return m_delegate.state().lyricOrigin();
}
int AppDBusService::lineIndex() const
{
    return m_delegate.state().lineIndex();
}
QString AppDBusService::line() const
{
    return m_delegate.state().line();
}
double AppDBusService::lineProgress() const
{
    return m_delegate.state().lineProgress();
}
double AppDBusService::position() const
{
    return m_delegate.state().position();
}
int AppDBusService::mode() const
{
    return m_delegate.state().mode();
}
bool AppDBusService::lyricWindowVisible() const
{
    return m_delegate.state().lyricWindowVisible();
}
QString AppDBusService::pluginInfo() const
{
    return m_delegate.state().pluginInfo();
}
bool AppDBusService::synced() const
{
    return m_delegate.state().synced();
}

double AppDBusService::offset() const
{
    return m_delegate.state().offset();
}

QString AppDBusService::Lyric()
{
    const ::Lyric* lyric = m_delegate.lyric();
    return lyric && m_delegate.lrcAvailable() && !lyric->contents().isNull() ? lyric->contents()
                                                                             : QStringLiteral("");
}

void AppDBusService::refuse(const QDBusMessage& call, const QString& why)
{
    call.setDelayedReply(true);
    m_bus.send(call.createErrorReply(QDBusError::InvalidArgs, why));
}

void AppDBusService::SetLyric(const QString& text, const QDBusMessage& message)
{
    // UTF-8 takes at most three bytes per UTF-16 unit: most texts are judged without encoding.
    if (text.size() > foundation::kMaxLyricBytes / 3 &&
        (text.size() > foundation::kMaxLyricBytes ||
         text.toUtf8().size() > foundation::kMaxLyricBytes)) {
        refuse(message, QStringLiteral("A lyric may have at most %1 bytes of UTF-8 text")
                            .arg(foundation::kMaxLyricBytes));
        return;
    }
    m_delegate.setupLRCcontent(text);
}

void AppDBusService::ToggleLyricsWindow()
{
    m_delegate.toggleLyricsWindow();
}

void AppDBusService::SetMode(int mode, const QDBusMessage& message)
{
    if (mode != 0 && mode != 1) {
        refuse(
            message,
            QStringLiteral("The mode is 0 (scrolling panel) or 1 (single line), not %1").arg(mode));
        return;
    }
    m_delegate.changeLrcMode(mode == 0 ? StatusMenuItem::ModeStream : StatusMenuItem::ModeLine);
}

void AppDBusService::ShowSearchWindow()
{
    m_delegate.showSearchWindow();
}

void AppDBusService::ShowLyricManager()
{
    m_delegate.showLyricManager();
}

void AppDBusService::ShowEditor()
{
    m_delegate.showLyricEditor();
}

void AppDBusService::ShowPreferences()
{
    m_delegate.showPreferencePanel();
}

void AppDBusService::Quit()
{
    // After the reply has gone out.
    QTimer::singleShot(0, &m_delegate, [d = &m_delegate] { Q_EMIT d->quitRequested(); });
}

QString AppDBusService::secondaryLine() const
{
    return m_delegate.state().secondaryLine();
}

void AppDBusService::offsetRefused(const QDBusMessage& call, double value)
{
    refuse(call, QStringLiteral("No offset of %1 s: an offset is a number of seconds within "
                                "%2 and %3, for a lyric that is shown")
                     .arg(value)
                     .arg(-offsetnudge::kLimit)
                     .arg(offsetnudge::kLimit));
}

void AppDBusService::NudgeOffset(double delta, const QDBusMessage& message)
{
    if (!m_delegate.sync().nudgeOffset(delta))
        offsetRefused(message, delta);
}

void AppDBusService::SetOffset(double seconds, const QDBusMessage& message)
{
    if (!m_delegate.sync().setOffset(seconds))
        offsetRefused(message, seconds);
}

std::function<void(bool)> AppDBusService::replyLater(const QDBusMessage& call)
{
    call.setDelayedReply(true);
    return [bus = m_bus, call](bool moved) mutable { bus.send(call.createReply(moved)); };
}

bool AppDBusService::Seek(double seconds, const QDBusMessage& message)
{
    m_delegate.sync().seek(seconds, replyLater(message));
    return false; // not sent: the reply is delayed
}

bool AppDBusService::SeekToLine(int index, const QDBusMessage& message)
{
    m_delegate.sync().seekToLine(index, replyLater(message));
    return false;
}
