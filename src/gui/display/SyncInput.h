#pragma once

#include "core/display/LineSeekGesture.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class LRCView;
class QWidget;

// The lyric's timing by hand, for the whole application (an application event filter): "-"
// and "+" (or "=") and Ctrl + wheel over the lyric windows nudge the offset; a left click on a
// line of the scrolling view seeks there, a left drag scrolls it and seeks on release. Events
// elsewhere pass untouched.
class SyncInput : public QObject {
    Q_OBJECT
public:
    struct Targets {
        std::function<LRCView*()> view;                           // the scrolling view, when built
        std::function<bool(const QWidget* window)> isLyricWindow; // the panel or the strip
    };

    SyncInput(Targets targets, std::function<void(double delta)> nudge,
              std::function<void(float seconds)> seek, QObject* parent = nullptr);
    ~SyncInput() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool nudgeInput(QEvent* event);
    bool seekInput(LRCView& view, QEvent* event);

    Targets m_targets;
    std::function<void(double)> m_nudge;
    std::function<void(float)> m_seek;
    QPointer<LRCView> m_view; // the view m_gesture works on
    std::unique_ptr<LineSeekGesture> m_gesture;
    int m_wheel = 0; // angle not yet turned into nudges, for fine-grained wheels
};
