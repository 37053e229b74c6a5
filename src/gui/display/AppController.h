#pragma once

#include "gui/display/LRCView.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class Lyric;
class Settings;

// The scrolling lyric view's owner, and the only thing the application talks to about it:
// the lyric, the play time on every tick, an information text, and re-reading the settings.
class AppController : public QObject {
    Q_OBJECT
public:
    // settings: the application's settings, or null for AppSetting().
    explicit AppController(Settings* settings = nullptr, QObject* parent = nullptr);
    ~AppController() override;

    // Builds the host window and the view, reads the settings and shows the window. With a
    // host, the window fills it (the lyric panel); without, it is a window of its own.
    void applicationDidFinishLaunching(QWidget* host = nullptr);
    QWidget* window() const { return m_window; }
    LRCView* lrcView() const { return m_lrcView; }

    void setParser(Lyric* parser);
    void updateTime(float seconds);
    void setInfo(const QString& text);
    void updateConfigs();

private:
    Settings* m_settings;
    QPointer<QWidget> m_window;
    QPointer<LRCView> m_lrcView;
    bool m_ownsWindow = false;
};
