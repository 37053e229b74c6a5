#pragma once

#include "core/app/AppDelegate.h"
#include "core/app/AppState.h"
#include "core/app/DesktopPort.h"
#include "core/app/LyricManagerPort.h"
#include "core/app/LyricViewPort.h"
#include "core/app/NotificationPort.h"
#include "core/app/PreferencesPort.h"
#include "core/app/SearchWindowPort.h"
#include "core/app/SingleLinePort.h"
#include "core/app/UpdateTimer.h"
#include "core/app/WindowFactoryPort.h"
#include "core/app/WindowPort.h"

#include <QRegularExpression>
#include <QStringList>

#include <functional>
#include <memory>

// Every port at once, and an observer of the view model as the displays are, writing each call
// into one log ("view.info ..."), so a test reads what the user would have seen, in order.
class RecordingPorts : public LyricViewPort,
                       public SingleLinePort,
                       public WindowPort,
                       public WindowFactoryPort,
                       public DesktopPort {
public:
    QStringList log;
    QString info;    // the view's message (null: cleared)
    QString content; // the strip's text
    QString panelTitle;
    QString sourceTitle;
    QString toggleTitle;
    bool streamOn = false, lineOn = false;
    bool panelShown = false, stripShown = false;
    Lyric* viewLyric = nullptr;
    float viewTime = -1;
    int managers = 0, searchWindows = 0, notifications = 0, preferences = 0;

    RecordingPorts() = default;
    explicit RecordingPorts(const AppState& state) { observe(state); }
    AppPorts ports() { return {this, this, this, this, this}; }
    // Records what the displays and the status menu are shown from now on.
    void observe(const AppState& state);
    // Log entries that start with prefix.
    QStringList entries(const QString& prefix) const
    {
        return log.filter(QRegularExpression(u'^' + QRegularExpression::escape(prefix)));
    }

    void setParser(Lyric* lyric)
    {
        viewLyric = lyric;
        add(QStringLiteral("view.parser %1").arg(lyric ? "lyric" : "none"));
    }
    void updateTime(float seconds) { viewTime = seconds; }
    void setInfo(const QString& text)
    {
        info = text;
        add(QStringLiteral("view.info ") + (text.isNull() ? QStringLiteral("<none>") : text));
    }
    void updateConfigs() override { add(QStringLiteral("view.updateConfigs")); }

    void setContent(const QString& text) { content = text; }
    void loadWindow() override { add(QStringLiteral("strip.load")); }
    void updateFromSettings() override { add(QStringLiteral("strip.updateFromSettings")); }
    WindowPort* window() override { return &m_strip; }

    void setTitle(const QString& title) { panelTitle = title; }
    void orderFrontRegardless() override
    {
        panelShown = true;
        add(QStringLiteral("panel.front"));
    }
    void close() override
    {
        panelShown = false;
        add(QStringLiteral("panel.close"));
    }

    void setSourceTitle(const QString& t)
    {
        sourceTitle = t;
        add(QStringLiteral("menu.source ") + t);
    }
    void setToggleTitle(const QString& t)
    {
        toggleTitle = t;
        add(QStringLiteral("menu.toggle ") + t);
    }
    void setModeStreamOn(bool on) { streamOn = on; }
    void setModeLineOn(bool on) { lineOn = on; }

    std::unique_ptr<SearchWindowPort> createSearchWindow() override;
    std::unique_ptr<LyricManagerPort> createLyricManager() override;
    std::unique_ptr<PreferencesPort> createPreferences() override;
    std::unique_ptr<NotificationPort> createNotification() override;
    void showAbout() override { add(QStringLiteral("about")); }
    void activateApplication() override { add(QStringLiteral("activate")); }

    void openUrl(const QUrl& url) override
    {
        add(QStringLiteral("desktop.open ") + url.toString());
    }
    void revealFile(const QString& path) override { add(QStringLiteral("desktop.reveal ") + path); }
    void openInTextEditor(const QString& path) override
    {
        add(QStringLiteral("desktop.edit ") + path);
    }

    void add(const QString& entry) { log << entry; }

private:
    class Strip : public WindowPort {
    public:
        explicit Strip(RecordingPorts& p)
            : p(p)
        {
        }
        void orderFrontRegardless() override
        {
            p.stripShown = true;
            p.add(QStringLiteral("strip.front"));
        }
        void close() override
        {
            p.stripShown = false;
            p.add(QStringLiteral("strip.close"));
        }
        RecordingPorts& p;
    };
    Strip m_strip{*this};
};

// Update timers that tick only when the test says so.
class ManualTimers {
public:
    UpdateTimer::Factory factory();
    // Ticks every live, started timer once.
    void fire(int times = 1);
    int live() const;
    int created() const { return m_created; }

private:
    class Timer;
    QList<Timer*> m_timers;
    int m_created = 0;
};
