#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

// Runs the built versewick-cli and collects what it printed.
struct CliResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
    QJsonObject json() const;             // standard output as one JSON object
    QList<QJsonObject> jsonLines() const; // one object per line
};

CliResult runCli(const QStringList& args, const QByteArray& input = {});
// The same with HOME, XDG_CONFIG_HOME and XDG_DATA_HOME under root.
CliResult runCliAt(const QString& root, const QStringList& args, const QByteArray& input = {});
