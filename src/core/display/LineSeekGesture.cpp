#include "core/display/LineSeekGesture.h"

#include "core/display/LRCViewModel.h"
#include "core/lyric/Lyric.h"

#include <cmath>

LineSeekGesture::LineSeekGesture(LRCViewModel& model, std::function<void(float)> seek)
    : m_model(model)
    , m_seek(std::move(seek))
{
    m_model.setShouldHandleTouch(true);
    m_model.scrollDelegate = m_seek;
}

void LineSeekGesture::press(double y)
{
    m_pressed = true;
    m_dragging = false;
    m_pressY = y;
}

void LineSeekGesture::move(double y)
{
    if (!m_pressed)
        return;
    if (!m_dragging && std::fabs(y - m_pressY) > kClickSlop) {
        // The drag starts where the press was, so the first move already scrolls.
        m_dragging = true;
        m_model.touchBegan(m_pressY);
    }
    if (m_dragging)
        m_model.touchMoved(y);
}

void LineSeekGesture::release(double y, double contentOffset)
{
    if (!m_pressed)
        return;
    m_pressed = false;
    if (m_dragging) {
        m_dragging = false;
        m_model.touchEnded(); // reports the time under the centre to m_seek
        return;
    }
    if (const auto seconds = lineTimeAtY(y, contentOffset); seconds && m_seek)
        m_seek(*seconds);
}

std::optional<float> LineSeekGesture::lineTimeAtY(double y, double contentOffset) const
{
    const Lyric* lyric = m_model.parser();
    const int row = m_model.rows().rowAtY(contentOffset + y);
    const int index = row - m_model.rows().placeHolderCnt();
    const LRCItem* item = lyric && row >= 0 ? lyric->lrcItemAtIndex(index) : nullptr;
    if (!item)
        return std::nullopt;
    return item->startTime();
}
