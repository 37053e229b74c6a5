#include "gui/display/VSEffectLabel.h"

#include "core/display/ImageBlur.h"
#include "gui/display/WrappedText.h"

#include <QPainter>

#include <cmath>

VSEffectLabel::VSEffectLabel(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAutoFillBackground(false);
    setFocusPolicy(Qt::NoFocus);
}

void VSEffectLabel::setText(const QString& text)
{
    m_text = text;
    update();
}

void VSEffectLabel::setTextColor(const QColor& color)
{
    m_textColor = color;
    update();
}

void VSEffectLabel::setNumberOfLines(int lines)
{
    m_numberOfLines = lines;
    update();
}

void VSEffectLabel::setEffectGlow(const QColor& color, QSizeF offset, double amount)
{
    m_isEnableGrow = true;
    m_glowColor = color;
    m_glowOffset = offset;
    m_glowAmount = amount;
    update();
}

void VSEffectLabel::setEffectStroke(const QColor& color, double width)
{
    m_isEnableStroke = true;
    m_strokeColor = color;
    m_strokeWidth = width;
}

void VSEffectLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawTextInRect(painter, rect());
}

void VSEffectLabel::drawTextInRect(QPainter& painter, const QRectF& rect)
{
    if (m_text.isEmpty())
        return;
    if (m_isEnableGrow) {
        painter.save();
        // The glow is the text's shape in the glow colour, blurred, under the text.
        const int margin = int(std::ceil(std::max(0.0, m_glowAmount))) + 2;
        const qreal ratio = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
        QImage shape((rect.size() + QSizeF(2 * margin, 2 * margin)).toSize() * ratio,
                     QImage::Format_ARGB32_Premultiplied);
        if (!shape.isNull()) {
            shape.setDevicePixelRatio(ratio);
            shape.fill(Qt::transparent);
            QPainter shapePainter(&shape);
            shapePainter.setRenderHints(painter.renderHints());
            const QRectF shapeRect(QPointF(margin, margin), rect.size());
            WrappedText(m_text, font(), rect.width(), m_numberOfLines, rect.height())
                .draw(shapePainter, shapeRect, m_glowColor);
            shapePainter.end();
            const QImage glow = ImageBlur::blurred(shape, m_glowAmount * ratio);
            painter.drawImage(rect.topLeft() - QPointF(margin, margin) +
                                  QPointF(m_glowOffset.width(), m_glowOffset.height()),
                              glow);
        }
        drawPlainText(painter, rect, m_textColor, TextMode::Fill);
        painter.restore();
    }
    if (m_isEnableStroke) {
        painter.save();
        painter.setPen(QPen(m_strokeColor, m_strokeWidth));
        drawPlainText(painter, rect, m_strokeColor, TextMode::Stroke);
        drawPlainText(painter, rect, m_textColor, TextMode::Fill);
        painter.restore();
    }
    if (!m_isEnableGrow && !m_isEnableStroke)
        drawPlainText(painter, rect, m_textColor, TextMode::Fill);
}

void VSEffectLabel::drawPlainText(QPainter& painter, const QRectF& rect, const QColor& color,
                                  TextMode mode)
{
    const WrappedText text(m_text, font(), rect.width(), m_numberOfLines, rect.height());
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    if (mode == TextMode::Stroke)
        painter.strokePath(text.path(rect), painter.pen());
    else
        text.draw(painter, rect, color);
    painter.restore();
}
