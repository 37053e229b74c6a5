#include "gui/display/KaraokeFill.h"

#include "gui/display/WrappedText.h"

#include <QPainter>
#include <QPixmap>
#include <QRegion>

#include <algorithm>
#include <cmath>

namespace {
// How far the time is carried past the last reading; beyond it the player is taken to be
// paused (or silent) and frames stop until the position moves again.
constexpr qint64 kCarryMs = 1000;
} // namespace

KaraokeFill::KaraokeFill(QObject* parent)
    : QObject(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(kFrameMs);
    connect(&m_timer, &QTimer::timeout, this, &KaraokeFill::onFrame);
}

KaraokeFill::~KaraokeFill() = default;

void KaraokeFill::follow(const KaraokeLine& line, double position)
{
    const bool wasTimed = m_line.isTimed();
    m_line = line;
    if (!std::isfinite(position))
        position = 0;
    if (position != m_position || !m_since.isValid()) {
        m_position = position;
        m_since.start();
        if (m_line.isTimed() && !m_timer.isActive())
            m_timer.start();
    }
    if (!m_line.isTimed()) {
        m_timer.stop();
        if (wasTimed)
            Q_EMIT frame(); // the last fill goes
    }
}

double KaraokeFill::now() const
{
    const qint64 since = m_since.isValid() ? std::min(m_since.elapsed(), kCarryMs) : 0;
    return m_position + double(since) / 1000.0;
}

void KaraokeFill::onFrame()
{
    if (!m_line.isTimed() || m_since.elapsed() > kCarryMs)
        m_timer.stop();
    Q_EMIT frame();
}

QRegion KaraokeFill::sungRegion(const WrappedText& text, const QRectF& rect,
                                const QPointF& at) const
{
    const std::vector<KaraokeTextLine> lines = text.lineBoxes(rect);
    QRegion region;
    const auto caret = [&text, &rect](int line, qsizetype index) {
        return text.caretX(line, index, rect);
    };
    for (const QRectF& part : karaoke::sungRects(m_line, now(), lines, caret))
        region += part.translated(at).toAlignedRect();
    return region;
}

void KaraokeFill::paint(QPainter& painter, const QPointF& at, const QPixmap& normal,
                        const QPixmap& lit, const QRegion& sung)
{
    painter.save();
    const QRect whole = QRectF(at, normal.deviceIndependentSize()).toAlignedRect();
    painter.setClipRegion(QRegion(whole) - sung, Qt::IntersectClip);
    painter.drawPixmap(at, normal);
    painter.restore();
    if (sung.isEmpty())
        return;
    painter.save();
    painter.setClipRegion(sung, Qt::IntersectClip);
    painter.drawPixmap(at, lit);
    painter.restore();
}
