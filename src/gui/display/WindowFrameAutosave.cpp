#include "gui/display/WindowFrameAutosave.h"

#include <QEvent>
#include <QSettings>
#include <QWidget>

WindowFrameAutosave::WindowFrameAutosave(QWidget* window, QString name, QSettings* store)
    : QObject(window)
    , m_window(window)
    , m_name(std::move(name))
    , m_storeGuard(store)
    , m_store(store)
{
    if (window)
        window->installEventFilter(this);
}

std::optional<QRect> WindowFrameAutosave::savedFrame() const
{
    if (!m_storeGuard)
        return std::nullopt;
    const QVariant value = m_store->value(keyFor(m_name));
    if (value.typeId() != QMetaType::QRect)
        return std::nullopt;
    const QRect frame = value.toRect();
    if (!frame.isValid())
        return std::nullopt;
    return frame;
}

void WindowFrameAutosave::save()
{
    if (m_storeGuard && m_window && m_window->isVisible())
        m_store->setValue(keyFor(m_name), m_window->geometry());
}

bool WindowFrameAutosave::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        save();
    return QObject::eventFilter(watched, event);
}
