#include "gui/tray/AppIcon.h"

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
