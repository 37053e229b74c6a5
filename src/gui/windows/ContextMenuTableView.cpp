#include "gui/windows/ContextMenuTableView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>

ContextMenuTableView::ContextMenuTableView(QWidget* parent)
    : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    verticalHeader()->hide();
    // Fixed row heights keep layout cost flat for folders of thousands of lyrics.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setStretchLastSection(true);
}

QList<int> ContextMenuTableView::selectedRows() const
{
    QList<int> rows;
    if (!selectionModel())
        return rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

QMenu* ContextMenuTableView::menuForRightClickAt(const QPoint& viewportPos)
{
    const int row = rowAt(viewportPos.y());
    if (row < 0 || !model())
        return nullptr;
    if (!selectedRows().contains(row) && selectionModel()) {
        // Replaces the selection whatever keys are held.
        selectionModel()->select(model()->index(row, 0),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        selectionModel()->setCurrentIndex(model()->index(row, 0), QItemSelectionModel::NoUpdate);
    }
    return m_menuProvider ? m_menuProvider(selectedRows()) : nullptr;
}

void ContextMenuTableView::mousePressEvent(QMouseEvent* event)
{
    // The right button's selection is made by the context-menu rule, not the default one.
    if (event->button() == Qt::RightButton) {
        event->accept();
        return;
    }
    QTableView::mousePressEvent(event);
}

// Arrives from the viewport, so the position is already in viewport coordinates.
void ContextMenuTableView::contextMenuEvent(QContextMenuEvent* event)
{
    if (QMenu* menu = menuForRightClickAt(event->pos()))
        menu->exec(event->globalPos());
}
