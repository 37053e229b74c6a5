#pragma once

#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/ScriptingObject.h"
#include "core/sources/SourceCallbacks.h"

#include <QObject>

#include <mutex>
#include <optional>

class Workspace;

namespace jukora {
inline constexpr char kBusName[] = "com.morvane.Jukora";

// A song object of the player; absent reads give empty strings.
class DJItem {
public:
    DJItem() = default;
    explicit DJItem(ScriptingObject object)
        : m_object(std::move(object))
    {
    }
    QString title() const { return m_object.stringProperty("title"); }
    QString artist() const { return m_object.stringProperty("artist"); }
    const QString& path() const { return m_object.path(); }

private:
    ScriptingObject m_object;
};
} // namespace jukora

// The Jukora player, through its scripting objects and its own notifications. A quit is
// usually reported twice (the quit notice, then the workspace); receivers tolerate that.
class JukoraControl : public QObject {
    Q_OBJECT
public:
    static constexpr float kPositionLead = 0.15f;

    JukoraControl(Workspace& workspace, DistributedNotificationCenter& center,
                  QObject* parent = nullptr);

    void setCallBack(QObject* target, const QByteArray& songChanged,
                     const QByteArray& appStateChanged);
    // The current song, only when both its title and its artist are non-empty.
    std::optional<jukora::DJItem> item() const;
    float location() const;
    bool isRunning() const { return m_appAlive; }
    const std::optional<jukora::DJItem>& cachedItem() const { return m_cachedItem; }
    void setCachedItem(std::optional<jukora::DJItem> item) { m_cachedItem = std::move(item); }
    const SourceCallbacks& callbacks() const { return m_callbacks; }

private:
    void _appLifeChanged(bool alive);

    Workspace& m_workspace;
    DistributedNotificationCenter& m_center;
    ScriptingObject m_app;
    SourceCallbacks m_callbacks;
    bool m_appAlive = false;
    std::optional<jukora::DJItem> m_cachedItem;
    std::recursive_mutex m_lock;
    DistributedNotificationCenter::Observation m_observations[2];
};
