#include "CliSupport.h"

#include "core/foundation/RegularFile.h"
#include "core/lyric/Lyric.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <charconv>
#include <cmath>
#include <cstdio>

namespace cli {

void usageError(const QString& sentence)
{
    throw Failure(UsageError, sentence);
}

void inputError(const QString& sentence)
{
    throw Failure(InputError, sentence);
}

void printHelp(const Help& help)
{
    writeRaw(QStringLiteral("Usage: versewick-cli %1\n\n%2\n").arg(help.usage, help.description));
}

bool wantsHelp(const QStringList& args)
{
    // After "--" every argument is an operand, even "-h".
    const QStringList options = args.mid(0, args.indexOf(QLatin1String("--")));
    return options.contains(QLatin1String("--help")) || options.contains(QLatin1String("-h"));
}

int dispatch(const QString& group, const Help& groupHelp, std::span<const SubCommand> subs,
             const QStringList& args)
{
    if (args.isEmpty() || args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h")) {
        printHelp(groupHelp);
        return args.isEmpty() ? UsageError : Ok;
    }
    for (const SubCommand& sub : subs) {
        if (args[0] == QLatin1String(sub.name)) {
            const QStringList rest = args.mid(1);
            if (wantsHelp(rest)) {
                printHelp(sub.help);
                return Ok;
            }
            return sub.run(rest);
        }
    }
    usageError(QStringLiteral("Unknown %1 command \"%2\"; try 'versewick-cli %1 --help'.")
                   .arg(group, args[0]));
}

QByteArray readInput(const QString& fileOrDash, qint64 maxBytes)
{
    const bool fromStdin = fileOrDash.isEmpty() || fileOrDash == QLatin1String("-");
    if (!fromStdin) {
        // Only a regular file is read: a pipe or a device named here is refused at once.
        foundation::FileRead read = foundation::readRegularFile(fileOrDash, maxBytes);
        if (!read.bytes)
            inputError(QStringLiteral("Cannot read %1: %2.").arg(fileOrDash, read.reason));
        return *read.bytes;
    }
    QFile file;
    if (!file.open(stdin, QIODevice::ReadOnly))
        inputError(QStringLiteral("Cannot read standard input."));
    // A pipe gives what it has at each read: read on to its end, or just past the bound.
    QByteArray bytes;
    for (;;) {
        const QByteArray part = file.read(maxBytes + 1 - bytes.size());
        if (part.isEmpty())
            break;
        bytes += part;
        if (bytes.size() > maxBytes)
            inputError(QStringLiteral("Standard input holds more than %1 bytes.").arg(maxBytes));
    }
    return bytes;
}

QString readUtf8Text(const QString& fileOrDash, qint64 maxBytes)
{
    QString error;
    const auto text =
        Lyric::decodeText(readInput(fileOrDash, maxBytes), Lyric::UTF8Encoding, &error);
    if (!text) {
        const QString name = fileOrDash.isEmpty() || fileOrDash == QLatin1String("-")
                                 ? QStringLiteral("standard input")
                                 : fileOrDash;
        inputError(QStringLiteral("Cannot read %1: it is not UTF-8 text.").arg(name));
    }
    return *text;
}

double parseNumber(const QString& text, const QString& what)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        usageError(QStringLiteral("%1 must be a number of seconds, not \"%2\".").arg(what, text));
    return value;
}

void writeRaw(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

QByteArray toJson(const QJsonValue& value)
{
    if (value.isObject())
        return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    if (value.isArray())
        return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    // A scalar: serialize it as the only element of an array and drop the brackets.
    const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return wrapped.mid(1, wrapped.size() - 2);
}

QByteArray toJson(const QList<JsonObject>& values)
{
    QByteArray json = "[";
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (i > 0)
            json += ',';
        json += values[i].bytes();
    }
    return json + "]";
}

JsonObject& JsonObject::addRaw(const QString& key, const QByteArray& json)
{
    if (!m_body.isEmpty())
        m_body += ',';
    m_body += toJson(QJsonValue(key)) + ':' + json;
    return *this;
}

JsonObject& JsonObject::add(const QString& key, const QJsonValue& value)
{
    return addRaw(key, toJson(value));
}

JsonObject& JsonObject::add(const QString& key, const JsonObject& value)
{
    return addRaw(key, value.bytes());
}

JsonObject& JsonObject::addArray(const QString& key, const QList<JsonObject>& values)
{
    return addRaw(key, toJson(values));
}

void writeJsonLine(const QByteArray& json)
{
    const QByteArray bytes = json + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
}

QJsonValue jsonFloat(float value)
{
    if (!std::isfinite(value))
        return QJsonValue::Null;
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    double widened = 0.0;
    std::from_chars(buffer, result.ptr, widened);
    return widened;
}

QJsonValue jsonString(const QString& text)
{
    return text.isNull() ? QJsonValue(QJsonValue::Null) : QJsonValue(text);
}

} // namespace cli
