#include "gui/tray/StatusMenu.h"

#include "core/app/AppState.h"

#include "core/app/AppDelegate.h"
#include "core/app/AppTexts.h"
#include "core/app/SyncControls.h"
#include "gui/tray/AppIcon.h"

#include <QAction>
#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QSystemTrayIcon>

StatusMenu::StatusMenu(QObject* parent)
    : QObject(parent)
    , m_menu(std::make_unique<QMenu>())
{
    // A label: the controller writes the source's name into it.
    m_source = m_menu->addAction(apptext::tr(apptext::kNoMusicSource));
    m_source->setEnabled(false);
    m_menu->addSeparator();
    m_toggle = addItem(apptext::tr(apptext::kShowLRC), &AppDelegate::toggleLyricsWindow);
    m_modeStream = m_menu->addAction(tr("Stream Mode"));
    m_modeLine = m_menu->addAction(tr("Line Mode"));
    for (QAction* mode : {m_modeStream, m_modeLine}) {
        mode->setCheckable(true);
        const auto item =
            mode == m_modeStream ? StatusMenuItem::ModeStream : StatusMenuItem::ModeLine;
        // The controller sets both marks; a click on the ticked item must not untick it,
        // although Qt unticks it and the marks the controller holds did not change.
        connect(mode, &QAction::triggered, this, [this, item] {
            if (m_delegate)
                m_delegate->changeLrcMode(item);
            showMenuItems();
        });
    }
    m_menu->addSeparator();
    m_earlier = addSyncItem(tr("Lyric Earlier"), &SyncControls::lyricEarlier);
    m_later = addSyncItem(tr("Lyric Later"), &SyncControls::lyricLater);
    m_resetOffset = addSyncItem(tr("Reset Offset"), &SyncControls::resetOffset);
    m_menu->addSeparator();
    m_search = addItem(tr("Search Lyrics..."), &AppDelegate::showSearchWindow);
    m_manager = addItem(tr("Lyric Manager..."), &AppDelegate::showLyricManager);
    addItem(tr("Edit Lyric..."), &AppDelegate::showLyricEditor);
    m_preferences = addItem(tr("Preferences..."), &AppDelegate::showPreferencePanel);
    m_menu->addSeparator();
    m_about = addItem(tr("About Versewick"), &AppDelegate::showAbout);
    m_quit = m_menu->addAction(tr("Quit"));
    m_quit->setMenuRole(QAction::QuitRole);
    connect(m_quit, &QAction::triggered, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
}

StatusMenu::~StatusMenu() = default;

void StatusMenu::setDelegate(AppDelegate* delegate)
{
    m_delegate = delegate;
}

QAction* StatusMenu::addItem(const QString& title, void (AppDelegate::*action)())
{
    QAction* item = m_menu->addAction(title);
    connect(item, &QAction::triggered, this, [this, action] {
        if (m_delegate)
            (m_delegate.data()->*action)();
    });
    return item;
}

QAction* StatusMenu::addSyncItem(const QString& title, void (SyncControls::*action)())
{
    QAction* item = m_menu->addAction(title);
    connect(item, &QAction::triggered, this, [this, action] {
        if (m_delegate)
            (m_delegate->sync().*action)();
    });
    return item;
}

bool StatusMenu::showInTray()
{
    if (!QSystemTrayIcon::isSystemTrayAvailable())
        return false;
    if (!m_tray) {
        m_tray = std::make_unique<QSystemTrayIcon>(AppIcon::icon());
        m_tray->setToolTip(QStringLiteral("Versewick"));
        m_tray->setContextMenu(m_menu.get());
        // A left click opens the same menu, as a status-bar item does.
        connect(m_tray.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger)
                        m_menu->popup(QCursor::pos());
                });
    }
    m_tray->show();
    return true;
}

void StatusMenu::observe(const AppState& state)
{
    m_state = &state;
    showMenuItems();
    if (!state.sourceName().isNull())
        setSourceTitle(state.sourceName());
    connect(&state, &AppState::menuChanged, this, &StatusMenu::showMenuItems);
    connect(&state, &AppState::changed, this, [this](const QString& name, const QVariant& value) {
        if (name == QLatin1String("SourceName"))
            setSourceTitle(value.toString());
    });
}

void StatusMenu::showMenuItems()
{
    // Before the controller first set them, the items keep their own.
    if (!m_state ||
        (m_state->toggleTitle().isNull() && !m_state->streamItemOn() && !m_state->lineItemOn()))
        return;
    if (!m_state->toggleTitle().isNull())
        setToggleTitle(m_state->toggleTitle());
    setModeStreamOn(m_state->streamItemOn());
    setModeLineOn(m_state->lineItemOn());
}

void StatusMenu::setSourceTitle(const QString& title)
{
    m_source->setText(title); // the tooltip is the song's (AppIcon::followSong)
}

void StatusMenu::setToggleTitle(const QString& title)
{
    m_toggle->setText(title);
}

void StatusMenu::setModeStreamOn(bool on)
{
    m_modeStream->setChecked(on);
}

void StatusMenu::setModeLineOn(bool on)
{
    m_modeLine->setChecked(on);
}
