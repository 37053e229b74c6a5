#include "core/preferences/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

// An Exec argument with anything beyond plain path characters is double-quoted, with `"`, `` ` ``,
// `$` and `\` escaped; then the value's own escaping doubles every backslash and writes control
// characters as escapes (a line break must not end the line), and `%` (a field code) is `%%`.
QString execArgument(const QString& program)
{
    static const QString plain =
        QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-");
    const bool quoted =
        std::any_of(program.cbegin(), program.cend(), [](QChar c) { return !plain.contains(c); });
    QString arg;
    for (QChar c : program) {
        if (quoted && (c == u'"' || c == u'`' || c == u'$' || c == u'\\'))
            arg += u'\\';
        arg += c;
    }
    if (quoted)
        arg = u'"' + arg + u'"';
    arg.replace(u'\\', QStringLiteral("\\\\"));
    arg.replace(u'\n', QStringLiteral("\\n"));
    arg.replace(u'\t', QStringLiteral("\\t"));
    arg.replace(u'\r', QStringLiteral("\\r"));
    arg.replace(u'%', QStringLiteral("%%"));
    return arg;
}

} // namespace

AutostartEntry::AutostartEntry(QString filePath, QString program)
    : m_filePath(std::move(filePath))
    , m_program(std::move(program))
{
}

QString AutostartEntry::defaultFilePath()
{
    // Relative values are invalid and to be ignored, as for every XDG base directory.
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty() || QDir::isRelativePath(config))
        config = QDir::homePath() + QStringLiteral("/.config");
    return config + QStringLiteral("/autostart/com.morvane.Versewick.desktop");
}

bool AutostartEntry::isEnabled() const
{
    return QFileInfo(m_filePath).isFile();
}

QString AutostartEntry::setEnabled(bool on) const
{
    if (!on) {
        QFile file(m_filePath);
        if (!file.exists() || file.remove())
            return {};
        return QCoreApplication::translate("AutostartEntry", "Could not remove %1: %2.")
            .arg(m_filePath, file.errorString());
    }
    const QString folder = QFileInfo(m_filePath).absolutePath();
    if (!QDir().mkpath(folder))
        return QCoreApplication::translate("AutostartEntry", "Could not create the folder %1.")
            .arg(folder);
    QString program = m_program;
    if (program.isEmpty())
        program = QCoreApplication::applicationFilePath();
    QSaveFile file(m_filePath); // a temporary file renamed over the entry, removed on failure
    if (!file.open(QIODevice::WriteOnly) || file.write(contents(program)) < 0 || !file.commit())
        return QCoreApplication::translate("AutostartEntry", "Could not write %1: %2.")
            .arg(m_filePath, file.errorString());
    return {};
}

QByteArray AutostartEntry::contents(const QString& program)
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Versewick\n"
                          "Comment=Shows the lyrics of the song your music player is playing\n"
                          "Exec=%1\n"
                          "Icon=versewick\n"
                          "Terminal=false\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(execArgument(program))
        .toUtf8();
}
