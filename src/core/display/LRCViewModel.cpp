#include "core/display/LRCViewModel.h"

#include "core/display/LRCViewHost.h"
#include "core/foundation/Assertion.h"
#include "core/lyric/Lyric.h"

#include <cmath>
#include <cstdlib>

LRCViewModel::LRCViewModel(const TextMeasurer& measurer, LRCViewHost& host)
    : colorNormal(QColor(200, 200, 200))
    , colorHeight(Qt::white)
    , m_rows(measurer)
    , m_host(host)
{
}

LRCViewModel::~LRCViewModel() = default;

void LRCViewModel::setParser(Lyric* parser)
{
    if (parser == m_rows.parser())
        return;
    stopLyricsScrollAnimation();
    m_rows.setParser(parser);
    m_currentLRCindex = -1;
    m_highlighted = -1;
    m_host.setContentOffset(0);
}

bool LRCViewModel::isRowHighlighted(int row) const
{
    const int index = m_rows.realIndexTrimFromRow(row);
    return index >= 0 && index == m_highlighted;
}

void LRCViewModel::loadLRCcontent(const QString& text)
{
    m_currentLRCindex = -1;
    if (!parser()) {
        m_ownParser = std::make_unique<Lyric>();
        setParser(m_ownParser.get());
    }
    parser()->parseLRCcontent(text);
    reloadData();
}

void LRCViewModel::reloadData()
{
    m_rows.reloadData(); // first: it takes how the lines read
    m_highlighted =
        parser() ? m_rows.ownerOf(parser()->itemIndexNonEmptyContent(m_currentLRCindex)) : -1;
    m_host.reloadData();
}

void LRCViewModel::updatePlayerTime(float seconds, bool force)
{
    if (!parser())
        return;
    const LRCItem* item = parser()->lrcItemAtTime(seconds);
    // Before the first line no line is sung; the absent line answers index 0, so the first
    // line waits at the centre.
    const int index = item ? item->index() : 0;
    if (!force && index == m_currentLRCindex)
        return;
    moveToLRCindex(index);
}

void LRCViewModel::moveToLRCindex(int index)
{
    const int row = m_rows.rowIndexFromLRCindex(index);
    const bool animated = std::abs(index - m_currentLRCindex) < kInstantJump;
    m_host.scrollToOffset(m_rows.offsetForRowAtMiddle(row), animated);
    setCurrentLRCIndex(index);
}

void LRCViewModel::setCurrentLRCIndex(int index)
{
    if (index == m_currentLRCindex)
        return;
    m_currentLRCindex = index;
    // The rows keep their heights: only the lit row changes, and the host repaints two rows.
    m_highlighted =
        parser() ? m_rows.ownerOf(parser()->itemIndexNonEmptyContent(m_currentLRCindex)) : -1;
    m_host.highlightChanged();
}

float LRCViewModel::centreOffsetOfLine(int index) const
{
    m_rows.measureAround(m_rows.rowIndexFromLRCindex(index));
    const QRectF rect = m_rows.rectForRow(m_rows.rowIndexFromLRCindex(index));
    return float(rect.y()) + float(rect.height()) * 0.5f - float(m_rows.viewSize().height()) * 0.5f;
}

void LRCViewModel::updatePositionAtPlayTime(float seconds, bool stop)
{
    if (!parser() || m_isDragging)
        return;
    stopLyricsScrollAnimation();
    const LRCItem* cur = parser()->lrcItemAtTime(seconds);
    if (!cur) // before the first line: no row to rest on
        return;
    const int index = int(parser()->indexOfItem(cur));
    const LRCItem* next = parser()->lrcItemAtIndex(index + 1);
    if (!next || next->startTime() - cur->startTime() < kMinimumLineGap) {
        m_host.setContentOffset(centreOffsetOfLine(index));
        setCurrentLRCIndex(index);
        return;
    }
    m_rows.measureAround(m_rows.rowIndexFromLRCindex(index));
    const QRectF rect = m_rows.rectForRow(m_rows.rowIndexFromLRCindex(index));
    const float f = (seconds - cur->startTime()) / (next->startTime() - cur->startTime());
    // Half a row over the line's duration: its top edge is at the centre when it starts.
    m_host.setContentOffset(float(rect.y()) + f * float(rect.height()) * 0.5f -
                            float(m_rows.viewSize().height()) * 0.5f);
    setCurrentLRCIndex(index);
    if (stop)
        return;
    scrollAnimateToHeight(centreOffsetOfLine(index + 1), next->startTime() - seconds);
}

void LRCViewModel::scrollAnimateToHeight(float y, float duration)
{
    m_isAnimation = true;
    m_host.beginAnimation(QLatin1String(kLyricsAnimation), y, duration);
}

void LRCViewModel::stopLyricsScrollAnimation()
{
    m_host.removeAllAnimations();
    m_isAnimation = false;
}

void LRCViewModel::animationDidStop(const QString& name, bool finished)
{
    m_isAnimation = false;
    if (!finished || name != QLatin1String(kLyricsAnimation) || !parser())
        return;
    const LRCItem* cur = parser()->lrcItemAtIndex(m_currentLRCindex + 1);
    if (!cur)
        foundation::assertionFailure(QStringLiteral("the currentItem should not be nil!"));
    setCurrentLRCIndex(m_currentLRCindex + 1);
    const LRCItem* nxt = parser()->lrcItemAtIndex(m_currentLRCindex + 1);
    if (cur && nxt)
        scrollAnimateToHeight(centreOffsetOfLine(m_currentLRCindex + 1),
                              nxt->startTime() - cur->startTime());
}

float LRCViewModel::playTimeOfOffsetY(float y) const
{
    const int row = m_rows.rowAtY(double(y) + m_rows.viewSize().height() * 0.5);
    if (row < 1 || !parser())
        return 0;
    const int lines = m_rows.lineCount();
    if (row >= lines + m_rows.placeHolderCnt()) {
        const LRCItem* last = parser()->lrcItemAtIndex(lines - 1);
        return last ? last->startTime() : 0;
    }
    const LRCItem* item = parser()->lrcItemAtIndex(row - 1);
    return item ? item->startTime() : 0;
}

void LRCViewModel::clean()
{
    stopLyricsScrollAnimation();
    m_currentLRCindex = -1;
    if (parser())
        parser()->clean();
    reloadData();
    m_host.setContentOffset(0);
}

void LRCViewModel::touchBegan(double y)
{
    if (!m_isShouldHandleTouch)
        return;
    m_isDragging = true;
    m_dragPointY = int(y);
}

void LRCViewModel::touchMoved(double y)
{
    if (!m_isDragging)
        return;
    // The start point stays: each move adds to the offset again.
    m_host.setContentOffset(m_dragPointY + m_host.contentOffset() - y);
}

void LRCViewModel::touchEnded()
{
    if (!m_isDragging)
        return;
    m_isDragging = false;
    const float seconds = playTimeOfOffsetY(float(m_host.contentOffset()));
    if (scrollDelegate)
        scrollDelegate(seconds);
}

void LRCViewModel::keyFlagChanged(bool optionPressed)
{
    if (optionPressed)
        m_isSpecifyFlagKeyPressing = !m_isSpecifyFlagKeyPressing;
}
