#include "gui/display/OffsetNotice.h"

#include "core/app/OffsetNudge.h"

#include <QLabel>
#include <QWidget>

OffsetNotice::OffsetNotice(std::function<QWidget*()> strip, QObject* parent)
    : QObject(parent)
    , m_strip(std::move(strip))
{
    m_hide.setSingleShot(true);
    m_hide.setInterval(kShownMs);
    connect(&m_hide, &QTimer::timeout, this, [this] {
        if (m_label)
            m_label->hide();
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
        m_label->setStyleSheet(QStringLiteral("QLabel { color: white; background: rgba(0,0,0,200);"
                                              " border-radius: 8px; padding: 4px 14px; }"));
        QFont font = m_label->font();
        font.setPointSizeF(font.pointSizeF() * 1.4);
        font.setBold(true);
        m_label->setFont(font);
    }
    m_label->setText(offsetnudge::noticeText(seconds));
    m_label->adjustSize();
    // Centred over the strip, above the line.
    m_label->move((strip->width() - m_label->width()) / 2,
                  (strip->height() - m_label->height()) / 2);
    m_label->show();
    m_label->raise();
    m_hide.start();
}

QLabel* OffsetNotice::label() const
{
    return m_label && m_label->isVisible() ? m_label.data() : nullptr;
}
