#include "StoreCommand.h"

#include "CliSupport.h"

#include "core/foundation/StringAdditions.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"
#include "core/store/LyricFiles.h"
#include "core/store/LyricTagBlock.h"

#include <QFileInfo>

namespace cli {
namespace {

const Help kStoreHelp{
    QStringLiteral("store path|list|read|write ..."),
    QStringLiteral(
        "The lyrics folder: one UTF-8 LRC file per song, named \"Artist--Title.lrc\".\n\n"
        "  path                              {\"path\", \"exists\"} of the folder\n"
        "  list                              one {\"artist\", \"song\", \"fileName\"} "
        "per line\n"
        "  read ARTIST TITLE                 the stored LRC text (exit 1 if none)\n"
        "  write ARTIST TITLE FILE [--overwrite]\n"
        "                                    stores FILE's LRC text; prints "
        "{\"written\", \"path\"}.\n"
        "                                    Without --overwrite a readable stored "
        "lyric is kept;\n"
        "                                    blank lyrics are never written.\n\n"
        "Only regular files are lyrics. A name that cannot be a file in the folder, or\n"
        "one taken by something else (a link, a pipe), is refused with exit 1.\n"
        "Put \"--\" before names that begin with \"-\": store read -- -h Rain")};

// Options come before "--"; every argument after it is an operand, even "-h" or
// "--overwrite".
struct Arguments {
    QStringList operands;
    bool overwrite = false;
};

Arguments parseArguments(const QStringList& args, bool takesOverwrite = false)
{
    Arguments parsed;
    bool operandsOnly = false;
    for (const QString& arg : args) {
        if (!operandsOnly && arg == QLatin1String("--"))
            operandsOnly = true;
        else if (!operandsOnly && takesOverwrite && arg == QLatin1String("--overwrite"))
            parsed.overwrite = true;
        else
            parsed.operands << arg;
    }
    return parsed;
}

// Fails with the reason when no lyric can be stored for the song.
void requireStorable(const QString& artist, const QString& title)
{
    const QString identify = LyricControl().identifyFromArtist(artist, title);
    const QString why = LyricControl::whyNotStorable(identify);
    if (!why.isNull())
        inputError(QStringLiteral("No lyric can be stored for \"%1\" by \"%2\": %3.")
                       .arg(title, artist, why));
    if (LyricControl::isTakenByNonLyric(identify))
        inputError(QStringLiteral("No lyric can be stored for \"%1\" by \"%2\": \"%3.lrc\" in "
                                  "the lyrics folder is not a regular file; it is left alone.")
                       .arg(title, artist, identify));
}

int path(QStringList args)
{
    if (!args.isEmpty())
        usageError(QStringLiteral("store path takes no arguments."));
    const QString folder = LyricControl::_pathLrcs();
    writeJsonLine(JsonObject()
                      .add(QStringLiteral("path"), folder)
                      .add(QStringLiteral("exists"), QFileInfo(folder).isDir())
                      .bytes());
    return Ok;
}

int list(QStringList args)
{
    if (!args.isEmpty())
        usageError(QStringLiteral("store list takes no arguments."));
    LyricControl control;
    control.scanLrcFilesSync();
    for (const LyricStorageFile& file : control.lyricFiles()) {
        writeJsonLine(JsonObject()
                          .add(QStringLiteral("artist"), file.artist)
                          .add(QStringLiteral("song"), file.song)
                          .add(QStringLiteral("fileName"), file.fileName)
                          .bytes());
    }
    return Ok;
}

int read(QStringList rawArgs)
{
    const QStringList args = parseArguments(rawArgs).operands;
    if (args.size() != 2)
        usageError(QStringLiteral("store read needs an ARTIST and a TITLE."));
    requireStorable(args[0], args[1]);
    LyricControl control;
    const auto lyric = control.readLrcByIdentify(control.identifyFromArtist(args[0], args[1]));
    if (!lyric)
        inputError(QStringLiteral("No readable lyric is stored for \"%1\" by \"%2\".")
                       .arg(args[1], args[0]));
    writeRaw(lyric->contents());
    return Ok;
}

int write(QStringList rawArgs)
{
    const Arguments parsed = parseArguments(rawArgs, true);
    const QStringList& args = parsed.operands;
    const bool overwrite = parsed.overwrite;
    if (args.size() != 3)
        usageError(QStringLiteral("store write needs an ARTIST, a TITLE and a FILE."));
    requireStorable(args[0], args[1]);
    Lyric lyric;
    lyric.parseLRCcontent(readUtf8Text(args[2]));

    LyricControl control;
    const QString target = LyricControl::_pathForIdentify(
        control.identifyFromArtist(args[0], args[1]) + QStringLiteral(".lrc"));
    const bool hadLyric =
        control.readLrcByIdentify(control.identifyFromArtist(args[0], args[1])) != nullptr;
    control.writeLrc(lyric, args[0], args[1], overwrite);
    const auto after = lyricfiles::readRegularFile(target, LyricControl::kMaxLyricFileSize);
    // Written when the file now holds this lyric and the rules let it replace what was there.
    const bool written = after && *after == lyric.contents().toUtf8() && (overwrite || !hadLyric) &&
                         foundation::isNonEmpty(lyric.contents());
    writeJsonLine(JsonObject()
                      .add(QStringLiteral("written"), written)
                      .add(QStringLiteral("path"), target)
                      .bytes());
    return Ok;
}

const Help kTagHelp{
    QStringLiteral("tag embed|extract ..."),
    QStringLiteral("The lyric block kept in a track's lyrics tag.\n\n"
                   "  embed FILE             the complete tag text for the LRC file FILE "
                   "(exit 1 when\n"
                   "                         nothing would be written: no timed line has text)\n"
                   "  extract [FILE|-]       the LRC text recovered from a tag text (exit 1 "
                   "when there\n"
                   "                         is no usable block)\n\n"
                   "A lyric file over 4 MiB is refused, like anything but a regular file.")};

int embed(QStringList rawArgs)
{
    const QStringList args = parseArguments(rawArgs).operands;
    if (args.size() != 1)
        usageError(QStringLiteral("tag embed needs exactly one FILE."));
    Lyric lyric;
    lyric.parseLRCcontent(readUtf8Text(args[0]));
    const auto text = tagblock::tagTextForLyric(lyric);
    if (!text)
        inputError(QStringLiteral("Nothing would be written: %1 has no timed line with text.")
                       .arg(args[0]));
    writeRaw(*text);
    return Ok;
}

int extract(QStringList rawArgs)
{
    const QStringList args = parseArguments(rawArgs).operands;
    if (args.size() > 1)
        usageError(QStringLiteral("tag extract takes at most one FILE."));
    const auto text = tagblock::lrcFromTagText(readUtf8Text(args.value(0), kMaxTagTextBytes));
    if (!text)
        inputError(QStringLiteral("The tag text holds no usable lyric block."));
    writeRaw(*text);
    return Ok;
}

} // namespace

int runStoreCommand(const QStringList& args)
{
    static const SubCommand subs[] = {
        {"path",
         {QStringLiteral("store path"),
          QStringLiteral("Prints {\"path\", \"exists\"} of the lyrics folder; it is not created.")},
         path},
        {"list",
         {QStringLiteral("store list"),
          QStringLiteral("Prints one {\"artist\", \"song\", \"fileName\"} per stored lyric, in "
                         "folder order.")},
         list},
        {"read",
         {QStringLiteral("store read ARTIST TITLE"),
          QStringLiteral("Prints the stored LRC text exactly; exit 1 when there is none.")},
         read},
        {"write",
         {QStringLiteral("store write ARTIST TITLE FILE [--overwrite]"),
          QStringLiteral(
              "Stores FILE's LRC text (atomically) and prints {\"written\", \"path\"}.")},
         write}};
    return dispatch(QStringLiteral("store"), kStoreHelp, subs, args);
}

int runTagCommand(const QStringList& args)
{
    static const SubCommand subs[] = {
        {"embed",
         {QStringLiteral("tag embed FILE"),
          QStringLiteral("Prints the complete tag text for the LRC file, byte for byte.")},
         embed},
        {"extract",
         {QStringLiteral("tag extract [FILE|-]"),
          QStringLiteral("Prints the LRC text recovered from a tag text, exactly.")},
         extract}};
    return dispatch(QStringLiteral("tag"), kTagHelp, subs, args);
}

} // namespace cli
