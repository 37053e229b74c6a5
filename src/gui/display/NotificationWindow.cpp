#include "gui/display/NotificationWindow.h"

#include "core/display/NotificationGeometry.h"
#include "gui/display/FloatingWindow.h"
#include "gui/display/LayerTextField.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

NotificationWindow::NotificationWindow(QWidget* parent)
    : QWidget(parent)
{
    FloatingWindow::apply(this, false);
    setFocusPolicy(Qt::NoFocus);
    setWindowOpacity(NotificationGeometry::kAlpha);
}

void NotificationWindow::setPlateScale(double scale)
{
    m_scale = scale;
    const bool whole = scale == 1.0;
    for (LayerTextField* field : std::as_const(m_fields))
        field->setVisible(whole);
    update();
}

void NotificationWindow::showEvent(QShowEvent* event)
{
    FloatingWindow::showOnAllDesktops(this);
    QWidget::showEvent(event);
}

void NotificationWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const QPointF centre = QRectF(rect()).center();
    painter.translate(centre);
    painter.scale(m_scale, m_scale);
    painter.translate(-centre);

    // From the plate's bottom edge up: flat dark grey for 70%, brightening over the top 30%.
    QLinearGradient gradient(0, height(), 0, 0);
    gradient.setColorAt(0, NotificationGeometry::gradientDark());
    gradient.setColorAt(NotificationGeometry::kGradientFlatUntil,
                        NotificationGeometry::gradientDark());
    gradient.setColorAt(1, NotificationGeometry::gradientLight());
    QPainterPath plate;
    plate.addRoundedRect(QRectF(rect()), NotificationGeometry::kCornerRadius,
                         NotificationGeometry::kCornerRadius);
    painter.fillPath(plate, gradient);
    if (m_scale != 1.0) {
        for (const LayerTextField* field : std::as_const(m_fields))
            field->drawInto(painter);
    }
}
