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
    // Over the whole strip (its shape shows the part where the line is).
    m_label->setGeometry(strip->rect());
    m_label->show();
    m_label->raise();
    m_hide.start();
}

QLabel* OffsetNotice::label() const
{
    return m_label && m_label->isVisible() ? m_label.data() : nullptr;
}
