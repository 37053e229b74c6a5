#include "gui/display/OffsetNotice.h"

#include "core/app/OffsetNudge.h"

#include <QLabel>
#include <QWidget>

#include <algorithm>

OffsetNotice::OffsetNotice(std::function<QWidget*()> strip, QObject* parent)
    : QObject(parent)
    , m_strip(std::move(strip))
{
    m_hide.setSingleShot(true);
    m_hide.setInterval(kShownMs);
    connect(&m_hide, &QTimer::timeout, this, [this] {
        if (m_label)
            m_label->hide();
        Q_EMIT areaChanged({});
    });
}

OffsetNotice::~OffsetNotice()
{
    delete m_label.data();
}

void OffsetNotice::show(double seconds)
{
    QWidget* strip = m_strip ? m_strip() : nullptr;
    if (!strip || !strip->isVisible())
        return;
    if (!m_label || m_label->parentWidget() != strip) {
        delete m_label.data();
        m_label = new QLabel(strip);
        m_label->setAlignment(Qt::AlignCenter);
        m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
        // Opaque: the notice stands in for the line rather than blending with it.
        m_label->setStyleSheet(QStringLiteral("QLabel { color: white; background: rgb(28,28,30);"
                                              " border-radius: 10px; }"));
    }
    QFont font = strip->font();
    font.setPixelSize(std::max(12, strip->height() * 2 / 5));
    font.setBold(true);
    m_label->setFont(font);
    m_label->setText(offsetnudge::noticeText(seconds));
    // Its own size, in the middle of the strip, however short the line under it.
    const QSize text = m_label->sizeHint();
    const QSize size(std::min(strip->width(), text.width() + text.height() * 2),
                     std::min(strip->height(), text.height() * 3 / 2));
    QRect area(QPoint(), size);
    area.moveCenter(strip->rect().center());
    m_label->setGeometry(area);
    Q_EMIT areaChanged(area);
    m_label->show();
    m_label->raise();
    m_hide.start();
}

QLabel* OffsetNotice::label() const
{
    return m_label && m_label->isVisible() ? m_label.data() : nullptr;
}
