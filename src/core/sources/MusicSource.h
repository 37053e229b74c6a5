#pragma once

#include "core/sources/SourceCallbacks.h"
#include "core/sources/TrackItem.h"

#include <QObject>
#include <QString>

#include <memory>
#include <mutex>

// The shared record of a source that publishes a TrackItem.
class MusicSource : public QObject {
    Q_OBJECT
public:
    explicit MusicSource(QObject* parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString messageAppWillTerminate() const { return m_messageAppWillTerminate; }
    void setMessageAppWillTerminate(const QString& m) { m_messageAppWillTerminate = m; }
    QString bundleIdentifier() const { return m_bundleIdentifier; }
    void setBundleIdentifier(const QString& id) { m_bundleIdentifier = id; }
    QString messageIdentifier() const { return m_messageIdentifier; }
    void setMessageIdentifier(const QString& id) { m_messageIdentifier = id; }
    // Subclasses refresh from the player before answering. Null only after setTrack(nullptr).
    virtual TrackItem* track();
    // Replaces the owned record; a null one leaves the source without a song record, and the
    // refreshes then skip the song fields (they still read the position).
    void setTrack(std::unique_ptr<TrackItem> track) { m_track = std::move(track); }
    virtual float location();
    void setLocation(float location) { m_location = location; }
    bool isRunning() const { return m_isRunning; }
    void setIsRunning(bool running) { m_isRunning = running; }

    const SourceCallbacks& callbacks() const { return m_callbacks; }

protected:
    SourceCallbacks m_callbacks;
    std::recursive_mutex m_lock; // the running state and its callback
    std::unique_ptr<TrackItem> m_track = std::make_unique<TrackItem>();
    float m_location = 0.0f;

private:
    QString m_name;
    QString m_messageAppWillTerminate;
    QString m_bundleIdentifier;
    bool m_isRunning = false;
    QString m_messageIdentifier;
};
