#include "gui/display/LayerTextField.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

LayerTextField::LayerTextField(QWidget* parent)
    : QLabel(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TranslucentBackground);
    setAutoFillBackground(false);
}

void LayerTextField::sizeToFit()
{
    const QFontMetrics metrics(font());
    const int natural = metrics.horizontalAdvance(text()) + 2;
    resize(std::min(natural, maximumWidth()), metrics.height());
}

void LayerTextField::drawInto(QPainter& painter) const
{
    painter.save();
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect area = geometry();
    const QString shown = QFontMetrics(font()).elidedText(text(), Qt::ElideRight, area.width());
    painter.drawText(area, int(alignment()), shown);
    painter.restore();
}
