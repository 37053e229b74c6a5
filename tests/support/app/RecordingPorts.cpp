#include "support/app/RecordingPorts.h"

namespace {
class SearchWindow : public SearchWindowPort {
public:
    explicit SearchWindow(RecordingPorts& p)
        : p(p)
    {
    }
    void showFor(const QString& title, const QString& artist, double /*duration*/) override
    {
        p.add(QStringLiteral("search.show %1 / %2").arg(title, artist));
    }
    RecordingPorts& p;
};
class Manager : public LyricManagerPort {
public:
    explicit Manager(RecordingPorts& p)
        : p(p)
    {
    }
    void setLyricControl(LyricControl* c) override
    {
        p.add(QStringLiteral("manager.control %1").arg(c ? "set" : "none"));
    }
    void showWindow() override { p.add(QStringLiteral("manager.show")); }
    RecordingPorts& p;
};
class Preferences : public PreferencesPort {
public:
    explicit Preferences(RecordingPorts& p)
        : p(p)
    {
    }
    void centerAndShow() override { p.add(QStringLiteral("preferences.show")); }
    RecordingPorts& p;
};
class Notification : public NotificationPort {
public:
    explicit Notification(RecordingPorts& p)
        : p(p)
    {
    }
    void showTrack(const Track& t) override
    {
        p.add(QStringLiteral("notification.show %1 / %2").arg(t.name, t.artist));
    }
    void disappear() override { p.add(QStringLiteral("notification.disappear")); }
    void close() override { p.add(QStringLiteral("notification.close")); }
    RecordingPorts& p;
};
} // namespace

std::unique_ptr<SearchWindowPort> RecordingPorts::createSearchWindow()
{
    ++searchWindows;
    return std::make_unique<SearchWindow>(*this);
}
std::unique_ptr<LyricManagerPort> RecordingPorts::createLyricManager()
{
    ++managers;
    return std::make_unique<Manager>(*this);
}
std::unique_ptr<PreferencesPort> RecordingPorts::createPreferences()
{
    ++preferences;
    return std::make_unique<Preferences>(*this);
}
std::unique_ptr<NotificationPort> RecordingPorts::createNotification()
{
    ++notifications;
    return std::make_unique<Notification>(*this);
}

class ManualTimers::Timer : public UpdateTimer {
public:
    explicit Timer(ManualTimers& owner)
        : m_owner(owner)
    {
        m_owner.m_timers << this;
    }
    ~Timer() override { m_owner.m_timers.removeAll(this); }
    void start(int intervalMs, std::function<void()> tick) override
    {
        interval = intervalMs;
        m_tick = std::move(tick);
        active = true;
    }
    void stop() override { active = false; }
    bool isActive() const override { return active; }
    void fire()
    {
        if (active && m_tick)
            m_tick();
    }
    int interval = 0;
    bool active = false;

private:
    ManualTimers& m_owner;
    std::function<void()> m_tick;
};

UpdateTimer::Factory ManualTimers::factory()
{
    return [this] {
        ++m_created;
        return std::make_unique<Timer>(*this);
    };
}

void ManualTimers::fire(int times)
{
    for (int i = 0; i < times; ++i) {
        const auto timers = m_timers;
        for (Timer* t : timers)
            if (m_timers.contains(t) && t->interval == AppDelegate::kTickMs)
                t->fire();
    }
}

int ManualTimers::live() const
{
    int n = 0;
    for (const Timer* t : m_timers)
        n += t->active ? 1 : 0;
    return n;
}

void RecordingPorts::observe(const AppState& state)
{
    QObject::connect(&state, &AppState::lyricShown, [this](Lyric* l) { setParser(l); });
    QObject::connect(&state, &AppState::playTimeShown, [this](float s) { updateTime(s); });
    QObject::connect(&state, &AppState::infoShown, [this](const QString& t) { setInfo(t); });
    QObject::connect(&state, &AppState::stripTextShown,
                     [this](const QString& t) { setContent(t); });
    QObject::connect(&state, &AppState::menuChanged, [this, &state] {
        if (state.toggleTitle() != toggleTitle)
            setToggleTitle(state.toggleTitle());
        setModeStreamOn(state.streamItemOn());
        setModeLineOn(state.lineItemOn());
    });
    QObject::connect(&state, &AppState::changed, [this](const QString& name, const QVariant& v) {
        if (name == QLatin1String("PanelTitle"))
            setTitle(v.toString());
        else if (name == QLatin1String("SourceName"))
            setSourceTitle(v.toString());
    });
}
