#include "gui/display/HUDWindow.h"

#include "core/display/HUDBackgroundGeometry.h"
#include "gui/display/BackgroundDragMover.h"
#include "gui/display/FloatingWindow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QTextOption>

namespace {
// The close glyph: a small dark-grey disc with a light cross.
QIcon closeIcon(qreal ratio)
{
    QPixmap pixmap(QSize(HUDWindow::kCloseSize, HUDWindow::kCloseSize) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(200, 200, 200, 200));
    painter.drawEllipse(QRectF(0.5, 0.5, 12, 12));
    painter.setPen(QPen(QColor(40, 40, 40), 1.5));
    painter.drawLine(QPointF(4, 4), QPointF(9, 9));
    painter.drawLine(QPointF(9, 4), QPointF(4, 9));
    return QIcon(pixmap);
}
} // namespace

HUDWindow::HUDWindow(QWidget* parent)
    : QWidget(parent)
{
    // The panel can take the keyboard when clicked, but showing it does not.
    FloatingWindow::apply(this, true);
    setWindowOpacity(1.0);
    new BackgroundDragMover(this);
    rebuildBackground();
}

QFont HUDWindow::titleFont()
{
    QFont font;
    font.setPixelSize(11);
    return font;
}

void HUDWindow::setTitle(const QString& title)
{
    setWindowTitle(title);
    windowDidResize();
}

void HUDWindow::addCloseWidget()
{
    if (m_close)
        return;
    m_close = new QPushButton(this);
    m_close->setFlat(true);
    m_close->setFocusPolicy(Qt::NoFocus);
    m_close->setIcon(closeIcon(devicePixelRatioF()));
    m_close->setIconSize(QSize(kCloseSize, kCloseSize));
    m_close->setStyleSheet(QStringLiteral("QPushButton { border: none; padding: 0; }"));
    // y = frame height - 16 from the bottom: 3 from the top.
    m_close->setGeometry(3, 3, kCloseSize, kCloseSize);
    m_close->setText(QString());
    connect(m_close, &QPushButton::clicked, this, &QWidget::hide);
    m_close->show();
}

void HUDWindow::setFrame(const QRect& frame, bool display, bool animate)
{
    if (!animate) {
        m_forceDisplay = display;
        setGeometry(frame);
        m_forceDisplay = false;
        return;
    }
    auto* animation = new QPropertyAnimation(this, "geometry", this);
    animation->setEndValue(frame);
    animation->setDuration(200);
    connect(animation, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        m_forceDisplay = true;
        setGeometry(value.toRect());
        m_forceDisplay = false;
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void HUDWindow::windowDidResize()
{
    rebuildBackground();
    if (m_forceDisplay)
        repaint();
    else
        update();
}

void HUDWindow::rebuildBackground()
{
    ++m_backgroundBuilds;
    const qreal ratio = devicePixelRatioF();
    const QSize size = this->size();
    m_background = QPixmap(size * ratio);
    if (m_background.isNull())
        return;
    m_background.setDevicePixelRatio(ratio);
    m_background.fill(Qt::transparent);
    const HUDBackgroundGeometry geometry(size.width(), size.height());
    QPainter painter(&m_background);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QTransform flip = geometry.flip();
    painter.fillPath(flip.map(geometry.bodyPath()), HUDBackgroundGeometry::bodyColor());
    painter.fillPath(flip.map(geometry.titlePath()), HUDBackgroundGeometry::titleColor());

    const QFont font = titleFont();
    const double textHeight = QFontMetricsF(font).height();
    const QRectF text = flip.mapRect(geometry.titleTextRect(textHeight));
    if (text.width() > 0) {
        painter.setFont(font);
        painter.setPen(Qt::white);
        const QString shown =
            QFontMetricsF(font).elidedText(windowTitle(), Qt::ElideRight, text.width());
        painter.drawText(text, Qt::AlignCenter, shown);
    }
}

void HUDWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawPixmap(0, 0, m_background);
}

void HUDWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    windowDidResize();
}

void HUDWindow::showEvent(QShowEvent* event)
{
    FloatingWindow::showOnAllDesktops(this);
    QWidget::showEvent(event);
}
