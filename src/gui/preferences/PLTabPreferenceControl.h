#pragma once

#include <QMainWindow>
#include <QStringList>

class PLTabPreferenceDelegate;
class QAction;
class QActionGroup;
class QToolBar;

// A preferences window: a toolbar with one button per panel of its delegate. Choosing a button
// shows that panel; the window takes the panel's size while its top edge stays in place, and
// its title becomes the panel's.
class PLTabPreferenceControl : public QMainWindow {
    Q_OBJECT
public:
    explicit PLTabPreferenceControl(QWidget* parent = nullptr);
    ~PLTabPreferenceControl() override;

    void setDelegate(PLTabPreferenceDelegate* delegate) { m_delegate = delegate; }
    PLTabPreferenceDelegate* delegate() const { return m_delegate; }

    // Builds the toolbar from the delegate's panels and shows panel 0.
    void windowDidLoad();
    // Switches to the toolbar's item at that index; nothing when there is none.
    void selectPanelAtIndex(int index);
    void switchPanel(QAction* item);

    // The panels' identifiers, asked of the delegate once and then kept (empty without one).
    QStringList prefIdentifyAry();
    // A new toolbar item for a known identifier, nullptr otherwise.
    QAction* toolbarItemForIdentifier(const QString& identifier);

    QToolBar* toolbar() const { return m_toolbar; }
    // The shown panel's index, -1 before the first.
    int selectedPanel() const;

protected:
    QMenu* createPopupMenu() override { return nullptr; }

private:
    QToolBar* m_toolbar = nullptr;
    QActionGroup* m_group = nullptr;
    QStringList m_prefIdentifyAry;
    bool m_identifiersKnown = false;
    PLTabPreferenceDelegate* m_delegate = nullptr; // not owned
};
