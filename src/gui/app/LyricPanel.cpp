#include "gui/app/LyricPanel.h"

#include "core/settings/Settings.h"
#include "gui/app/MenuOnRightClick.h"
#include "gui/app/StartupClock.h"
#include "gui/display/AppController.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/WindowFrameAutosave.h"

#include <QGraphicsOpacityEffect>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <cstdio>

namespace {
// Height of the title strip the search button sits in.
constexpr int kTitleHeight = 19;

QRect mainScreenFrame()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect(0, 0, 1024, 768);
}

// A light magnifying glass, drawn so that it is sharp at any scale.
QIcon searchIcon(qreal ratio)
{
    const int size = LyricPanel::kSearchButtonSize;
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(230, 230, 230), 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QRectF(2.5, 2.5, 8, 8));
    painter.drawLine(QPointF(9.6, 9.6), QPointF(13.5, 13.5));
    return QIcon(pixmap);
}
} // namespace

LyricPanel::LyricPanel(Settings& settings, AppController& view, QObject* parent)
    : QObject(parent)
    , m_window(std::make_unique<HUDWindow>())
{
    m_window->resize(kDefaultWidth, kDefaultHeight);
    auto* layout = new QVBoxLayout(m_window.get());
    layout->setContentsMargins(8, kTitleHeight + 6, 8, 8);
    auto* host = new QWidget(m_window.get());
    layout->addWidget(host);
    view.applicationDidFinishLaunching(host);

    QSettings* store = &settings.store().settings();
    m_autosave = new WindowFrameAutosave(m_window.get(), QLatin1String(kFrameName), store);
    m_window->setGeometry(
        placedFrame(mainScreenFrame(), m_window->size(), m_autosave->savedFrame()));
    addSearchButton();
    m_window->installEventFilter(this);
}

LyricPanel::~LyricPanel() = default;

QPoint LyricPanel::defaultTopLeft(const QRect& screen, const QSize& panel)
{
    return {screen.x() + screen.width() - panel.width() - 10, screen.y() + 22 + 10};
}

QRect LyricPanel::placedFrame(const QRect& screen, const QSize& panel,
                              const std::optional<QRect>& saved)
{
    if (saved && saved->isValid() && screen.intersected(*saved) == *saved)
        return *saved;
    const QSize size = saved && saved->isValid() ? saved->size() : panel;
    return {defaultTopLeft(screen, size), size};
}

void LyricPanel::addSearchButton()
{
    m_searchButton = new QPushButton(m_window.get());
    m_searchButton->setFlat(true);
    m_searchButton->setFocusPolicy(Qt::NoFocus);
    m_searchButton->setIcon(searchIcon(m_window->devicePixelRatioF()));
    m_searchButton->setIconSize(QSize(kSearchButtonSize, kSearchButtonSize));
    m_searchButton->setToolTip(tr("Search lyrics"));
    m_searchButton->setStyleSheet(QStringLiteral("QPushButton { border: none; padding: 0; }"));
    // Slightly faded, so that it does not compete with the lyric.
    auto* fade = new QGraphicsOpacityEffect(m_searchButton);
    fade->setOpacity(kSearchButtonOpacity);
    m_searchButton->setGraphicsEffect(fade);
    connect(m_searchButton, &QPushButton::clicked, this, [this] {
        if (m_search)
            m_search();
    });
    placeSearchButton();
}

// 20 from the right edge and 3 from the top, kept there when the panel is resized.
void LyricPanel::placeSearchButton()
{
    if (m_searchButton)
        m_searchButton->setGeometry(m_window->width() - 20, kTitleHeight - kSearchButtonSize,
                                    kSearchButtonSize, kSearchButtonSize);
}

void LyricPanel::setContextMenu(QMenu* menu)
{
    m_menu = menu;
    delete m_menuFilter;
    if (menu)
        m_menuFilter = new MenuOnRightClick(m_window.get(), menu);
}

void LyricPanel::setTitle(const QString& title)
{
    if (m_window->title() != title)
        m_window->setTitle(title);
}

void LyricPanel::orderFrontRegardless()
{
    m_window->show();
    m_window->raise();
}

void LyricPanel::close()
{
    m_window->hide();
}

bool LyricPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window.get())
        return false;
    switch (event->type()) {
    case QEvent::Resize:
        placeSearchButton();
        break;
    case QEvent::Paint:
        if (!m_painted) {
            m_painted = true;
            if (m_reportFirstPaint) {
                std::fprintf(stderr, "versewick: lyric panel first painted %lld ms after start\n",
                             static_cast<long long>(StartupClock::millisecondsSinceStart()));
                std::fflush(stderr);
            }
        }
        break;
    default:
        break;
    }
    return false;
}
