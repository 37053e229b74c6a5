#include "gui/display/LRCView.h"

#include "core/display/DisplayFont.h"
#include "core/display/FontTextMeasurer.h"
#include "core/lyric/Lyric.h"
#include "core/reading/LyricReading.h"
#include "gui/display/SecondaryLinePainter.h"
#include "gui/display/VSEffectLabel.h"
#include "gui/display/WrappedText.h"

#include <QEasingCurve>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QVariantAnimation>

#include <cmath>

namespace {
constexpr double kStrokeWidth = 0.1;
constexpr int kRowLines = 99;
// How long the list takes to scroll a row into place when asked to animate.
constexpr int kListScrollMilliseconds = 300;
// The status text's size, and the smaller hint line's under it.
constexpr int kStatusPixels = 17;
constexpr int kHintPixels = 13;
// Row pictures kept: many screenfuls; beyond, they are drawn again as needed.
constexpr qsizetype kMaxPictures = 400;
} // namespace

LRCView::LRCView(QWidget* parent)
    : LRCView(FontTextMeasurer::shared(), parent)
{
}

LRCView::LRCView(const TextMeasurer& measurer, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_model(measurer, *this)
    , m_renderer(std::make_unique<VSEffectLabel>())
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setAttribute(Qt::WA_TranslucentBackground);
    viewport()->setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::NoFocus);
    setFont(DisplayFont::withSize(font(), 16));
    m_model.rows().setFont(font());
    m_renderer->setNumberOfLines(kRowLines);
    // Translations and readings: laid out with the rows, again when the reading settings change.
    m_model.rows().setReadingsSource(
        [](const Lyric* lyric) { return LyricReading::shared().readingsFor(lyric); });
    connect(&LyricReading::shared(), &LyricReading::changed, this, [this] {
        m_pictures.clear();
        refresh();
    });
    connect(&m_karaoke, &KaraokeFill::frame, this, &LRCView::karaokeFrame);
}

LRCView::~LRCView()
{
    // The animation's end must not reach a model that is going away.
    if (m_animation)
        m_animation->disconnect(this);
}

void LRCView::setParser(Lyric* parser)
{
    // The same lyric handed over again may have been parsed afresh in place: lay it out again.
    m_model.setParser(parser);
    m_model.reloadData();
    followKaraoke(m_karaoke.now());
}

void LRCView::updatePlayerTime(float seconds, bool force)
{
    m_model.updatePlayerTime(seconds, force);
    followKaraoke(seconds);
}

void LRCView::followKaraoke(double seconds)
{
    // A hidden panel runs no frames.
    const Lyric* lyric = isVisible() ? parser() : nullptr;
    const int index = m_model.highlightedLRCindex();
    m_karaoke.follow(KaraokeLine::of(lyric && index >= 0 ? lyric->lrcItemAtIndex(index) : nullptr),
                     seconds);
}

void LRCView::setColorNormal(const QColor& color)
{
    m_model.colorNormal = color;
}

void LRCView::setColorHeight(const QColor& color)
{
    m_model.colorHeight = color;
}

void LRCView::setScrollDelegate(std::function<void(float)> receiver)
{
    m_model.scrollDelegate = std::move(receiver);
}

void LRCView::setDefaultString(const QString& text, const QString& hint)
{
    m_defaultString = text.isEmpty() ? QString() : text;
    m_hintString = text.isEmpty() ? QString() : hint;
    viewport()->update(); // the rows hide or come back
    if (text.isEmpty()) {
        if (m_defaultLabel)
            m_defaultLabel->hide();
        return;
    }
    if (!m_defaultLabel) {
        m_defaultLabel = new QLabel(this);
        m_defaultLabel->setAlignment(Qt::AlignCenter);
        m_defaultLabel->setWordWrap(true);
        m_defaultLabel->setTextFormat(Qt::RichText);
        m_defaultLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
        m_defaultLabel->setStyleSheet(QStringLiteral("background: transparent; color: white;"));
        m_defaultLabel->setFont(DisplayFont::withSize(m_defaultLabel->font(), kStatusPixels));
        m_defaultLabel->setGeometry(rect());
    }
    QString html = text.toHtmlEscaped();
    if (!m_hintString.isEmpty())
        html += QStringLiteral("<div style=\"font-size:%1px; color:#c8c8c8;\">&nbsp;<br>%2</div>")
                    .arg(kHintPixels)
                    .arg(m_hintString.toHtmlEscaped());
    m_defaultLabel->setText(html);
    m_defaultLabel->show();
    m_defaultLabel->raise();
}

bool LRCView::isDefaultStringVisible() const
{
    return m_defaultLabel && !m_defaultLabel->isHidden();
}

void LRCView::loadLRCcontent(const QString& text)
{
    m_model.loadLRCcontent(text);
    setDefaultString(QString());
}

void LRCView::updatePositionAtPlayTime(float seconds, bool stop)
{
    m_model.updatePositionAtPlayTime(seconds, stop);
}

void LRCView::delayReloadData()
{
    QTimer::singleShot(0, this, &LRCView::refresh);
}

void LRCView::reloadData()
{
    // Pictures stay valid while the text, the look and the width stay the same; a line
    // change only redraws the rows whose colour changes.
    const Lyric* lyric = parser();
    const QString key =
        font().toString() + QLatin1Char('|') + m_model.colorNormal.name(QColor::HexArgb) +
        m_model.colorHeight.name(QColor::HexArgb) + QString::number(viewport()->width()) +
        QLatin1Char('|') + QString::number(devicePixelRatioF()) + QLatin1Char('|') +
        QString::number(m_model.rows().numberOfRows()) + QLatin1Char('|') +
        QString::number(m_model.rows().cellPadding());
    if (key != m_picturesKey || !lyric || lyric->contents() != m_picturesText) {
        m_pictures.clear();
        m_picturesKey = key;
        m_picturesText = lyric ? lyric->contents() : QString();
    }
    m_litRow = litRow();
    viewport()->update();
}

void LRCView::highlightChanged()
{
    // Only the row that goes out and the row that lights up are painted again.
    const int lit = litRow();
    if (lit == m_litRow)
        return;
    updateRow(m_litRow);
    updateRow(lit);
    m_litRow = lit;
}

int LRCView::litRow() const
{
    const int index = m_model.highlightedLRCindex();
    return index < 0 ? -1 : m_model.rows().rowIndexFromLRCindex(index);
}

void LRCView::updateRow(int row)
{
    const QRectF rect = m_model.rows().rectForRow(row);
    if (rect.isEmpty())
        return;
    viewport()->update(rect.translated(0, -m_offset).toAlignedRect().adjusted(0, -1, 0, 1));
}

void LRCView::scrollToOffset(double y, bool animated)
{
    if (!animated || !isVisible()) {
        removeAllAnimations();
        setContentOffset(y);
        return;
    }
    startAnimation(QString(), y, kListScrollMilliseconds / 1000.0, false);
}

void LRCView::setContentOffset(double y)
{
    if (!std::isfinite(y) || y == m_offset)
        return;
    const bool repaint = paintedPositionChanges(m_offset, y);
    m_offset = y;
    // The end of an eased scroll moves less than a pixel per frame: such frames are not painted.
    if (repaint)
        viewport()->update();
}

bool LRCView::paintedPositionChanges(double from, double to) const
{
    // Rows are drawn at whole pixels, at round(top - offset). Every row's top has the same
    // fraction (heights are whole points, and only the padding row above is half the view),
    // so all rows move together unless the rounding meets a tie, which is painted anyway.
    const LRCRowModel& rows = m_model.rows();
    const double top = rows.rectForRow(rows.placeHolderCnt()).top();
    const double fraction = top - std::floor(top);
    const auto nearTie = [](double v) { return std::abs(v - std::floor(v) - 0.5) < 1e-6; };
    const double a = fraction - from;
    const double b = fraction - to;
    return nearTie(a) || nearTie(b) || std::round(a) != std::round(b);
}

void LRCView::beginAnimation(const QString& name, double y, double duration)
{
    startAnimation(name, y, duration, true);
}

void LRCView::startAnimation(const QString& name, double y, double duration, bool linear)
{
    removeAllAnimations();
    auto* animation = new QVariantAnimation(this);
    animation->setStartValue(m_offset);
    animation->setEndValue(std::isfinite(y) ? y : m_offset);
    // At least a millisecond: an animation of no length would end inside start(), and a
    // chain of lines sharing one time would then recurse once per line.
    animation->setDuration(
        std::isfinite(duration) && duration > 0.001 ? int(std::min(duration, 3600.0) * 1000) : 1);
    animation->setEasingCurve(linear ? QEasingCurve::Linear : QEasingCurve::OutCubic);
    connect(animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { setContentOffset(value.toDouble()); });
    connect(animation, &QVariantAnimation::finished, this, [this, animation] {
        if (m_animation != animation)
            return;
        m_animation = nullptr;
        const QString ended = m_animationName;
        animation->deleteLater();
        if (!ended.isEmpty())
            m_model.animationDidStop(ended, true);
    });
    m_animation = animation;
    m_animationName = name;
    animation->start();
}

void LRCView::removeAllAnimations()
{
    if (!m_animation)
        return;
    QVariantAnimation* animation = m_animation;
    m_animation = nullptr;
    animation->stop();
    animation->deleteLater();
    if (!m_animationName.isEmpty())
        m_model.animationDidStop(m_animationName, false);
}

const QPixmap& LRCView::pictureOfRow(int row)
{
    return pictureOfRow(row, m_model.isRowHighlighted(row));
}

const QPixmap& LRCView::pictureOfRow(int row, bool lit)
{
    // A long lyric played through must not keep a picture of every row it showed.
    if (m_pictures.size() >= kMaxPictures && !m_pictures.contains(row))
        m_pictures.clear();
    QPixmap& pixmap = m_pictures[row].pixmaps[lit ? 1 : 0];
    const QSize size = m_model.rows().rectForRow(row).size().toSize();
    if (!pixmap.isNull() && pixmap.size() / devicePixelRatioF() == size)
        return pixmap;
    const qreal ratio = devicePixelRatioF();
    pixmap = QPixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    const QString text = m_model.rows().textOfRow(row);
    if (!text.trimmed().isEmpty() && !size.isEmpty()) {
        const QColor color = lit ? m_model.colorHeight : m_model.colorNormal;
        m_renderer->setFont(font());
        m_renderer->setEffectStroke(color, kStrokeWidth);
        m_renderer->setTextColor(color);
        m_renderer->setText(text);
        QPainter painter(&pixmap);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        // The line under the text takes the bottom of the row; the text keeps the rest.
        const double under = m_model.rows().secondaryHeightOfRow(row);
        m_renderer->drawTextInRect(painter, QRectF(0, 0, size.width(), size.height() - under));
        secondarypaint::draw(painter, m_model.rows().secondaryTextOfRow(row),
                             m_model.rows().secondaryFont(),
                             QRectF(0, size.height() - under, size.width(), under), color);
        ++m_renderedRows;
    }
    return pixmap;
}

void LRCView::paintEvent(QPaintEvent* event)
{
    if (isDefaultStringVisible())
        return; // a status text never shows over a lyric
    ++m_paintedFrames;
    QPainter painter(viewport());
    const LRCRowModel& rows = m_model.rows();
    const double bottom = m_offset + viewport()->height();
    for (int row = std::max(0, rows.rowAtY(std::max(0.0, m_offset)));
         row >= 0 && row < rows.numberOfRows(); ++row) {
        const QRectF rect = rows.rectForRow(row);
        if (rect.top() >= bottom)
            break;
        if (rows.realIndexTrimFromRow(row) < 0 || rect.height() <= 0)
            continue;
        const QPointF at(rect.left(), std::round(rect.top() - m_offset));
        if (!event->rect().intersects(QRectF(at, rect.size()).toAlignedRect()))
            continue; // a fill's frame repaints a few pixels of one row
        if (row != m_litRow || !paintKaraokeRow(painter, row, at, event->region()))
            painter.drawPixmap(at, pictureOfRow(row));
    }
}

std::optional<QRegion> LRCView::karaokeRegion(int row)
{
    const QString text = m_model.rows().textOfRow(row);
    if (row < 0 || !m_model.isRowHighlighted(row) || !m_karaoke.fills(text))
        return std::nullopt;
    // Laid out as the row's picture is drawn (VSEffectLabel in the row's rectangle), once per
    // line and size; each frame then only measures carets.
    const QRectF rect = m_model.rows().rectForRow(row);
    const QRectF box(QPointF(), rect.size());
    if (!m_karaokeLayout || text != m_karaokeText || box.size() != m_karaokeBox ||
        font() != m_karaokeFont) {
        m_karaokeLayout =
            std::make_unique<WrappedText>(text, font(), box.width(), kRowLines, box.height());
        m_karaokeText = text;
        m_karaokeBox = box.size();
        m_karaokeFont = font();
    }
    const QPointF at(rect.left(), std::round(rect.top() - m_offset));
    return m_karaoke.sungRegion(*m_karaokeLayout, box, at);
}

bool LRCView::paintKaraokeRow(QPainter& painter, int row, const QPointF& at, const QRegion& painted)
{
    const std::optional<QRegion> sung = karaokeRegion(row);
    if (!sung)
        return false;
    const QPixmap normal = pictureOfRow(row, false); // shared copies: the cache may rehash
    const QPixmap lit = pictureOfRow(row, true);
    KaraokeFill::paint(painter, at, normal, lit, *sung);
    // The fill may have moved on since its frame asked for this paint: what is on screen is the
    // new fill inside the painted area and the old one outside it.
    m_karaokePainted = m_karaokePainted.subtracted(painted).united(sung->intersected(painted));
    return true;
}

void LRCView::karaokeFrame()
{
    const std::optional<QRegion> sung = karaokeRegion(m_litRow);
    if (!sung) {
        m_karaokePainted = QRegion();
        updateRow(m_litRow); // the fill went: the row as it is drawn without one
        return;
    }
    const QRegion changed = sung->xored(m_karaokePainted);
    if (!changed.isEmpty())
        viewport()->update(changed);
}

void LRCView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    m_model.rows().setViewSize(viewport()->size());
    if (m_defaultLabel)
        m_defaultLabel->setGeometry(rect());
    m_model.reloadData();
}

void LRCView::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        // Line changes no longer lay the rows out, so a new font does it at once.
        m_model.rows().setFont(font());
        m_model.reloadData();
    }
}

void LRCView::keyPressEvent(QKeyEvent* event)
{
    m_model.keyFlagChanged(event->key() == Qt::Key_Alt);
    QAbstractScrollArea::keyPressEvent(event);
}

void LRCView::mousePressEvent(QMouseEvent* event)
{
    m_model.touchBegan(event->position().y());
    QAbstractScrollArea::mousePressEvent(event);
}

void LRCView::mouseMoveEvent(QMouseEvent* event)
{
    m_model.touchMoved(event->position().y());
    QAbstractScrollArea::mouseMoveEvent(event);
}

void LRCView::mouseReleaseEvent(QMouseEvent* event)
{
    m_model.touchEnded();
    QAbstractScrollArea::mouseReleaseEvent(event);
}
