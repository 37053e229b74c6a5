#include "gui/app/TimeItOffer.h"

#include "core/app/AppDelegate.h"

#include <QEvent>
#include <QPushButton>
#include <QWidget>

TimeItOffer::TimeItOffer(QWidget& panel, AppDelegate& delegate)
    : QObject(&panel)
    , m_panel(&panel)
    , m_delegate(&delegate)
{
    m_button = new QPushButton(tr("Time it..."), &panel);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setToolTip(tr("Time this lyric by tapping along in the lyric editor"));
    m_button->hide();
    connect(m_button, &QPushButton::clicked, this, [this] {
        if (m_delegate)
            m_delegate->showLyricEditor();
    });
    connect(&delegate.state(), &AppState::changed, this, [this](const QString& name) {
        if (name == QLatin1String("Synced") || name == QLatin1String("LyricLoaded"))
            follow();
    });
    panel.installEventFilter(this);
    follow();
}

void TimeItOffer::follow()
{
    if (!m_delegate || !m_button)
        return;
    const AppState& state = m_delegate->state();
    m_button->setVisible(state.lyricLoaded() && !state.synced());
    place();
}

void TimeItOffer::place()
{
    if (!m_button || !m_panel)
        return;
    const QSize size = m_button->sizeHint();
    m_button->setGeometry((m_panel->width() - size.width()) / 2,
                          m_panel->height() - size.height() - 8, size.width(), size.height());
    m_button->raise();
}

bool TimeItOffer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_panel && event->type() == QEvent::Resize)
        place();
    return QObject::eventFilter(watched, event);
}
