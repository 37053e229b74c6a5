#include "gui/display/SyncInput.h"

#include "core/app/OffsetNudge.h"
#include "gui/display/LRCView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>

SyncInput::SyncInput(Targets targets, std::function<void(double)> nudge,
                     std::function<void(float)> seek, QObject* parent)
    : QObject(parent)
    , m_targets(std::move(targets))
    , m_nudge(std::move(nudge))
    , m_seek(std::move(seek))
{
}

SyncInput::~SyncInput() = default;

bool SyncInput::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        break;
    default:
        return false;
    }
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !widget->isWidgetType())
        return false;
    LRCView* view = m_targets.view ? m_targets.view() : nullptr;
    if (view && watched == view->viewport() && seekInput(*view, event))
        return true;
    if (!m_targets.isLyricWindow || !m_targets.isLyricWindow(widget->window()))
        return false;
    return nudgeInput(event);
}

bool SyncInput::nudgeInput(QEvent* event)
{
    double delta = 0;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Minus)
            delta = -offsetnudge::kStep;
        else if (key == Qt::Key_Plus || key == Qt::Key_Equal)
            delta = offsetnudge::kStep;
    } else if (event->type() == QEvent::Wheel) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        if (!(wheel->modifiers() & Qt::ControlModifier))
            return false;
        // One step per notch (120); a touchpad's small steps add up to one.
        m_wheel += wheel->angleDelta().y();
        const int notches = m_wheel / 120;
        m_wheel -= notches * 120;
        if (notches != 0 && m_nudge)
            m_nudge(notches * offsetnudge::kStep);
        return true;
    }
    if (delta == 0 || !m_nudge)
        return false;
    m_nudge(delta);
    return true;
}

bool SyncInput::seekInput(LRCView& view, QEvent* event)
{
    if (m_view != &view) {
        m_gesture = std::make_unique<LineSeekGesture>(view.model(), [this](float seconds) {
            if (m_seek)
                m_seek(seconds);
        });
        m_view = &view;
    }
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const double y = mouse->position().y();
    switch (type) {
    case QEvent::MouseButtonPress:
        if (mouse->button() != Qt::LeftButton)
            return false;
        m_gesture->press(y);
        return true;
    case QEvent::MouseMove:
        if (!m_gesture->isPressed())
            return false;
        m_gesture->move(y);
        return true;
    case QEvent::MouseButtonRelease:
        if (mouse->button() != Qt::LeftButton || !m_gesture->isPressed())
            return false;
        m_gesture->release(y, view.contentOffset());
        return true;
    default:
        return false;
    }
}
