#pragma once

#include "core/app/DesktopPort.h"

#include <QList>
#include <QWidget>

#include <functional>
#include <memory>

class ContextMenuTableView;
class LyricControl;
class LyricStorageFile;
class NSArrayControllerLyric;
class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QToolButton;

// The lyric manager: every lyric file of the lyrics folder as a table (artist, song, file
// name), filtered by the search field and its search type.
class LyricManagerWC : public QWidget {
    Q_OBJECT
public:
    // The file name of the playing song's lyric ("" when none is playing).
    using NowPlayingProvider = std::function<QString()>;

    // desktop: nullptr uses the system desktop.
    explicit LyricManagerWC(std::unique_ptr<DesktopPort> desktop = nullptr,
                            QWidget* parent = nullptr);
    ~LyricManagerWC() override;

    // Set by the owner before the first showing; not owned.
    void setLyricControl(LyricControl* control);
    LyricControl* lyricControl() const { return m_lyricControl; }
    void setNowPlayingProvider(NowPlayingProvider provider);

    // Shows the window; the first showing rescans the folder.
    void showWindow();

    void onDoubleClick();
    void editLyric();
    void revealLyric();
    void selectLyricNowPlaying();
    void rescanLyricsInDisk();
    void setSearchType(int tag);
    void searchQuery();
    // Ticks the search menu's item of the current type.
    void validateMenuItems();
    QMenu* tableViewMenuForRows(const QList<int>& rows);
    void onShowLyricsFolder();

    int curSearchType() const { return m_curSearchType; }
    QLineEdit* searchField() const { return m_searchField; }
    NSArrayControllerLyric* arrayController() const { return m_arrayController; }
    ContextMenuTableView* tableView() const { return m_tableView; }
    QLabel* labelLrcCount() const { return m_labelLrcCount; }
    QMenu* menuTableViewContext() const { return m_menuTableViewContext; }
    QMenu* searchMenu() const { return m_searchMenu; }

private:
    void buildLayout();
    void windowDidLoad();
    void updateCountLabel();
    // The last selected record's path when its file still exists; otherwise says why not.
    QString lastSelectedExistingPath();
    void syncSelectionToController();
    void syncSelectionToView();

    std::unique_ptr<DesktopPort> m_desktop;
    QLineEdit* m_searchField = nullptr;
    int m_curSearchType = 0;
    LyricControl* m_lyricControl = nullptr;              // not owned
    NSArrayControllerLyric* m_arrayController = nullptr; // owned by this (Qt parent)
    ContextMenuTableView* m_tableView = nullptr;
    QLabel* m_labelLrcCount = nullptr;
    QMenu* m_menuTableViewContext = nullptr;
    QMenu* m_searchMenu = nullptr;
    QToolButton* m_searchTypeButton = nullptr;
    NowPlayingProvider m_nowPlaying;
    bool m_loaded = false;
    bool m_syncing = false;
};
