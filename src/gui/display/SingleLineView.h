#pragma once

#include "gui/display/KaraokeFill.h"

#include <QImage>
#include <QWidget>

#include <memory>

class TextMeasurer;
class WrappedText;

// The single-line strip's one line, centred: white on a dark rounded plate, or, without the
// plate, white with a grey outline and a soft black shadow, legible on any background. The
// picture is drawn when the text, font, style or size changes, not on every repaint.
class SingleLineView : public QWidget {
    Q_OBJECT
public:
    explicit SingleLineView(QWidget* parent = nullptr);
    ~SingleLineView() override;

    QString string() const { return m_string; }
    void setString(const QString& string);
    // The smaller line under the line (its translation or reading); "" for none.
    QString secondary() const { return m_secondary; }
    void setSecondary(const QString& text);
    // Its rectangle as last drawn; empty when it is not drawn (also when it does not fit).
    QRectF secondaryRect() const { return m_secondaryRect; }
    bool isShowBG() const { return m_showBG; }
    void setShowBG(bool show);

    // The text's rectangle and, with the plate, the plate's, as last drawn; empty when
    // nothing is drawn.
    QRectF textRect() const { return m_textRect; }
    // The part of the view that shows something and takes the mouse: the plate, or the text
    // with its shadow; empty when nothing is drawn.
    QRect inputRect() const { return m_inputRect; }
    // Pictures drawn since the view was made: what painting costs.
    int renders() const { return m_renders; }
    // A word-timed line is drawn in the unsung colour and filled with the sung one as its words
    // are sung (other lines stay white); the fill follows the lit line.
    void setFillColors(const QColor& sung, const QColor& unsung);
    KaraokeFill& karaoke() { return m_karaoke; }

Q_SIGNALS:
    void inputRectChanged(const QRect& rect);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void relayout();
    void render();
    // The picture once more with the text in the fill colour, for a word-timed line.
    void renderLit(const QImage& shadow);
    QRegion sungRegion() const;
    void karaokeFrame();

    QString m_string;
    QString m_secondary;
    QRectF m_secondaryRect;
    bool m_showBG = true;
    QImage m_picture;
    bool m_dirty = true;
    QRectF m_textRect;
    QRect m_inputRect;
    int m_renders = 0;
    KaraokeFill m_karaoke;
    QColor m_sungColor = Qt::white;
    QColor m_unsungColor = Qt::gray;
    bool m_renderedTimed = false;             // the picture was drawn for a word-timed line
    QImage m_litPicture;                      // null unless the shown line is word-timed
    std::unique_ptr<WrappedText> m_litLayout; // its text as drawn, for the frames
    QRegion m_sungPainted;                    // the sung region last painted
};
