#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <functional>

class AppDelegate;

// The running application on the session bus: name com.morvane.Versewick, object
// /com/morvane/Versewick, interface com.morvane.Versewick.Lyrics. Its properties mirror the
// controller's state; all but Position signal PropertiesChanged. Methods that need a window do
// nothing where there is none. Arguments out of range are refused with a D-Bus error before any
// work: SetLyric takes at most foundation::kMaxLyricBytes of UTF-8, SetMode only 0 or 1.
class AppDBusService : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.morvane.Versewick.Lyrics")
    Q_PROPERTY(int SourceKind READ sourceKind)
    Q_PROPERTY(QString SourceName READ sourceName)
    Q_PROPERTY(QString Artist READ artist)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString PanelTitle READ panelTitle)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(bool LyricLoaded READ lyricLoaded)
    Q_PROPERTY(int LyricOrigin READ lyricOrigin)
    Q_PROPERTY(int LineIndex READ lineIndex)
    Q_PROPERTY(QString Line READ line)
    Q_PROPERTY(double Position READ position)
    Q_PROPERTY(int Mode READ mode)
    Q_PROPERTY(bool LyricWindowVisible READ lyricWindowVisible)
    Q_PROPERTY(QString PluginInfo READ pluginInfo)
    Q_PROPERTY(QString SecondaryLine READ secondaryLine)
    Q_PROPERTY(double Offset READ offset)
    Q_PROPERTY(double LineProgress READ lineProgress)
    Q_PROPERTY(bool Synced READ synced)

public:
    static constexpr char kServiceName[] = "com.morvane.Versewick";
    static constexpr char kObjectPath[] = "/com/morvane/Versewick";
    static constexpr char kInterface[] = "com.morvane.Versewick.Lyrics";

    // Attaches to the controller (its parent); publish() puts it on a bus.
    explicit AppDBusService(AppDelegate& delegate);
    // Gives the name and the object back, so that a later controller can publish.
    ~AppDBusService() override;

    // Owns the name and exports the object; false (and nothing exported) when the name is
    // taken or the bus is not there.
    bool publish(QDBusConnection bus = QDBusConnection::sessionBus());
    void unpublish();

    int sourceKind() const;
    QString sourceName() const;
    QString artist() const;
    QString title() const;
    QString panelTitle() const;
    QString status() const;
    bool lyricLoaded() const;
    int lyricOrigin() const;
    int lineIndex() const;
    QString line() const;
    double position() const;
    int mode() const;
    bool lyricWindowVisible() const;
    QString pluginInfo() const;
    QString secondaryLine() const;
    double offset() const;
    double lineProgress() const;
    bool synced() const;

public Q_SLOTS:
    QString Lyric();
    // The message, given by Qt D-Bus, carries the reply; the D-Bus signatures are "s" and "i".
    void SetLyric(const QString& text, const QDBusMessage& message);
    void ToggleLyricsWindow();
    void SetMode(int mode, const QDBusMessage& message);
    void ShowSearchWindow();
    void ShowLyricManager();
    void ShowEditor();
    void ShowPreferences();
    void Quit();
    // Offsets are seconds within +-600, kept in whole milliseconds; a value out of range, not a
    // number, or without a lyric shown is refused with an error.
    void NudgeOffset(double delta, const QDBusMessage& message);
    void SetOffset(double seconds, const QDBusMessage& message);
    // Answered once the player answered (or its limit passed): false when it could not move.
    bool Seek(double seconds, const QDBusMessage& message);
    bool SeekToLine(int index, const QDBusMessage& message);

Q_SIGNALS:
    void LineChanged(int index, const QString& text, double position);

private:
    // Answers the call with an InvalidArgs error instead of the empty reply.
    void refuse(const QDBusMessage& call, const QString& why);
    void propertyChanged(const QString& name, const QVariant& value);
    // Replies to the call later with the seek's answer.
    std::function<void(bool)> replyLater(const QDBusMessage& call);
    void offsetRefused(const QDBusMessage& call, double value);

    AppDelegate& m_delegate;
    QDBusConnection m_bus{QString()};
    bool m_published = false;
};
