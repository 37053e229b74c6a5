#include "Backdrop.h"

#include <QPainter>

Backdrop::Backdrop(Kind kind, QWidget* parent)
    : QWidget(parent)
    , m_kind(kind)
{
    setWindowFlags(Qt::FramelessWindowHint);
}

void Backdrop::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor light(236, 238, 242);
    const QColor dark(28, 32, 40);
    const int half = width() / 2;
    switch (m_kind) {
    case Kind::Light:
        painter.fillRect(rect(), light);
        break;
    case Kind::Dark:
        painter.fillRect(rect(), dark);
        break;
    case Kind::Split:
        painter.fillRect(QRect(0, 0, half, height()), light);
        painter.fillRect(QRect(half, 0, width() - half, height()), dark);
        break;
    }
    // A few soft shapes, as a wallpaper or open windows would have.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(120, 160, 220, 90));
    painter.drawEllipse(QPointF(width() * 0.3, height() * 0.72), width() * 0.08, width() * 0.05);
    painter.setBrush(QColor(240, 200, 120, 90));
    painter.drawEllipse(QPointF(width() * 0.66, height() * 0.74), width() * 0.07, width() * 0.04);
}
