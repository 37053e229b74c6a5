#pragma once

#include "core/online/LRCListItem.h"

#include <QList>
#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <functional>
#include <optional>

class LyricSearchDelegate;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

// The search-by-hand window: artist and title fields, a search button and the results
// ("Title", "Artist", "Duration" as "m:ss", "Synced" marked "\u2713"), in the order the service
// gave them (the plug-in puts the best first). An unsynced result cannot be picked. A
// double-clicked result (or Return on the current one) is downloaded and handed to the delegate's
// setupLRCcontent, then the window closes. Network work runs off the main thread: the window stays
// responsive, with the button disabled and a status line while a request runs.
class LyricSearchWC : public QWidget {
    Q_OBJECT
public:
    enum Service { LyricServer = 0, Plugin = 1 };

    explicit LyricSearchWC(QWidget* parent = nullptr);
    ~LyricSearchWC() override;

    void setDelegate(LyricSearchDelegate* delegate) { m_delegate = delegate; }
    LyricSearchDelegate* delegate() const { return m_delegate; }
    // The lyric server's host ("host" or "host:port").
    void setLyricServerHost(const QString& host) { m_host = host; }
    // A plug-in fetcher object of its own for this window (it becomes the fetcher's delegate);
    // not owned. nullptr offers the lyric server only.
    void setLyricFetcher(QObject* fetcher, const QString& name);
    void setRequestTimeout(int ms) { m_timeoutMs = ms; }
    // The playing song's duration in seconds (0: unknown), handed to the plug-in's searches.
    void setSongDuration(double seconds) { m_duration = seconds; }
    void setService(Service service);
    Service service() const;

    // Empties the results, then shows the window. Changing the service empties them too.
    void showWindow();
    void onSearch();
    void onDoubleClick(int row);

    int numberOfRowsInTableView() const;
    QString objectValue(const QString& columnIdentifier, int row) const;
    bool isBusy() const { return m_busy; }

    const QList<LRCListItem>& lrcLists() const { return m_lrcLists; }
    QLineEdit* textArtist() const { return m_textArtist; }
    QLineEdit* textTitle() const { return m_textTitle; }
    QTableWidget* tableView() const { return m_tableView; }
    QPushButton* searchButton() const { return m_searchButton; }
    QLabel* statusLabel() const { return m_status; }

    // The plug-in's answers (LrcFetcherDelegate).
    Q_INVOKABLE void lyricsListFetched(const QVariantList& items);
    Q_INVOKABLE void lyricsListFetchFailed(const QString& error);
    Q_INVOKABLE void lyricsContentFetched(const QString& lrcText, const QVariant& item);
    Q_INVOKABLE void lyricsContentFetchFailed(const QString& error);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Done = std::function<void(std::optional<QByteArray>)>;
    void fetchOffThread(const QUrl& url, Done done);
    void setBusy(bool busy, const QString& status);
    void clearResults();
    void reloadData();
    void showResults(const QString& emptyText);
    void deliver(const QString& text);

    QLineEdit* m_textArtist = nullptr;
    QLineEdit* m_textTitle = nullptr;
    QTableWidget* m_tableView = nullptr;
    QList<LRCListItem> m_lrcLists;
    QVariantList m_pluginItems;
    LyricSearchDelegate* m_delegate = nullptr; // not owned
    QPushButton* m_searchButton = nullptr;
    QComboBox* m_serviceBox = nullptr;
    QLabel* m_status = nullptr;
    QPointer<QObject> m_fetcher;
    QString m_host;
    int m_timeoutMs = 15000;
    double m_duration = 0;
    int m_generation = 0; // answers of an earlier showing or search are dropped
    bool m_busy = false;
};
