#include "gui/display/SingleLineView.h"

#include "core/display/DisplayFont.h"
#include "core/display/FontTextMeasurer.h"
#include "core/display/ImageBlur.h"
#include "core/display/SecondaryLineLayout.h"
#include "core/display/SingleLineGeometry.h"
#include "core/foundation/StringAdditions.h"
#include "gui/display/SecondaryLinePainter.h"
#include "gui/display/WrappedText.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

SingleLineView::SingleLineView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAutoFillBackground(false);
    setFont(DisplayFont::withSize(font(), 30));
    connect(&m_karaoke, &KaraokeFill::frame, this, &SingleLineView::karaokeFrame);
}

void SingleLineView::karaokeFrame()
{
    // The first frame of a word-timed line needs its two pictures; the last one, white again.
    if (m_renderedTimed != m_karaoke.fills(m_string)) {
        m_dirty = true;
        update();
        return;
    }
    // Otherwise only the pixels the fill changed.
    const QRegion changed = sungRegion().xored(m_sungPainted);
    if (!changed.isEmpty())
        update(changed);
}

QRegion SingleLineView::sungRegion() const
{
    if (m_litPicture.isNull() || !m_litLayout || !m_karaoke.fills(m_string))
        return {};
    QRegion region;
    // The lines' boxes grown to hold the glyphs' outline and descenders.
    for (const QRect& part : m_karaoke.sungRegion(*m_litLayout, m_textRect, QPointF()))
        region += part.adjusted(0, -2, 0, 2);
    return region;
}

SingleLineView::~SingleLineView() = default;

void SingleLineView::setFillColors(const QColor& sung, const QColor& unsung)
{
    if (sung.isValid())
        m_sungColor = sung;
    if (unsung.isValid())
        m_unsungColor = unsung;
    relayout();
}

void SingleLineView::setString(const QString& string)
{
    if (string == m_string && string.isNull() == m_string.isNull())
        return; // the same line again: the picture is already right
    m_string = string;
    relayout();
}

void SingleLineView::setSecondary(const QString& text)
{
    if (text == m_secondary)
        return;
    m_secondary = text;
    relayout();
}

static QFont secondaryFont(const QFont& font)
{
    QFont f = font;
    if (f.pixelSize() > 0)
        f.setPixelSize(std::max(1, int(std::lround(f.pixelSize() * secondaryline::kStripScale))));
    else
        f.setPointSizeF(std::max(1.0, f.pointSizeF() * secondaryline::kStripScale));
    return f;
}

void SingleLineView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        relayout();
}

void SingleLineView::setShowBG(bool show)
{
    m_showBG = show;
    relayout();
}

void SingleLineView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void SingleLineView::relayout()
{
    m_dirty = true;
    m_textRect = QRectF();
    m_secondaryRect = QRectF();
    if (!m_string.isEmpty() && foundation::isNonEmpty(m_string)) {
        const QSizeF bounds = size();
        const QSizeF measured = FontTextMeasurer::shared().sizeWithFont(m_string, font(), bounds);
        m_textRect = SingleLineGeometry::textRect(bounds, measured);
        if (foundation::isNonEmpty(m_secondary)) {
            // With the plate, both lines and the plate's margins must fit in the strip.
            const double margins = m_showBG ? 2 * SingleLineGeometry::kPlateMargin : 0;
            const QSizeF under = FontTextMeasurer::shared().sizeWithFont(
                secondarypaint::laidOut(m_secondary), secondaryFont(font()), bounds);
            const auto stacked = secondaryline::stack(
                QSizeF(bounds.width(), bounds.height() - margins), measured, under);
            if (!stacked.under.isEmpty()) {
                m_textRect = stacked.main.translated(0, margins / 2);
                m_secondaryRect = stacked.under.translated(0, margins / 2);
            }
        }
    }
    const QRectF shown = m_textRect.united(m_secondaryRect);
    const QRect input = SingleLineGeometry::inputRect(shown, m_showBG, size());
    if (input != m_inputRect) {
        m_inputRect = input;
        Q_EMIT inputRectChanged(input);
    }
    update();
}

void SingleLineView::render()
{
    m_dirty = false;
    const qreal ratio = devicePixelRatioF();
    m_picture = QImage(size() * ratio, QImage::Format_ARGB32_Premultiplied);
    if (m_picture.isNull())
        return;
    m_picture.setDevicePixelRatio(ratio);
    m_picture.fill(Qt::transparent);
    m_litPicture = QImage();
    m_litLayout.reset();
    m_renderedTimed = m_karaoke.fills(m_string);
    if (m_textRect.isEmpty())
        return;
    ++m_renders;
    const QColor color = m_renderedTimed ? m_unsungColor : QColor(Qt::white);

    const QRectF text = m_textRect;
    const WrappedText wrapped(m_string, font(), text.width(), 0, text.height());

    QPainter painter(&m_picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setClipRect(rect());
    if (m_showBG) {
        QPainterPath plate;
        plate.addRoundedRect(SingleLineGeometry::plateRect(text.united(m_secondaryRect)),
                             SingleLineGeometry::kPlateRadius, SingleLineGeometry::kPlateRadius);
        painter.setClipPath(plate, Qt::IntersectClip);
        painter.fillPath(plate, QColor::fromRgbF(0, 0, 0, float(SingleLineGeometry::kPlateAlpha)));
        wrapped.draw(painter, text, color);
        secondarypaint::draw(painter, m_secondary, secondaryFont(font()), m_secondaryRect,
                             Qt::white);
        renderLit(QImage());
        return;
    }

    // Outline first, white fill over it; both cast the black shadow.
    QImage glyphs(m_picture.size(), QImage::Format_ARGB32_Premultiplied);
    glyphs.setDevicePixelRatio(ratio);
    glyphs.fill(Qt::transparent);
    {
        QPainter layer(&glyphs);
        layer.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        layer.setClipRect(text.united(m_secondaryRect).adjusted(-2, -2, 2, 2));
        layer.strokePath(wrapped.path(text), QPen(Qt::gray, SingleLineGeometry::kOutlineWidth));
        wrapped.draw(layer, text, color);
        secondarypaint::draw(layer, m_secondary, secondaryFont(font()), m_secondaryRect, Qt::white);
    }
    QImage shadow = glyphs;
    {
        QPainter tint(&shadow);
        tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
        tint.fillRect(shadow.rect(), Qt::black);
    }
    shadow = ImageBlur::blurred(shadow, SingleLineGeometry::kShadowBlur * ratio);
    shadow.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(), shadow); // the outline's shadow
    painter.drawImage(QPointF(), shadow); // and the fill's
    painter.drawImage(QPointF(), glyphs);
    renderLit(shadow);
}

void SingleLineView::renderLit(const QImage& shadow)
{
    m_litPicture = QImage();
    m_litLayout.reset();
    if (!m_karaoke.fills(m_string) || m_textRect.isEmpty())
        return;
    const qreal ratio = devicePixelRatioF();
    m_litPicture = QImage(size() * ratio, QImage::Format_ARGB32_Premultiplied);
    m_litPicture.setDevicePixelRatio(ratio);
    m_litPicture.fill(Qt::transparent);
    const QRectF text = m_textRect;
    m_litLayout = std::make_unique<WrappedText>(m_string, font(), text.width(), 0, text.height());
    const WrappedText& wrapped = *m_litLayout;
    QPainter painter(&m_litPicture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (m_showBG) {
        QPainterPath plate;
        plate.addRoundedRect(SingleLineGeometry::plateRect(text), SingleLineGeometry::kPlateRadius,
                             SingleLineGeometry::kPlateRadius);
        painter.setClipPath(plate);
        painter.fillPath(plate, QColor::fromRgbF(0, 0, 0, float(SingleLineGeometry::kPlateAlpha)));
        wrapped.draw(painter, text, m_sungColor);
        return;
    }
    painter.drawImage(QPointF(), shadow);
    painter.drawImage(QPointF(), shadow);
    painter.setClipRect(text.adjusted(-2, -2, 2, 2));
    painter.strokePath(wrapped.path(text), QPen(Qt::gray, SingleLineGeometry::kOutlineWidth));
    wrapped.draw(painter, text, m_sungColor);
}

void SingleLineView::paintEvent(QPaintEvent* event)
{
    if (m_dirty || m_picture.size() != size() * devicePixelRatioF())
        render();
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (m_litPicture.isNull() || !m_litLayout || !m_karaoke.fills(m_string)) {
        m_sungPainted = QRegion();
        painter.drawImage(QPointF(), m_picture);
        return;
    }
    // Laid out once per line: each frame only measures where the fill ends.
    const QRegion sung = sungRegion();
    // The fill may have moved on since its frame asked for this paint: what is on screen is the
    // new fill inside the painted area and the old one outside it.
    const QRegion painted = event->region();
    m_sungPainted = m_sungPainted.subtracted(painted).united(sung.intersected(painted));
    painter.setClipRegion(QRegion(rect()) - sung);
    painter.drawImage(QPointF(), m_picture);
    painter.setClipRegion(sung);
    painter.drawImage(QPointF(), m_litPicture);
}
