#pragma once

#include "core/app/WindowPort.h"

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>

class AppController;
class HUDWindow;
class QPushButton;
class Settings;
class WindowFrameAutosave;

// The lyric panel: a HUD panel hosting the scrolling lyric view, with the search button in its
// title strip, its frame kept as "StreamWindowFrame", and the status menu's items as its
// context menu (the only way to reach them when there is no tray).
class LyricPanel : public QObject, public WindowPort {
    Q_OBJECT
public:
    static constexpr char kFrameName[] = "StreamWindowFrame";
    static constexpr int kDefaultWidth = 320;
    static constexpr int kDefaultHeight = 420;
    static constexpr int kSearchButtonSize = 16;
    static constexpr double kSearchButtonOpacity = 0.8;

    // Builds the panel, hidden, and starts the scrolling view inside it.
    LyricPanel(Settings& settings, AppController& view, QObject* parent = nullptr);
    ~LyricPanel() override;

    // The default top-left corner: 10 from the screen's right edge and 22 + 10 from its top.
    static QPoint defaultTopLeft(const QRect& screen, const QSize& panel);
    // The saved frame when it lies wholly on the screen, else the default place.
    static QRect placedFrame(const QRect& screen, const QSize& panel,
                             const std::optional<QRect>& saved);

    void setTitle(const QString& title);
    void orderFrontRegardless() override;
    void close() override;

    void setSearchAction(std::function<void()> action) { m_search = std::move(action); }
    // Not owned; shown on a right click.
    void setContextMenu(QMenu* menu);
    // Prints, at the first paint, the time since the process started (for measurements).
    void reportFirstPaint(bool on) { m_reportFirstPaint = on; }

    HUDWindow* window() const { return m_window.get(); }
    QPushButton* searchButton() const { return m_searchButton; }
    QMenu* contextMenu() const { return m_menu; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addSearchButton();
    void placeSearchButton();

    std::unique_ptr<HUDWindow> m_window;
    QPushButton* m_searchButton = nullptr; // owned by the window
    WindowFrameAutosave* m_autosave = nullptr;
    QPointer<QMenu> m_menu;
    QPointer<QObject> m_menuFilter;
    std::function<void()> m_search;
    bool m_reportFirstPaint = false;
    bool m_painted = false;
};
