#pragma once

#include "core/display/NotificationTrack.h"

#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>
#include <memory>
#include <vector>

class LayerTextField;
class NotificationWindow;
class QTimer;
class QVariantAnimation;

// The song-change panel's controller: lays out the track's name, artist, album and duration,
// fits the width, places the panel in a corner, grows it out of its centre (0.44 s), keeps it
// five seconds, shrinks it away (0.3 s) and then asks its owner to remove it.
class NotificationWindowController : public QObject {
    Q_OBJECT
public:
    // The widest a field may grow; a longer text is cut with an ellipsis.
    static constexpr int kMaximumFieldWidth = 560;

    explicit NotificationWindowController(QObject* parent = nullptr);
    ~NotificationWindowController() override;

    NotificationWindow* window() const { return m_window.get(); }
    LayerTextField* nameField() const { return m_nameField; }
    LayerTextField* artistField() const { return m_artistField; }
    LayerTextField* albumField() const { return m_albumField; }
    LayerTextField* durationField() const { return m_durationField; }
    QTimer* hideTimer() const { return m_hideTimer; }

    // The owner's notificationCanBeRemoved; an empty function answers nothing.
    void setDelegate(std::function<void()> notificationCanBeRemoved);
    const NotificationTrack& track() const { return m_track; }
    void setTrack(const NotificationTrack& track);
    void resize();
    int positionCorner() const { return m_positionCorner; }
    void setPositionCorner(int corner);
    // Places the panel in the first corner that covers none of the given frames.
    void placeAvoiding(const std::vector<QRect>& occupied);
    void showWindow();
    void timerFired();
    void disappear();
    void close();

private:
    void animateScale(double from, double to, double seconds, bool reportEnd);
    void animateOpacity(double to);
    void stopAnimations();

    std::unique_ptr<NotificationWindow> m_window;
    LayerTextField* m_nameField = nullptr;
    LayerTextField* m_artistField = nullptr;
    LayerTextField* m_albumField = nullptr;
    LayerTextField* m_durationField = nullptr;
    QTimer* m_hideTimer = nullptr;
    QPointer<QVariantAnimation> m_scaleAnimation;
    QPointer<QVariantAnimation> m_opacityAnimation;
    std::function<void()> m_delegate;
    NotificationTrack m_track;
    int m_positionCorner = 0;
};
