#pragma once

#include <functional>
#include <optional>

class LRCViewModel;

// A press on the scrolling view, headless: released where it was pressed it is a click on a
// line, which seeks to that line's start; moved further it becomes the view's drag, which
// scrolls and, on release, seeks to the line under the centre. Positions are in view points.
class LineSeekGesture {
public:
    // Movement up to this many points is still a click (a hand is never quite still).
    static constexpr double kClickSlop = 6.0;

    // Switches the model's drag path on and makes seek its drag-end receiver.
    LineSeekGesture(LRCViewModel& model, std::function<void(float seconds)> seek);

    void press(double y);
    void move(double y);
    // contentOffset: the view's vertical scroll offset, to find the clicked row.
    void release(double y, double contentOffset);
    bool isPressed() const { return m_pressed; }

    // The start time (offset included) of the line drawn at y; none on the padding rows or
    // without a lyric.
    std::optional<float> lineTimeAtY(double y, double contentOffset) const;

private:
    LRCViewModel& m_model;
    std::function<void(float)> m_seek;
    bool m_pressed = false;
    bool m_dragging = false;
    double m_pressY = 0;
};
