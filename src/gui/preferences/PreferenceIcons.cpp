#include "gui/preferences/PreferenceIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <cmath>
#include <functional>

namespace {

QIcon drawn(const std::function<void(QPainter&)>& paint)
{
    QIcon icon;
    for (int side : {32, 64, 128}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 64.0, side / 64.0);
        paint(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon PreferenceIcons::general()
{
    return drawn([](QPainter& p) {
        QPainterPath gear;
        const QPointF c(32, 32);
        for (int i = 0; i < 8; ++i) {
            const double a = i * M_PI / 4;
            QPainterPath tooth;
            tooth.addRoundedRect(QRectF(-5, -28, 10, 14), 2, 2);
            gear.addPath(QTransform().translate(c.x(), c.y()).rotateRadians(a).map(tooth));
        }
        gear.addEllipse(c, 20, 20);
        gear.setFillRule(Qt::WindingFill);
        QPainterPath hole;
        hole.addEllipse(c, 8, 8);
        p.setPen(QPen(QColor(0x44, 0x4b, 0x55), 2));
        p.setBrush(QColor(0x8a, 0x93, 0x9f));
        p.drawPath(gear.simplified().subtracted(hole));
    });
}

QIcon PreferenceIcons::appearance()
{
    return drawn([](QPainter& p) {
        QPainterPath palette;
        palette.addEllipse(QRectF(6, 10, 52, 44));
        QPainterPath thumb;
        thumb.addEllipse(QRectF(34, 36, 12, 10));
        p.setPen(QPen(QColor(0x7a, 0x5a, 0x38), 2));
        p.setBrush(QColor(0xe9, 0xd3, 0xa8));
        p.drawPath(palette.subtracted(thumb));
        const QColor paints[] = {QColor(0xd9, 0x3b, 0x3b), QColor(0xf2, 0xb1, 0x2b),
                                 QColor(0x3b, 0x9b, 0x4c), QColor(0x2f, 0x6f, 0xd6)};
        const QPointF spots[] = {{19, 24}, {31, 18}, {44, 22}, {18, 39}};
        p.setPen(Qt::NoPen);
        for (int i = 0; i < 4; ++i) {
            p.setBrush(paints[i]);
            p.drawEllipse(spots[i], 5.5, 5.5);
        }
    });
}

QIcon PreferenceIcons::lyric()
{
    return drawn([](QPainter& p) {
        p.setPen(QPen(QColor(0x8a, 0x93, 0x9f), 4, Qt::SolidLine, Qt::RoundCap));
        for (int y : {14, 26, 38, 50})
            p.drawLine(QPointF(6, y), QPointF(y < 30 ? 58 : 30, y));
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x2f, 0x6f, 0xd6));
        p.drawEllipse(QPointF(40, 52), 8, 6);
        p.drawRect(QRectF(45, 22, 4, 30));
        QPainterPath flag;
        flag.moveTo(45, 22);
        flag.cubicTo(52, 24, 60, 28, 56, 40);
        flag.cubicTo(56, 34, 52, 31, 49, 31);
        p.drawPath(flag);
    });
}
