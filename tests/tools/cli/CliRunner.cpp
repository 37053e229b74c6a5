#include "CliRunner.h"

#include <QJsonDocument>
#include <QProcess>

QJsonObject CliResult::json() const {
    return QJsonDocument::fromJson(out).object();
}

QList<QJsonObject> CliResult::jsonLines() const {
    QList<QJsonObject> lines;
    for (const QByteArray& line : out.split('\n')) {
        if (!line.isEmpty())
            lines.append(QJsonDocument::fromJson(line).object());
    }
    return lines;
}

CliResult runCli(const QStringList& args, const QByteArray& input) {
    QProcess process;
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
