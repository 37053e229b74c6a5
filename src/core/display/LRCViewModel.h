#pragma once

#include "core/display/LRCRowModel.h"

#include <QColor>

#include <functional>
#include <memory>

class LRCViewHost;

// The scrolling lyric view's behaviour, headless: which line is lit, where to scroll and how
// fast, the continuous scroll and its animation chain, and the time under the view's centre.
// The widget owns one and draws what it says.
class LRCViewModel {
public:
    static constexpr char kLyricsAnimation[] = "LyricsAnimation";
    // A jump of this many lines or more is shown at once, without animation.
    static constexpr int kInstantJump = 5;
    // Lines closer than this (seconds) are not scrolled through continuously.
    static constexpr float kMinimumLineGap = 0.1f;

    LRCViewModel(const TextMeasurer& measurer, LRCViewHost& host);
    ~LRCViewModel();

    LRCRowModel& rows() { return m_rows; }
    const LRCRowModel& rows() const { return m_rows; }
    Lyric* parser() const { return m_rows.parser(); }
    // A different lyric (or none) starts from nothing: no lit line, no scroll, no animation.
    void setParser(Lyric* parser);
    QColor colorNormal;
    QColor colorHeight;
    int lrcStyle = 0;
    // Receiver of the drag-end report: the play time under the centre.
    std::function<void(float seconds)> scrollDelegate;

    int currentLRCindex() const { return m_currentLRCindex; }
    bool isAnimation() const { return m_isAnimation; }
    bool isDragging() const { return m_isDragging; }
    // The lyric index of the lit row: the nearest line with text at or before the current.
    int highlightedLRCindex() const { return m_highlighted; }
    bool isRowHighlighted(int row) const;

    void loadLRCcontent(const QString& text);
    void reloadData();
    void updatePlayerTime(float seconds) { updatePlayerTime(seconds, false); }
    void updatePlayerTime(float seconds, bool force);
    void moveToLRCindex(int index);
    void setCurrentLRCIndex(int index);
    void updatePositionAtPlayTime(float seconds, bool stop);
    void scrollAnimateToHeight(float y, float duration);
    void stopLyricsScrollAnimation();
    void animationDidStop(const QString& name, bool finished);
    float playTimeOfOffsetY(float y) const;
    void clean();

    // Dragging; off unless something sets isShouldHandleTouch.
    void setShouldHandleTouch(bool on) { m_isShouldHandleTouch = on; }
    void touchBegan(double y);
    void touchMoved(double y);
    void touchEnded();
    void keyFlagChanged(bool optionPressed);
    bool isSpecifyFlagKeyPressing() const { return m_isSpecifyFlagKeyPressing; }

private:
    float centreOffsetOfLine(int index) const;

    LRCRowModel m_rows;
    LRCViewHost& m_host;
    std::unique_ptr<Lyric> m_ownParser; // made by loadLRCcontent when no lyric was given
    int m_currentLRCindex = -1;
    int m_highlighted = -1;
    bool m_isAnimation = false;
    bool m_isDragging = false;
    bool m_isShouldHandleTouch = false;
    bool m_isSpecifyFlagKeyPressing = false;
    int m_dragPointY = 0;
};
