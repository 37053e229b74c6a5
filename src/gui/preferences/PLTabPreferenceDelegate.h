#pragma once

#include <QIcon>
#include <QString>

class QWidget;

// Supplies the panels of a PLTabPreferenceControl. The last three operations are optional.
class PLTabPreferenceDelegate {
public:
    virtual ~PLTabPreferenceDelegate() = default;
    virtual int countOfPreferencePanels() const = 0;
    // The toolbar label and the window title of the panel.
    virtual QString titleForPreferencePanelAt(int index) const = 0;
    virtual QIcon imageForPreferencePanelAt(int index) const = 0;
    virtual QWidget* panelViewForPreferencePanelAt(int index) const = 0;
    // The toolbar identifier; the index in decimal unless a delegate says otherwise.
    virtual QString identifyForPreferencePanelAt(int index) const { return QString::number(index); }
    virtual void prefViewWillAppear(QWidget* /*view*/, int /*index*/) {}
    virtual void prefViewDidAppear(QWidget* /*view*/, int /*index*/) {}
};
