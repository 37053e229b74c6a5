#include "gui/windows/LyricSearchWC.h"

#include "core/app/AppDelegate.h"
#include "core/app/LrcFetcherProtocol.h"
#include "core/display/NotificationTrack.h"
#include "core/http/BlockingGet.h"
#include "core/online/LyricSearchDelegate.h"
#include "core/online/QQFetchHelper.h"
#include "gui/windows/FrontWindow.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>

#include <memory>

namespace {

const QStringList kColumns{QStringLiteral("Title"), QStringLiteral("Artist"),
                           QStringLiteral("Duration"), QStringLiteral("Synced")};
const QString kSyncedMark = QStringLiteral("\u2713");

// A plug-in's item is synced unless it says otherwise.
bool isSynced(const QVariant& item)
{
    return item.toMap().value(QStringLiteral("synced"), true).toBool();
}

} // namespace

LyricSearchWC::LyricSearchWC(QWidget* parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Search Lyrics"));
    m_textArtist = new QLineEdit(this);
    m_textTitle = new QLineEdit(this);
    m_serviceBox = new QComboBox(this);
    m_serviceBox->addItem(tr("Lyric server"), LyricServer);
    m_serviceBox->setVisible(false);
    // Results belong to the service that found them: a row of one never downloads from another.
    connect(m_serviceBox, &QComboBox::currentIndexChanged, this, [this] { clearResults(); });
    m_searchButton = new QPushButton(tr("Search"), this);
    m_searchButton->setDefault(true);
    connect(m_searchButton, &QPushButton::clicked, this, &LyricSearchWC::onSearch);
    connect(m_textTitle, &QLineEdit::returnPressed, this, &LyricSearchWC::onSearch);
    connect(m_textArtist, &QLineEdit::returnPressed, this, &LyricSearchWC::onSearch);

    m_tableView = new QTableWidget(0, kColumns.size(), this);
    m_tableView->setHorizontalHeaderLabels(
        {tr("Title"), tr("Artist"), tr("Duration"), tr("Synced")});
    m_tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tableView->verticalHeader()->hide();
    m_tableView->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_tableView->horizontalHeader()->setStretchLastSection(true);
    m_tableView->setColumnWidth(0, 260);
    m_tableView->setColumnWidth(1, 160);
    m_tableView->setColumnWidth(2, 70);
    connect(m_tableView, &QTableWidget::cellDoubleClicked, this,
            [this](int row, int) { onDoubleClick(row); });
    m_tableView->installEventFilter(this); // Return picks the current row
    m_status = new QLabel(this);

    auto* form = new QFormLayout;
    form->addRow(tr("Artist:"), m_textArtist);
    form->addRow(tr("Title:"), m_textTitle);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_serviceBox);
    buttons->addStretch(1);
    auto* editButton = new QPushButton(tr("Edit"), this);
    editButton->setToolTip(tr("Time the chosen plain lyric, or edit the lyric shown"));
    connect(editButton, &QPushButton::clicked, this, [this] {
        AppDelegate* delegate = AppDelegate::s();
        if (!delegate)
            return;
        // A plain candidate is timed in the editor: that is the way to use it.
        const int row = m_tableView->currentRow();
        if (service() == Plugin && row >= 0 && row < m_pluginItems.size() &&
            !isSynced(m_pluginItems.at(row))) {
            delegate->showLyricEditorWith(
                m_pluginItems.at(row).toMap().value(QStringLiteral("plainLyrics")).toString());
            return;
        }
        delegate->showLyricEditor();
    });
    buttons->addWidget(editButton);
    buttons->addWidget(m_searchButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(m_tableView, 1);
    layout->addWidget(m_status);
    resize(640, 420);
    FrontWindow::addCloseKeys(this);
}

LyricSearchWC::~LyricSearchWC() = default;

void LyricSearchWC::setLyricFetcher(QObject* fetcher, const QString& name)
{
    m_fetcher = fetcher;
    while (m_serviceBox->count() > 1)
        m_serviceBox->removeItem(1);
    if (fetcher && lrcfetcher::answers(fetcher, lrcfetcher::kListForArtistSong)) {
        QMetaObject::invokeMethod(fetcher, "setDelegate", Q_ARG(QObject*, this));
        // The lyric server stays the first choice; the plug-in is the second.
        m_serviceBox->addItem(name.isEmpty() ? tr("Plug-in") : name, Plugin);
    }
    m_serviceBox->setVisible(m_serviceBox->count() > 1);
}

void LyricSearchWC::setService(Service service)
{
    const int index = m_serviceBox->findData(service);
    if (index >= 0)
        m_serviceBox->setCurrentIndex(index);
}

LyricSearchWC::Service LyricSearchWC::service() const
{
    return m_fetcher && m_serviceBox->currentData().toInt() == Plugin ? Plugin : LyricServer;
}

void LyricSearchWC::clearResults()
{
    ++m_generation; // answers still on their way are dropped
    m_lrcLists.clear();
    m_pluginItems.clear();
    setBusy(false, QString());
    reloadData();
}

void LyricSearchWC::showWindow()
{
    clearResults();
    FrontWindow::present(this);
    m_textTitle->setFocus(Qt::ActiveWindowFocusReason);
}

void LyricSearchWC::onSearch()
{
    if (m_busy)
        return;
    m_lrcLists.clear();
    m_pluginItems.clear();
    reloadData();
    setBusy(true, tr("Searching…"));
    const int generation = ++m_generation;
    if (service() == Plugin) {
        // The duration ranks the candidates; no album, so that the plug-in lists every version
        // rather than looking up the one exact match.
        if (lrcfetcher::answers(m_fetcher, lrcfetcher::kListForArtistSongAlbumDuration))
            QMetaObject::invokeMethod(m_fetcher, "lyricsListForArtist",
                                      Q_ARG(QString, m_textArtist->text()),
                                      Q_ARG(QString, m_textTitle->text()),
                                      Q_ARG(QString, QString()), Q_ARG(double, m_duration));
        else
            QMetaObject::invokeMethod(m_fetcher, "lyricsListForArtist",
                                      Q_ARG(QString, m_textArtist->text()),
                                      Q_ARG(QString, m_textTitle->text()));
        return;
    }
    const QUrl url =
        QQFetchHelper::urlForLRCsearching(m_textArtist->text(), m_textTitle->text(), m_host);
    fetchOffThread(url, [this, generation](std::optional<QByteArray> answer) {
        if (generation != m_generation)
            return;
        if (!answer) {
            setBusy(false, tr("The lyric server did not answer. Try again later."));
            return;
        }
        m_lrcLists = QQFetchHelper::lrcListItemsFromXML(*answer, m_host);
        showResults(tr("No lyrics found."));
    });
}

void LyricSearchWC::onDoubleClick(int row)
{
    const bool plugin = service() == Plugin;
    if (m_busy || row < 0 || row >= (plugin ? m_pluginItems.size() : m_lrcLists.size()))
        return;
    setBusy(true, tr("Downloading…"));
    const int generation = ++m_generation;
    if (plugin && !isSynced(m_pluginItems.at(row))) {
        // A plain text picked here would be saved as if it were synced.
        setBusy(false, tr("This lyric has no timing."));
        return;
    }
    if (plugin) {
        QMetaObject::invokeMethod(m_fetcher, "lyricsContents",
                                  Q_ARG(QVariant, m_pluginItems.at(row)));
        return;
    }
    fetchOffThread(m_lrcLists.at(row).fileURL(),
                   [this, generation](std::optional<QByteArray> answer) {
                       if (generation != m_generation)
                           return;
                       // A failed download hands on null text, as the receiver expects.
                       deliver(answer ? QString::fromUtf8(*answer) : QString());
                   });
}

int LyricSearchWC::numberOfRowsInTableView() const
{
    return int(m_pluginItems.isEmpty() ? m_lrcLists.size() : m_pluginItems.size());
}

QString LyricSearchWC::objectValue(const QString& columnIdentifier, int row) const
{
    Q_ASSERT_X(row >= 0 && row < numberOfRowsInTableView(), "LyricSearchWC::objectValue",
               "rowIndex >= 0 && rowIndex < [lrcLists count]");
    if (row < 0 || row >= numberOfRowsInTableView())
        return {};
    if (!kColumns.contains(columnIdentifier))
        return QStringLiteral("unexpected");
    const bool title = columnIdentifier == QLatin1String("Title");
    if (!m_pluginItems.isEmpty()) {
        const QVariantMap item = m_pluginItems.at(row).toMap();
        if (columnIdentifier == QLatin1String("Duration")) {
            const double seconds = item.value(QStringLiteral("duration")).toDouble();
            return seconds > 0 ? NotificationTrack::durationText(seconds) : QString();
        }
        if (columnIdentifier == QLatin1String("Synced"))
            return isSynced(item) ? kSyncedMark : QString();
        return item.value(title ? QStringLiteral("title") : QStringLiteral("artist")).toString();
    }
    // The lyric server's files are LRC; it tells no duration.
    if (columnIdentifier == QLatin1String("Duration"))
        return {};
    if (columnIdentifier == QLatin1String("Synced"))
        return kSyncedMark;
    return title ? m_lrcLists.at(row).title() : m_lrcLists.at(row).artist();
}

void LyricSearchWC::lyricsListFetched(const QVariantList& items)
{
    if (!m_busy)
        return;
    m_pluginItems = items;
    showResults(tr("No lyrics found."));
}

void LyricSearchWC::lyricsListFetchFailed(const QString& error)
{
    if (!m_busy)
        return;
    setBusy(false,
            error.isEmpty() ? tr("The search failed.") : tr("The search failed: %1").arg(error));
}

void LyricSearchWC::lyricsContentFetched(const QString& lrcText, const QVariant&)
{
    if (m_busy)
        deliver(lrcText);
}

void LyricSearchWC::lyricsContentFetchFailed(const QString&)
{
    if (m_busy)
        deliver(QString());
}

void LyricSearchWC::fetchOffThread(const QUrl& url, Done done)
{
    // The transfer blocks a thread of its own; its end comes back to this window's thread, and
    // is dropped with the connection if the window is gone by then.
    auto answer = std::make_shared<std::optional<QByteArray>>();
    const int timeout = m_timeoutMs;
    QThread* worker =
        QThread::create([url, timeout, answer] { *answer = http::blockingGet(url, timeout); });
    connect(worker, &QThread::finished, this, [answer, done] { done(*answer); });
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    worker->start();
}

void LyricSearchWC::setBusy(bool busy, const QString& status)
{
    m_busy = busy;
    m_searchButton->setEnabled(!busy);
    m_status->setText(status);
    if (busy)
        setCursor(Qt::BusyCursor);
    else
        unsetCursor();
}

void LyricSearchWC::reloadData()
{
    const int rows = numberOfRowsInTableView();
    m_tableView->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns.size(); ++column)
            m_tableView->setItem(row, column,
                                 new QTableWidgetItem(objectValue(kColumns.at(column), row)));
    }
}

bool LyricSearchWC::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_tableView && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            onDoubleClick(m_tableView->currentRow());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void LyricSearchWC::showResults(const QString& emptyText)
{
    reloadData();
    const int rows = numberOfRowsInTableView();
    if (rows)
        m_tableView->setCurrentCell(0, 0); // the keyboard's place in the list shows at once
    setBusy(false,
            rows ? tr("%n result(s). Double-click one to use it.", nullptr, rows) : emptyText);
}

void LyricSearchWC::deliver(const QString& text)
{
    setBusy(false, QString());
    if (m_delegate)
        m_delegate->setupLRCcontent(text);
    close();
}
