#pragma once

#include "Playback.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>

// Faults a real MPRIS player may show, switched by the simulator's commands.
struct MprisFaults {
    bool silent = false;     // never answers a call (signals still go out)
    bool millis = false;     // Position and Seeked in milliseconds instead of microseconds
    bool stuck = false;      // Position is always 0
    bool noRate = false;     // no Rate property
    bool wrongTypes = false; // Identity, Rate, Position and some Metadata of the wrong type
    bool huge = false;       // enormous strings, a NaN rate, a position past any song

    // "silent on", "millis off"...; false for an unknown fault.
    bool set(const QString& name, bool on);
};

// The MPRIS2 object /org/mpris/MediaPlayer2 of the simulator: the root and Player
// interfaces a lyrics companion reads (Identity, PlaybackStatus, Metadata, Position, Rate,
// PropertiesChanged, Seeked) and the Player's methods, which become simulator commands.
class MprisService : public QDBusVirtualObject {
    Q_OBJECT
public:
    static constexpr char kPath[] = "/org/mpris/MediaPlayer2";

    MprisService(Playback& playback, const MprisFaults& faults, QString identity,
                 QDBusConnection bus, std::function<void(QString)> command);

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString& path) const override;

    // PropertiesChanged of the Player interface with these properties' current values.
    void propertiesChanged(const QStringList& names) const;
    void seeked() const;
    QString trackId() const;

private:
    QVariant property(const QString& interface, const QString& name) const;
    QVariantMap all(const QString& interface) const;
    QVariantMap metadata() const;
    qint64 positionValue() const;
    bool call(const QDBusMessage& message);

    Playback& m_playback;
    const MprisFaults& m_faults;
    QString m_identity;
    QDBusConnection m_bus;
    std::function<void(QString)> m_command;
};
