#include "CliRunner.h"

#include <QJsonDocument>
#include <QProcess>
#include <QProcessEnvironment>

QJsonObject CliResult::json() const
{
    return QJsonDocument::fromJson(out).object();
}

QList<QJsonObject> CliResult::jsonLines() const
{
    QList<QJsonObject> lines;
    for (const QByteArray& line : out.split('\n')) {
        if (!line.isEmpty())
            lines.append(QJsonDocument::fromJson(line).object());
    }
    return lines;
}

namespace {
CliResult run(QProcess& process, const QStringList& args, const QByteArray& input)
{
    process.start(QStringLiteral(VERSEWICK_CLI), args);
    process.waitForStarted();
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(20000);
    CliResult result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}
} // namespace

CliResult runCli(const QStringList& args, const QByteArray& input)
{
    QProcess process;
    return run(process, args, input);
}

CliResult runCliAt(const QString& root, const QStringList& args, const QByteArray& input)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", root);
    env.insert("XDG_CONFIG_HOME", root + "/config");
    env.insert("XDG_DATA_HOME", root + "/data");
    process.setProcessEnvironment(env);
    return run(process, args, input);
}
