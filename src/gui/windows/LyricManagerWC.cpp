#include "gui/windows/LyricManagerWC.h"

#include "core/app/AppDelegate.h"
#include "gui/windows/FrontWindow.h"

#include "core/store/LyricControl.h"
#include "core/store/NSArrayControllerLyric.h"
#include "gui/windows/ContextMenuTableView.h"
#include "gui/windows/SystemDesktop.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

LyricManagerWC::LyricManagerWC(std::unique_ptr<DesktopPort> desktop, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_desktop(desktop ? std::move(desktop) : std::make_unique<SystemDesktop>())
{
    setWindowTitle(tr("Lyric Manager"));
    buildLayout();
    FrontWindow::addCloseKeys(this);
}

LyricManagerWC::~LyricManagerWC() = default;

void LyricManagerWC::buildLayout()
{
    m_arrayController = new NSArrayControllerLyric(this);

    m_searchField = new QLineEdit(this);
    m_searchField->setPlaceholderText(tr("Search"));
    m_searchField->setClearButtonEnabled(true);
    connect(m_searchField, &QLineEdit::textChanged, this, &LyricManagerWC::searchQuery);

    m_searchMenu = new QMenu(this);
    const QString labels[] = {tr("Artist or Song"), tr("Artist"), tr("Song")};
    for (int tag = 0; tag < 3; ++tag) {
        QAction* item = m_searchMenu->addAction(labels[tag]);
        item->setData(tag);
        item->setCheckable(true);
        connect(item, &QAction::triggered, this, [this, tag] { setSearchType(tag); });
    }
    connect(m_searchMenu, &QMenu::aboutToShow, this, &LyricManagerWC::validateMenuItems);
    m_searchTypeButton = new QToolButton(this);
    m_searchTypeButton->setText(tr("Search In"));
    m_searchTypeButton->setMenu(m_searchMenu);
    m_searchTypeButton->setPopupMode(QToolButton::InstantPopup);

    m_tableView = new ContextMenuTableView(this);
    m_tableView->setModel(m_arrayController);
    m_tableView->setSortingEnabled(true);
    m_tableView->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_tableView->setColumnWidth(NSArrayControllerLyric::ArtistColumn, 200);
    m_tableView->setColumnWidth(NSArrayControllerLyric::SongColumn, 260);
    m_tableView->setMenuProvider(
        [this](const QList<int>& rows) { return tableViewMenuForRows(rows); });
    connect(m_tableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LyricManagerWC::syncSelectionToController);
    connect(m_arrayController, &NSArrayControllerLyric::selectionChanged, this,
            &LyricManagerWC::syncSelectionToView);
    connect(m_arrayController, &QAbstractItemModel::modelReset, this,
            &LyricManagerWC::syncSelectionToView);

    m_menuTableViewContext = new QMenu(this);
    m_menuTableViewContext->addAction(tr("Open in Text Editor"), this, &LyricManagerWC::editLyric);
    m_menuTableViewContext->addAction(tr("Show in File Manager"), this,
                                      &LyricManagerWC::revealLyric);
    m_menuTableViewContext->addSeparator();
    m_menuTableViewContext->addAction(tr("Select Lyric of Playing Song"), this,
                                      &LyricManagerWC::selectLyricNowPlaying);
    m_menuTableViewContext->addAction(tr("Rescan Lyrics Folder"), this,
                                      &LyricManagerWC::rescanLyricsInDisk);
    m_menuTableViewContext->addAction(tr("Open Lyrics Folder"), this,
                                      &LyricManagerWC::onShowLyricsFolder);

    m_labelLrcCount = new QLabel(this);
    auto* nowPlaying = new QPushButton(tr("Playing Song"), this);
    connect(nowPlaying, &QPushButton::clicked, this, &LyricManagerWC::selectLyricNowPlaying);
    auto* rescan = new QPushButton(tr("Rescan"), this);
    connect(rescan, &QPushButton::clicked, this, &LyricManagerWC::rescanLyricsInDisk);
    auto* folder = new QPushButton(tr("Open Folder"), this);
    // The editor opens on the lyric and the song playing.
    auto* editButton = new QPushButton(tr("Edit"), this);
    connect(editButton, &QPushButton::clicked, this, [] {
        if (AppDelegate* delegate = AppDelegate::s())
            delegate->showLyricEditor();
    });
    connect(folder, &QPushButton::clicked, this, &LyricManagerWC::onShowLyricsFolder);

    auto* top = new QHBoxLayout;
    top->addWidget(m_searchTypeButton);
    top->addWidget(m_searchField, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_labelLrcCount, 1);
    bottom->addWidget(nowPlaying);
    bottom->addWidget(rescan);
    bottom->addWidget(folder);
    bottom->addWidget(editButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_tableView, 1);
    layout->addLayout(bottom);
    resize(720, 480);
}

void LyricManagerWC::setLyricControl(LyricControl* control)
{
    m_lyricControl = control;
}

void LyricManagerWC::setNowPlayingProvider(NowPlayingProvider provider)
{
    m_nowPlaying = std::move(provider);
}

void LyricManagerWC::showWindow()
{
    if (!m_loaded) {
        m_loaded = true;
        windowDidLoad();
    }
    FrontWindow::present(this);
}

void LyricManagerWC::windowDidLoad()
{
    connect(m_tableView, &QAbstractItemView::doubleClicked, this, &LyricManagerWC::onDoubleClick);
    rescanLyricsInDisk();
}

QString LyricManagerWC::lastSelectedExistingPath()
{
    const auto selected = m_arrayController->selectedObjects();
    if (selected.empty() || !m_lyricControl)
        return {};
    const QString path = m_lyricControl->pathOfFile(selected.back());
    if (!QFileInfo::exists(path)) {
        // Deleted (or unreadable by name) since the last scan: say so, change nothing.
        m_labelLrcCount->setText(
            tr("\"%1\" is no longer in the lyrics folder. Rescan to update the list.")
                .arg(selected.back().fileName));
        return {};
    }
    return path;
}

void LyricManagerWC::onDoubleClick()
{
    editLyric();
}

void LyricManagerWC::editLyric()
{
    const QString path = lastSelectedExistingPath();
    if (!path.isEmpty())
        m_desktop->openInTextEditor(path);
}

void LyricManagerWC::revealLyric()
{
    const QString path = lastSelectedExistingPath();
    if (!path.isEmpty())
        m_desktop->revealFile(path);
}

void LyricManagerWC::selectLyricNowPlaying()
{
    const QString fileName = m_nowPlaying ? m_nowPlaying() : QString();
    if (fileName.isEmpty() || !m_arrayController->selectItemFileName(fileName))
        return;
    const QList<int> rows = m_arrayController->selectionIndexes();
    if (!rows.isEmpty())
        m_tableView->scrollTo(m_arrayController->index(rows.first(), 0));
}

void LyricManagerWC::rescanLyricsInDisk()
{
    if (m_lyricControl) {
        m_lyricControl->scanLrcFilesSync();
        m_arrayController->setContent(m_lyricControl->lyricFiles());
    }
    updateCountLabel();
}

void LyricManagerWC::updateCountLabel()
{
    const qsizetype count = m_lyricControl ? qsizetype(m_lyricControl->lyricFiles().size()) : 0;
    m_labelLrcCount->setText(tr("Total %1 items").arg(count));
}

void LyricManagerWC::setSearchType(int tag)
{
    m_curSearchType = tag;
    searchQuery();
}

void LyricManagerWC::searchQuery()
{
    m_arrayController->search(m_searchField->text(), m_curSearchType);
}

void LyricManagerWC::validateMenuItems()
{
    for (QAction* item : m_searchMenu->actions())
        item->setChecked(item->data().toInt() == m_curSearchType);
}

QMenu* LyricManagerWC::tableViewMenuForRows(const QList<int>&)
{
    return m_menuTableViewContext;
}

void LyricManagerWC::onShowLyricsFolder()
{
    m_desktop->openUrl(QUrl::fromLocalFile(LyricControl::lyricsPath()));
}

void LyricManagerWC::syncSelectionToController()
{
    if (m_syncing)
        return;
    m_syncing = true;
    m_arrayController->setSelectionIndexes(m_tableView->selectedRows());
    m_syncing = false;
}

void LyricManagerWC::syncSelectionToView()
{
    if (m_syncing)
        return;
    m_syncing = true;
    QItemSelection selection;
    for (int row : m_arrayController->selectionIndexes())
        selection.select(m_arrayController->index(row, 0),
                         m_arrayController->index(row, NSArrayControllerLyric::ColumnCount - 1));
    m_tableView->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    m_syncing = false;
}
