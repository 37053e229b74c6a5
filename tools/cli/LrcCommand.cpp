#include "LrcCommand.h"

#include "CliSupport.h"

#include "core/lyric/Lyric.h"

namespace cli {
namespace {

const Help kLrcHelp{
    QStringLiteral("lrc dump|at|readable|offset ..."),
    QStringLiteral("Reads an LRC file (UTF-8) through the lyric model.\n\n"
                   "  dump [FILE|-]          the parsed document as one JSON object\n"
                   "  at FILE T...           the line sung at each time T (seconds), one JSON "
                   "object per line\n"
                   "  readable FILE          the lines' texts without time tags\n"
                   "  offset FILE SECONDS    the text with the offset tag set to SECONDS\n\n"
                   "Run 'versewick-cli lrc COMMAND --help' for one command.")};

const Help kDumpHelp{
    QStringLiteral("lrc dump [FILE|-]"),
    QStringLiteral("Parses FILE (standard input for - or no FILE) and prints one JSON object:\n"
                   "{\"parsed\", \"lines\", \"offset\" (seconds), \"offsetTag\" (text or null),\n"
                   " \"items\": [{\"index\", \"start\", \"end\", \"minute\", \"second\", "
                   "\"content\"}]}\n"
                   "start is read through the document's offset; end is fixed when sorted.")};

const Help kAtHelp{
    QStringLiteral("lrc at FILE T..."),
    QStringLiteral("Asks one parsed document for the line at each time T, in the order given (the\n"
                   "remembered line carries over from one question to the next), and prints\n"
                   "one JSON object per time: {\"time\", \"index\" (or null), \"content\" (or "
                   "null)}.")};

const Help kReadableHelp{QStringLiteral("lrc readable FILE"),
                         QStringLiteral("Prints the texts of the timed lines, in time order, one "
                                        "per line, without time tags.")};

const Help kOffsetHelp{
    QStringLiteral("lrc offset FILE SECONDS"),
    QStringLiteral("Sets the document's offset to SECONDS and prints its text: the offset tag\n"
                   "\"[offset:<milliseconds>]\" replaces the earlier one, or is appended on a\n"
                   "line of its own.")};

void parseInto(Lyric& lyric, const QString& fileOrDash)
{
    lyric.parseLRCcontent(readUtf8Text(fileOrDash));
}

int dump(QStringList args)
{
    if (args.size() > 1)
        usageError(QStringLiteral("lrc dump takes at most one FILE."));
    Lyric lyric;
    parseInto(lyric, args.value(0));
    QList<JsonObject> items;
    for (const auto& item : lyric.lrcArray()) {
        items.append(JsonObject()
                         .add(QStringLiteral("index"), item->index())
                         .add(QStringLiteral("start"), jsonFloat(item->startTime()))
                         .add(QStringLiteral("end"), jsonFloat(item->endTime()))
                         .add(QStringLiteral("minute"), item->minute())
                         .add(QStringLiteral("second"), jsonFloat(item->second()))
                         .add(QStringLiteral("content"), item->content()));
    }
    writeJsonLine(JsonObject()
                      .add(QStringLiteral("parsed"), lyric.isParsed())
                      .add(QStringLiteral("lines"), lyric.lines())
                      .add(QStringLiteral("offset"), lyric.offsetTime())
                      .add(QStringLiteral("offsetTag"), jsonString(lyric.offsetItem()))
                      .addArray(QStringLiteral("items"), items)
                      .bytes());
    return Ok;
}

int at(QStringList args)
{
    if (args.size() < 2)
        usageError(QStringLiteral("lrc at needs a FILE and at least one time."));
    QList<double> times;
    for (qsizetype i = 1; i < args.size(); ++i)
        times.append(parseNumber(args[i], QStringLiteral("A time")));
    Lyric lyric;
    parseInto(lyric, args[0]);
    for (double t : times) {
        const LRCItem* item = lyric.lrcItemAtTime(t);
        writeJsonLine(
            JsonObject()
                .add(QStringLiteral("time"), t)
                .add(QStringLiteral("index"), item ? QJsonValue(item->index()) : QJsonValue())
                .add(QStringLiteral("content"), item ? QJsonValue(item->content()) : QJsonValue())
                .bytes());
    }
    return Ok;
}

int readable(QStringList args)
{
    if (args.size() != 1)
        usageError(QStringLiteral("lrc readable needs exactly one FILE."));
    Lyric lyric;
    parseInto(lyric, args[0]);
    writeRaw(lyric.contentsReadable());
    return Ok;
}

int offset(QStringList args)
{
    if (args.size() != 2)
        usageError(QStringLiteral("lrc offset needs a FILE and SECONDS."));
    const double seconds = parseNumber(args[1], QStringLiteral("SECONDS"));
    Lyric lyric;
    parseInto(lyric, args[0]);
    lyric.setOffsetTime(seconds);
    writeRaw(lyric.contents());
    return Ok;
}

} // namespace

int runLrcCommand(const QStringList& args)
{
    static const SubCommand subs[] = {{"dump", kDumpHelp, dump},
                                      {"at", kAtHelp, at},
                                      {"readable", kReadableHelp, readable},
                                      {"offset", kOffsetHelp, offset}};
    return dispatch(QStringLiteral("lrc"), kLrcHelp, subs, args);
}

} // namespace cli
