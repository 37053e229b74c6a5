#include "gui/preferences/PLTabPreferenceControl.h"

#include "gui/preferences/PLTabPreferenceDelegate.h"

#include <QActionGroup>
#include <QLayout>
#include <QToolBar>

namespace {
constexpr char kTagProperty[] = "preferencePanelTag";
}

PLTabPreferenceControl::PLTabPreferenceControl(QWidget* parent)
    : QMainWindow(parent, Qt::Window)
{
}

PLTabPreferenceControl::~PLTabPreferenceControl() = default;

void PLTabPreferenceControl::windowDidLoad()
{
    if (m_toolbar)
        return;
    m_toolbar = new QToolBar(this);
    m_toolbar->setObjectName(QString::fromLatin1(metaObject()->className()));
    m_toolbar->setMovable(false);
    m_toolbar->setFloatable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_toolbar->setIconSize(QSize(32, 32));
    m_toolbar->toggleViewAction()->setEnabled(false);
    m_group = new QActionGroup(this);
    m_group->setExclusive(true);
    for (const QString& identifier : prefIdentifyAry()) {
        if (QAction* item = toolbarItemForIdentifier(identifier))
            m_toolbar->addAction(item);
    }
    addToolBar(Qt::TopToolBarArea, m_toolbar);
    selectPanelAtIndex(0);
}

QStringList PLTabPreferenceControl::prefIdentifyAry()
{
    if (!m_identifiersKnown && m_delegate) {
        for (int i = 0; i < m_delegate->countOfPreferencePanels(); ++i)
            m_prefIdentifyAry.append(m_delegate->identifyForPreferencePanelAt(i));
        m_identifiersKnown = true;
    }
    return m_prefIdentifyAry;
}

QAction* PLTabPreferenceControl::toolbarItemForIdentifier(const QString& identifier)
{
    const int index = prefIdentifyAry().indexOf(identifier);
    if (index < 0 || !m_delegate)
        return nullptr;
    auto* item = new QAction(m_delegate->imageForPreferencePanelAt(index),
                             m_delegate->titleForPreferencePanelAt(index), this);
    if (m_group)
        m_group->addAction(item);
    item->setData(identifier);
    item->setProperty(kTagProperty, index);
    item->setCheckable(true);
    connect(item, &QAction::triggered, this, [this, item] { switchPanel(item); });
    return item;
}

void PLTabPreferenceControl::selectPanelAtIndex(int index)
{
    if (!m_toolbar)
        return;
    const QList<QAction*> items = m_toolbar->actions();
    if (index >= 0 && index < items.size())
        switchPanel(items.at(index));
}

int PLTabPreferenceControl::selectedPanel() const
{
    const QAction* item = m_group ? m_group->checkedAction() : nullptr;
    return item ? item->property(kTagProperty).toInt() : -1;
}

void PLTabPreferenceControl::switchPanel(QAction* item)
{
    if (!item || !m_delegate)
        return;
    const int tag = item->property(kTagProperty).toInt();
    QWidget* view = m_delegate->panelViewForPreferencePanelAt(tag);
    if (!view || view == centralWidget()) {
        // A click on the shown panel's button must not leave it unchecked.
        if (view)
            item->setChecked(true);
        return;
    }
    m_delegate->prefViewWillAppear(view, tag);
    item->setChecked(true);

    const QPoint topLeft = pos();
    if (QWidget* old = takeCentralWidget()) {
        // The delegate still owns its panels; keep the old one hidden inside the window.
        old->setParent(this);
        old->hide();
    }
    setCentralWidget(view);
    view->show();
    layout()->invalidate();
    layout()->activate();
    setFixedSize(sizeHint().expandedTo(minimumSizeHint()));
    move(topLeft);

    setWindowTitle(item->text());
    m_delegate->prefViewDidAppear(view, tag);
}
