#pragma once

#include "core/store/LyricStorageFile.h"

#include <QAbstractTableModel>
#include <QList>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

// The lyric manager's list: the store's records filtered by a search text and type, then
// sorted by the chosen column. Rows are the arranged records. The selection is kept here (by
// record, so it survives rearranging while the record stays listed) so that the window and
// headless callers share it.
class NSArrayControllerLyric : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { ArtistColumn, SongColumn, FileNameColumn, ColumnCount };
    // Search types, the tags of the search field's menu.
    enum SearchType { ArtistOrSong = 0, ArtistOnly = 1, SongOnly = 2 };

    explicit NSArrayControllerLyric(QObject* parent = nullptr);

    void setContent(std::vector<LyricStorageFile> records);
    const std::vector<LyricStorageFile>& content() const { return m_content; }
    // Appends a record that is listed by the next arrangement whatever the filter.
    void addObject(LyricStorageFile record);

    const QString& searchString() const { return m_searchString; }
    int searchType() const { return m_searchType; }
    // The content index of the record that passes the filter once; nullopt when none.
    std::optional<std::size_t> newObject() const { return m_newObject; }

    void search(const QString& text, int type);
    void rearrangeObjects();
    // The filter, then the sort: content indexes in display order. Clears newObject.
    std::vector<std::size_t> arrangeObjects(const std::vector<LyricStorageFile>& records);

    const LyricStorageFile* arrangedObject(int row) const;
    int arrangedCount() const { return static_cast<int>(m_arranged.size()); }

    // Rows of the arranged list, ascending.
    QList<int> selectionIndexes() const;
    bool setSelectionIndexes(const QList<int>& rows);
    std::vector<LyricStorageFile> selectedObjects() const;
    // The first arranged record of exactly this file name becomes the only selection.
    bool selectItemFileName(const QString& fileName);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

signals:
    void selectionChanged();

private:
    static const QString& field(const LyricStorageFile& record, int column);

    std::vector<LyricStorageFile> m_content;
    std::vector<std::size_t> m_arranged; // content indexes
    std::vector<std::size_t> m_selected; // content indexes, in arranged order
    QString m_searchString;
    int m_searchType = ArtistOrSong;
    std::optional<std::size_t> m_newObject;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};
