#include "gui/tray/AppIcon.h"

#include "core/app/AppState.h"
#include "core/app/AppTexts.h"

#include <QSystemTrayIcon>

// The icon lives in the static GUI library's resources, which a program must register.
static void registerIcons()
{
    Q_INIT_RESOURCE(versewick_icons);
}

QIcon AppIcon::icon()
{
    static const bool registered = (registerIcons(), true);
    Q_UNUSED(registered);
    return QIcon::fromTheme(QStringLiteral("versewick"),
                            QIcon(QStringLiteral(":/versewick/versewick.svg")));
}

QString AppIcon::toolTip(const QString& artist, const QString& title, const QString& line)
{
    const QString a = artist.trimmed();
    const QString t = title.trimmed();
    if (a.isEmpty() && t.isEmpty())
        return QLatin1String(apptext::kPanelTitle);
    QString song = a.isEmpty() ? t : t.isEmpty() ? a : a + QStringLiteral(" - ") + t;
    const QString sung = line.trimmed();
    return sung.isEmpty() ? song : song + QLatin1Char('\n') + sung;
}

void AppIcon::followSong(QSystemTrayIcon& tray, const AppState& state)
{
    // Connected with the tray as context: the connections go with it.
    const auto apply = [&tray, &state] {
        tray.setToolTip(toolTip(state.artist(), state.title(),
                                state.lineIndex() >= 0 ? state.line() : QString()));
    };
    QObject::connect(&state, &AppState::songChanged, &tray, apply);
    QObject::connect(&state, &AppState::lineChanged, &tray, apply);
    apply();
}
