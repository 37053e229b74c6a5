#pragma once

#include <QColor>
#include <QSizeF>
#include <QWidget>

class QPainter;

// A text label that can draw its text with a glow (a coloured, blurred shadow) and with an
// outline. Text is centred, wrapped at words, at most numberOfLines lines. The scrolling
// lyric view draws every row with one.
class VSEffectLabel : public QWidget {
    Q_OBJECT
public:
    enum class TextMode { Fill, Stroke };

    explicit VSEffectLabel(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text);
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor& color);
    int numberOfLines() const { return m_numberOfLines; }
    void setNumberOfLines(int lines);

    bool isEnableGrow() const { return m_isEnableGrow; }
    QSizeF glowOffset() const { return m_glowOffset; }
    QColor glowColor() const { return m_glowColor; }
    double glowAmount() const { return m_glowAmount; }
    void setEffectGlow(const QColor& color, QSizeF offset, double amount);
    bool isEnableStroke() const { return m_isEnableStroke; }
    double strokeWidth() const { return m_strokeWidth; }
    QColor strokeColor() const { return m_strokeColor; }
    // Does not repaint: the caller sets the text or the colour next, which does.
    void setEffectStroke(const QColor& color, double width);

    // Draws the text with its effects: three times with both effects on (glow, outline, fill).
    void drawTextInRect(QPainter& painter, const QRectF& rect);

protected:
    void paintEvent(QPaintEvent* event) override;
    // Draws the text once, as a plain label does, filled or outlined with the painter's pen.
    virtual void drawPlainText(QPainter& painter, const QRectF& rect, const QColor& color,
                               TextMode mode);

private:
    QString m_text;
    QColor m_textColor = Qt::black;
    int m_numberOfLines = 1;
    bool m_isEnableGrow = false;
    QSizeF m_glowOffset;
    QColor m_glowColor;
    double m_glowAmount = 0;
    bool m_isEnableStroke = false;
    double m_strokeWidth = 0;
    QColor m_strokeColor;
};
