#include "gui/preferences/ColorWell.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

ColorWell::ColorWell(QWidget* parent)
    : QToolButton(parent)
{
    setIconSize(QSize(44, 18));
    setToolButtonStyle(Qt::ToolButtonIconOnly);
    connect(this, &QToolButton::clicked, this, &ColorWell::openDialog);
    updateSwatch();
}

void ColorWell::setColor(const QColor& color)
{
    m_color = color;
    updateSwatch();
}

void ColorWell::openDialog()
{
    if (!m_dialog) {
        m_dialog = new QColorDialog(this);
        m_dialog->setOption(QColorDialog::ShowAlphaChannel);
        m_dialog->setOption(QColorDialog::DontUseNativeDialog);
        connect(m_dialog, &QColorDialog::colorSelected, this, [this](const QColor& picked) {
            setColor(picked);
            Q_EMIT colorPicked(picked);
        });
    }
    m_dialog->setCurrentColor(m_color.isValid() ? m_color : QColor(Qt::white));
    m_dialog->open();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void ColorWell::updateSwatch()
{
    const qreal ratio = devicePixelRatioF();
    QPixmap swatch(iconSize() * ratio);
    swatch.setDevicePixelRatio(ratio);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    const QRectF box(0.5, 0.5, iconSize().width() - 1, iconSize().height() - 1);
    if (m_color.isValid()) {
        // Under a translucent colour a checkerboard shows how much of the lyric shows through.
        painter.fillRect(box, QBrush(Qt::lightGray, Qt::Dense4Pattern));
        painter.fillRect(box, m_color);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(box);
    painter.end();
    setIcon(QIcon(swatch));
    setToolTip(m_color.isValid() ? m_color.name(QColor::HexArgb) : tr("No colour"));
}
