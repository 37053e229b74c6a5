#pragma once

#include "core/foundation/RegularFile.h"

#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>
#include <span>
#include <stdexcept>

// Conventions shared by every versewick-cli command: JSON on standard output, one sentence on
// standard error, exit status 2 for wrong usage and 1 for input that cannot be read.
namespace cli {

enum ExitCode { Ok = 0, InputError = 1, UsageError = 2 };

// Thrown by commands; main() prints the sentence and exits with the code.
struct Failure : std::runtime_error {
    Failure(ExitCode code, const QString& sentence)
        : std::runtime_error(sentence.toStdString())
        , code(code)
    {
    }
    ExitCode code;
};

[[noreturn]] void usageError(const QString& sentence);
[[noreturn]] void inputError(const QString& sentence);

// A command's help text; printHelp writes it to standard output.
struct Help {
    QString usage;       // "lrc dump [FILE|-]"
    QString description; // what it does and what it prints
};
void printHelp(const Help& help);
// "--help" or "-h" before any "--".
bool wantsHelp(const QStringList& args);

// A sub-command of a command group ("lrc dump"): its name, help and handler.
struct SubCommand {
    const char* name;
    Help help;
    int (*run)(QStringList args);
};
// Runs the sub-command named by args[0], answering --help at either level.
int dispatch(const QString& group, const Help& groupHelp, std::span<const SubCommand> subs,
             const QStringList& args);

// A lyrics tag's text holds the lyric's lines and its compressed block: room for both.
inline constexpr qint64 kMaxTagTextBytes = 4 * foundation::kMaxLyricBytes;

// The bytes of FILE, or of standard input for "-" or no argument, at most maxBytes; FILE must
// be a regular file. Anything else is an input error, at once.
QByteArray readInput(const QString& fileOrDash, qint64 maxBytes = foundation::kMaxLyricBytes);
// The text of FILE (or standard input) decoded as UTF-8, as lyric files are read.
QString readUtf8Text(const QString& fileOrDash, qint64 maxBytes = foundation::kMaxLyricBytes);

double parseNumber(const QString& text, const QString& what);

void writeRaw(const QString& text);

// JSON objects that keep their keys in the order given (QJsonObject sorts them); values are
// serialized by Qt.
class JsonObject {
public:
    JsonObject& add(const QString& key, const QJsonValue& value);
    JsonObject& add(const QString& key, const JsonObject& value);
    JsonObject& addArray(const QString& key, const QList<JsonObject>& values);
    // A value already in JSON form, such as a 64-bit integer that a double cannot hold.
    JsonObject& addRaw(const QString& key, const QByteArray& json);
    QByteArray bytes() const { return "{" + m_body + "}"; }

private:
    QByteArray m_body;
};
QByteArray toJson(const QJsonValue& value);
QByteArray toJson(const QList<JsonObject>& values);
void writeJsonLine(const QByteArray& json);

// A float as the shortest decimal that reads back as that float (10.6, not
// 10.600000381469727); JSON null for infinities and NaN, which JSON cannot hold.
QJsonValue jsonFloat(float value);
QJsonValue jsonString(const QString& text); // null for an absent string

} // namespace cli
