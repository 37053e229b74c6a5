#include "core/store/NSArrayControllerLyric.h"

#include <algorithm>
#include <unordered_set>

NSArrayControllerLyric::NSArrayControllerLyric(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void NSArrayControllerLyric::setContent(std::vector<LyricStorageFile> records)
{
    m_content = std::move(records);
    m_newObject.reset();
    m_selected.clear();
    rearrangeObjects();
}

void NSArrayControllerLyric::addObject(LyricStorageFile record)
{
    m_content.push_back(std::move(record));
    m_newObject = m_content.size() - 1;
    rearrangeObjects();
}

void NSArrayControllerLyric::search(const QString& text, int type)
{
    m_searchString = text;
    m_searchType = type;
    rearrangeObjects();
}

void NSArrayControllerLyric::rearrangeObjects()
{
    beginResetModel();
    m_arranged = arrangeObjects(m_content);
    endResetModel();
    // Records filtered out leave the selection, as a table shows only what is listed.
    const std::unordered_set<std::size_t> selected(m_selected.begin(), m_selected.end());
    std::vector<std::size_t> kept;
    for (std::size_t index : m_arranged)
        if (selected.count(index))
            kept.push_back(index);
    const bool changed = kept != m_selected;
    m_selected = std::move(kept);
    if (changed)
        emit selectionChanged();
}

std::vector<std::size_t>
NSArrayControllerLyric::arrangeObjects(const std::vector<LyricStorageFile>& records)
{
    std::vector<std::size_t> result;
    if (m_searchString.isEmpty()) {
        m_newObject.reset();
        result.resize(records.size());
        for (std::size_t i = 0; i < records.size(); ++i)
            result[i] = i;
    } else {
        const QString needle = m_searchString.toLower();
        for (std::size_t i = 0; i < records.size(); ++i) {
            if (m_newObject && *m_newObject == i) {
                result.push_back(i);
                m_newObject.reset();
                continue;
            }
            const LyricStorageFile& record = records[i];
            bool take = false;
            if (m_searchType == ArtistOnly)
                take = record.artist.toLower().contains(needle);
            else if (m_searchType == SongOnly)
                take = record.song.toLower().contains(needle);
            else
                take = record.artist.toLower().contains(needle) ||
                       record.song.toLower().contains(needle);
            if (take)
                result.push_back(i);
        }
    }
    if (m_sortColumn >= 0 && m_sortColumn < ColumnCount) {
        const int column = m_sortColumn;
        const bool descending = m_sortOrder == Qt::DescendingOrder;
        std::stable_sort(result.begin(), result.end(), [&](std::size_t a, std::size_t b) {
            const int order =
                field(records[a], column).compare(field(records[b], column), Qt::CaseInsensitive);
            return descending ? order > 0 : order < 0;
        });
    }
    return result;
}

const LyricStorageFile* NSArrayControllerLyric::arrangedObject(int row) const
{
    if (row < 0 || row >= arrangedCount())
        return nullptr;
    return &m_content[m_arranged[static_cast<std::size_t>(row)]];
}

QList<int> NSArrayControllerLyric::selectionIndexes() const
{
    const std::unordered_set<std::size_t> selected(m_selected.begin(), m_selected.end());
    QList<int> rows;
    for (int row = 0; row < arrangedCount(); ++row)
        if (selected.count(m_arranged[static_cast<std::size_t>(row)]))
            rows.append(row);
    return rows;
}

bool NSArrayControllerLyric::setSelectionIndexes(const QList<int>& rows)
{
    QList<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    std::vector<std::size_t> selected;
    for (int row : sorted)
        if (row >= 0 && row < arrangedCount())
            selected.push_back(m_arranged[static_cast<std::size_t>(row)]);
    if (selected.size() != static_cast<std::size_t>(sorted.size()))
        return false;
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    // Kept in arranged order, which is the order of the rows given.
    if (selected != m_selected) {
        m_selected = std::move(selected);
        emit selectionChanged();
    }
    return true;
}

std::vector<LyricStorageFile> NSArrayControllerLyric::selectedObjects() const
{
    std::vector<LyricStorageFile> objects;
    for (int row : selectionIndexes())
        objects.push_back(*arrangedObject(row));
    return objects;
}

bool NSArrayControllerLyric::selectItemFileName(const QString& fileName)
{
    for (int row = 0; row < arrangedCount(); ++row)
        if (arrangedObject(row)->fileName == fileName)
            return setSelectionIndexes({row});
    return false;
}

int NSArrayControllerLyric::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : arrangedCount();
}

int NSArrayControllerLyric::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant NSArrayControllerLyric::data(const QModelIndex& index, int role) const
{
    const LyricStorageFile* record = arrangedObject(index.row());
    if (!record || index.column() < 0 || index.column() >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return field(*record, index.column());
    return {};
}

QVariant NSArrayControllerLyric::headerData(int section, Qt::Orientation orientation,
                                            int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case ArtistColumn:
        return tr("Artist");
    case SongColumn:
        return tr("Song");
    case FileNameColumn:
        return tr("File Name");
    default:
        return {};
    }
}

void NSArrayControllerLyric::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    rearrangeObjects();
}

const QString& NSArrayControllerLyric::field(const LyricStorageFile& record, int column)
{
    switch (column) {
    case ArtistColumn:
        return record.artist;
    case SongColumn:
        return record.song;
    default:
        return record.fileName;
    }
}
