#pragma once

#include <QList>
#include <QTableView>

#include <functional>

class QMenu;

// A table whose right click first selects the clicked row alone unless it is already among
// the selected rows, then asks its menu provider for a menu for the selected rows.
class ContextMenuTableView : public QTableView {
    Q_OBJECT
public:
    using MenuProvider = std::function<QMenu*(const QList<int>& rows)>;

    explicit ContextMenuTableView(QWidget* parent = nullptr);
    void setMenuProvider(MenuProvider provider) { m_menuProvider = std::move(provider); }
    // The right-click rule at a viewport position; the menu, or nullptr off the rows.
    QMenu* menuForRightClickAt(const QPoint& viewportPos);
    QList<int> selectedRows() const;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    MenuProvider m_menuProvider;
};
