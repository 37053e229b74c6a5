#include "gui/display/NotificationWindowController.h"

#include "core/display/DisplayFont.h"
#include "core/display/NotificationGeometry.h"
#include "gui/display/LayerTextField.h"
#include "gui/display/NotificationWindow.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QVariantAnimation>

namespace {
constexpr int kLeft = 16;
constexpr int kTop = 12;
constexpr int kFadeMilliseconds = 250;

QEasingCurve easeInEaseOut()
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(QPointF(0.42, 0), QPointF(0.58, 1), QPointF(1, 1));
    return curve;
}

LayerTextField* makeField(QWidget* parent, double size, bool bold, const QColor& color)
{
    auto* field = new LayerTextField(parent);
    QFont font = DisplayFont::withSize(field->font(), size);
    font.setBold(bold);
    field->setFont(font);
    QPalette palette = field->palette();
    palette.setColor(QPalette::WindowText, color);
    field->setPalette(palette);
    field->setMaximumWidth(NotificationWindowController::kMaximumFieldWidth);
    return field;
}
} // namespace

NotificationWindowController::NotificationWindowController(QObject* parent)
    : QObject(parent)
    , m_window(std::make_unique<NotificationWindow>())
{
    // The panel's layout: the name in bold, then artist, album and duration, one per line.
    m_nameField = makeField(m_window.get(), 16, true, Qt::white);
    m_artistField = makeField(m_window.get(), 13, false, QColor(225, 225, 225));
    m_albumField = makeField(m_window.get(), 13, false, QColor(190, 190, 190));
    m_durationField = makeField(m_window.get(), 12, false, QColor(160, 160, 160));
    int y = kTop;
    for (LayerTextField* field : {m_nameField, m_artistField, m_albumField, m_durationField}) {
        field->sizeToFit();
        field->move(kLeft, y);
        y += field->height() + (field == m_nameField ? 5 : 2);
    }
    m_window->setFields({m_nameField, m_artistField, m_albumField, m_durationField});
    m_window->resize(NotificationGeometry::kMinimumWidth, y + kTop - 2);
    m_window->setWindowOpacity(0);

    m_hideTimer = new QTimer(this);
    m_hideTimer->setSingleShot(true);
    m_hideTimer->setInterval(int(NotificationGeometry::kStaySeconds * 1000));
    connect(m_hideTimer, &QTimer::timeout, this, &NotificationWindowController::timerFired);
}

NotificationWindowController::~NotificationWindowController()
{
    m_delegate = nullptr;
    stopAnimations();
    close();
}

void NotificationWindowController::setDelegate(std::function<void()> notificationCanBeRemoved)
{
    m_delegate = std::move(notificationCanBeRemoved);
}

void NotificationWindowController::setTrack(const NotificationTrack& track)
{
    m_track = track;
    m_nameField->setText(track.name);
    m_artistField->setText(track.artist);
    m_albumField->setText(track.album);
    m_durationField->setText(NotificationTrack::durationText(track.duration));
}

void NotificationWindowController::resize()
{
    std::vector<QRect> frames;
    for (LayerTextField* field : {m_artistField, m_nameField, m_albumField, m_durationField}) {
        field->sizeToFit();
        frames.push_back(field->geometry());
    }
    m_window->resize(NotificationGeometry::fittedWidth(frames), m_window->height());
    m_window->repaint();
}

namespace {
QRect visibleFrame()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}
} // namespace

void NotificationWindowController::setPositionCorner(int corner)
{
    m_window->move(NotificationGeometry::originForCorner(corner, visibleFrame(), m_window->size()));
    m_positionCorner = corner;
}

void NotificationWindowController::placeAvoiding(const std::vector<QRect>& occupied)
{
    setPositionCorner(
        NotificationGeometry::cornerAvoiding(visibleFrame(), m_window->size(), occupied));
}

void NotificationWindowController::showWindow()
{
    m_window->show();
    stopAnimations();
    animateScale(NotificationGeometry::kSmallScale, 1.0, NotificationGeometry::kAppearSeconds,
                 false);
    animateOpacity(NotificationGeometry::kAlpha);
    m_hideTimer->start();
}

void NotificationWindowController::timerFired()
{
    stopAnimations();
    animateScale(1.0, NotificationGeometry::kSmallScale, NotificationGeometry::kDisappearSeconds,
                 true);
    animateOpacity(0.0);
}

void NotificationWindowController::disappear()
{
    timerFired();
}

void NotificationWindowController::close()
{
    m_hideTimer->stop();
    m_window->close();
}

void NotificationWindowController::stopAnimations()
{
    // Stopping the disappear animation still asks for removal, as its end does.
    if (m_scaleAnimation)
        m_scaleAnimation->stop();
    if (m_opacityAnimation)
        m_opacityAnimation->stop();
}

void NotificationWindowController::animateScale(double from, double to, double seconds,
                                                bool reportEnd)
{
    auto* animation = new QVariantAnimation(this);
    animation->setStartValue(from);
    animation->setEndValue(to);
    animation->setDuration(int(seconds * 1000));
    animation->setEasingCurve(easeInEaseOut());
    NotificationWindow* window = m_window.get();
    connect(animation, &QVariantAnimation::valueChanged, window,
            [window](const QVariant& value) { window->setPlateScale(value.toDouble()); });
    connect(animation, &QAbstractAnimation::stateChanged, this,
            [this, animation, reportEnd](QAbstractAnimation::State state) {
                if (state != QAbstractAnimation::Stopped)
                    return;
                animation->deleteLater();
                // Asked from the event loop: the owner may destroy this controller.
                if (reportEnd)
                    QMetaObject::invokeMethod(
                        this,
                        [this] {
                            if (m_delegate)
                                m_delegate();
                        },
                        Qt::QueuedConnection);
            });
    m_window->setPlateScale(from);
    m_scaleAnimation = animation;
    animation->start();
}

void NotificationWindowController::animateOpacity(double to)
{
    auto* animation = new QVariantAnimation(this);
    animation->setStartValue(m_window->windowOpacity());
    animation->setEndValue(to);
    animation->setDuration(kFadeMilliseconds);
    NotificationWindow* window = m_window.get();
    connect(animation, &QVariantAnimation::valueChanged, window,
            [window](const QVariant& value) { window->setWindowOpacity(value.toDouble()); });
    connect(animation, &QAbstractAnimation::stateChanged, animation,
            [animation](QAbstractAnimation::State state) {
                if (state == QAbstractAnimation::Stopped)
                    animation->deleteLater();
            });
    m_opacityAnimation = animation;
    animation->start();
}
