#pragma once

#include "core/display/LRCViewHost.h"
#include "core/display/LRCViewModel.h"
#include "gui/display/KaraokeFill.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QPixmap>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QVariantAnimation;
class TextMeasurer;
class VSEffectLabel;
class WrappedText;

// The scrolling lyric view: the whole lyric as a centred list, the sung line lit and kept at
// the middle. A custom-painted scroll area over LRCViewModel; each row is drawn once by an
// effect label into a cached picture, so scrolling only copies pictures.
class LRCView : public QAbstractScrollArea, private LRCViewHost {
    Q_OBJECT
public:
    explicit LRCView(QWidget* parent = nullptr);
    LRCView(const TextMeasurer& measurer, QWidget* parent);
    ~LRCView() override;

    Lyric* parser() const { return m_model.parser(); }
    void setParser(Lyric* parser);
    QColor colorNormal() const { return m_model.colorNormal; }
    void setColorNormal(const QColor& color);
    QColor colorHeight() const { return m_model.colorHeight; }
    void setColorHeight(const QColor& color);
    int cellPadding() const { return m_model.rows().cellPadding(); }
    void setCellPadding(int padding) { m_model.rows().setCellPadding(padding); }
    int lrcStyle() const { return m_model.lrcStyle; }
    void setLrcStyle(int style) { m_model.lrcStyle = style; }
    void setScrollDelegate(std::function<void(float)> receiver);
    QString onTouchSelecter() const { return m_onTouchSelecter; }
    void setOnTouchSelecter(const QString& selector) { m_onTouchSelecter = selector; }
    // The status text shown instead of the lyric (while it shows, no lyric row is drawn), with
    // an optional smaller hint line under it; an empty text hides both.
    QString defaultString() const { return m_defaultString; }
    QString hintString() const { return m_hintString; }
    void setDefaultString(const QString& text, const QString& hint = QString());
    bool isDefaultStringVisible() const;

    void loadLRCcontent(const QString& text);
    void updatePlayerTime(float seconds) { updatePlayerTime(seconds, false); }
    void updatePlayerTime(float seconds, bool force);
    void moveToLRCindex(int index) { m_model.moveToLRCindex(index); }
    void setCurrentLRCIndex(int index) { m_model.setCurrentLRCIndex(index); }
    void updatePositionAtPlayTime(float seconds, bool stop);
    void scrollAnimateToHeight(float y, float duration)
    {
        m_model.scrollAnimateToHeight(y, duration);
    }
    void stopLyricsScrollAnimation() { m_model.stopLyricsScrollAnimation(); }
    float playTimeOfOffsetY(float y) const { return m_model.playTimeOfOffsetY(y); }
    double heightOfCell(int row) const { return m_model.rows().heightOfCell(row); }
    void clean() { m_model.clean(); }
    void refresh() { m_model.reloadData(); }
    void delayReloadData();

    int currentLRCindex() const { return m_model.currentLRCindex(); }
    bool isAnimation() const { return m_model.isAnimation(); }
    const LRCViewModel& model() const { return m_model; }
    LRCViewModel& model() { return m_model; }
    double contentOffset() const override { return m_offset; }
    // Row pictures drawn since the view was made: what painting costs.
    int renderedRows() const { return m_renderedRows; }
    int paintedFrames() const { return m_paintedFrames; }
    // The lit row's word-by-word fill.
    const KaraokeFill& karaoke() const { return m_karaoke; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // A row's picture in each colour: a line change then only draws the newly lit row once.
    struct RowPicture {
        QPixmap pixmaps[2]; // normal, lit
    };

    void reloadData() override;
    void highlightChanged() override;
    int litRow() const;
    void updateRow(int row);
    void scrollToOffset(double y, bool animated) override;
    void setContentOffset(double y) override;
    void beginAnimation(const QString& name, double y, double duration) override;
    void removeAllAnimations() override;
    void startAnimation(const QString& name, double y, double duration, bool linear);
    const QPixmap& pictureOfRow(int row);
    const QPixmap& pictureOfRow(int row, bool lit);
    // The lit row filled word by word; false when it has no word timing.
    bool paintKaraokeRow(QPainter& painter, int row, const QPointF& at, const QRegion& painted);
    // The sung region of the lit row in the viewport; nullopt when the row has no fill.
    std::optional<QRegion> karaokeRegion(int row);
    void followKaraoke(double seconds);
    // Repaints only the pixels the fill changed since the last frame.
    void karaokeFrame();
    bool paintedPositionChanges(double from, double to) const;

    LRCViewModel m_model;
    double m_offset = 0;
    QPointer<QVariantAnimation> m_animation;
    QString m_animationName;
    QPointer<QLabel> m_defaultLabel;
    QString m_defaultString;
    QString m_hintString;
    QString m_onTouchSelecter;
    std::unique_ptr<VSEffectLabel> m_renderer;
    QHash<int, RowPicture> m_pictures;
    QString m_picturesKey;
    QString m_picturesText;
    int m_renderedRows = 0;
    int m_paintedFrames = 0;
    int m_litRow = -1; // the row last drawn lit
    KaraokeFill m_karaoke;
    std::unique_ptr<WrappedText> m_karaokeLayout; // the lit row's text as drawn
    QString m_karaokeText;                        // what m_karaokeLayout was laid out for
    QFont m_karaokeFont;
    QSizeF m_karaokeBox;
    QRegion m_karaokePainted; // the sung region last painted, in the viewport
};
