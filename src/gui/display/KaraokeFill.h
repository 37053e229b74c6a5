#pragma once

#include "core/display/KaraokeLine.h"

#include <QElapsedTimer>
#include <QObject>
#include <QRegion>
#include <QTimer>

#include <memory>
#include <vector>

class QPainter;
class QPixmap;
class WrappedText;

// The karaoke fill of one display: the lit line's word timing, the play time interpolated
// between the ticks that report it, and a frame timer that runs only while a word-timed line
// is lit and playing. Each frame asks the display to repaint the line.
class KaraokeFill : public QObject {
    Q_OBJECT
public:
    static constexpr int kFrameMs = 16; // about 60 frames a second

    explicit KaraokeFill(QObject* parent = nullptr);
    ~KaraokeFill() override;

    // Each tick: the lit line and the play time just read.
    void follow(const KaraokeLine& line, double position);
    const KaraokeLine& line() const { return m_line; }
    // The lit line has word timing and is the text shown.
    bool fills(const QString& shown) const { return m_line.isTimed() && m_line.text == shown; }
    bool isRunning() const { return m_timer.isActive(); }
    // The play time now: the last one read plus the time since, up to a tick's worth.
    double now() const;

    // The sung parts of `text`, laid out as in `rect`, at now(), moved by `at` and rounded to
    // whole pixels: a frame that would not change a pixel repaints nothing.
    QRegion sungRegion(const WrappedText& text, const QRectF& rect, const QPointF& at) const;
    // Draws `lit` over the sung region and `normal` over the rest, both at `at`.
    static void paint(QPainter& painter, const QPointF& at, const QPixmap& normal,
                      const QPixmap& lit, const QRegion& sung);

Q_SIGNALS:
    void frame();

private:
    void onFrame();

    KaraokeLine m_line;
    double m_position = 0;
    QElapsedTimer m_since; // since m_position was read and moved
    QTimer m_timer;
};
