#include "AudioCommand.h"

#include "CliSupport.h"

#include "core/audiofile/AudioFileLyrics.h"
#include "core/audiofile/AudioLyricsTransfer.h"
#include "core/audiofile/AudioTagReader.h"
#include "core/lyric/Lyric.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonObject>
#include <QMap>

#include <cstdio>
#include <unistd.h>

namespace cli {
namespace {

const Help kAudioHelp{
    QStringLiteral("audio read|write|import|export ..."),
    QStringLiteral(
        "The lyrics kept in music files' tags (ID3v2 USLT and SYLT, Xiph LYRICS and\n"
        "UNSYNCEDLYRICS, MP4 \"©lyr\", APE \"Lyrics\").\n\n"
        "  read FILE                    the lyric FILE holds, as LRC (exit 1 if none)\n"
        "  write FILE LRC-FILE          writes the lyric into FILE's tag; prints {\"written\", "
        "\"file\"}\n"
        "  import DIR [--dry-run] [--force]\n"
        "                               lyrics from the music files under DIR into the lyrics "
        "folder\n"
        "  export DIR [--dry-run] [--force]\n"
        "                               lyrics from the lyrics folder into the music files "
        "under DIR\n\n"
        "Import and export print one {\"file\", \"result\", \"reason\", \"lyric\"} per music "
        "file,\nthen {\"found\", \"written\", \"skipped\", \"reasons\", \"dryRun\"}. A different "
        "lyric at the\ndestination is kept unless --force is given. On a terminal a progress "
        "line is\nshown on standard error.\n"
        "Exit status: 0 done (import and export: whatever was skipped), 1 no lyric, a file\n"
        "or lyric refused, or DIR not a folder (one sentence on standard error), 2 wrong usage.")};

QString writeRefusal(AudioTagWriter::Result result, const QString& file)
{
    using R = AudioTagWriter::Result;
    switch (result) {
    case R::Written:
        return {};
    case R::Missing:
        return QStringLiteral("Cannot write %1: there is no such file.").arg(file);
    case R::ReadOnlyFile:
        return QStringLiteral("%1 is read-only; it was left unchanged.").arg(file);
    case R::ReadOnlyFolder:
        return QStringLiteral("The folder of %1 is read-only, so it was left unchanged.").arg(file);
    case R::TooLarge:
        return QStringLiteral("%1 is larger than 2 GiB; it was left unchanged.").arg(file);
    case R::NotAudio:
        return QStringLiteral("%1 is not audio that can be tagged (damaged, or of an unsupported "
                              "format); it was left unchanged.")
            .arg(file);
    case R::Failed:
        break;
    }
    return QStringLiteral("The lyric could not be written into %1; it was left unchanged.")
        .arg(file);
}

int read(QStringList args)
{
    if (args.size() != 1)
        usageError(QStringLiteral("audio read needs exactly one FILE."));
    const QString& file = args[0];
    const QFileInfo info(file);
    if (!info.exists())
        inputError(QStringLiteral("Cannot read %1: there is no such file.").arg(file));
    if (const auto lyric = AudioFileLyrics::readLyric(file)) {
        writeRaw(*lyric);
        return Ok;
    }
    if (!AudioFileLyrics::isLyricFormat(file) || !AudioTagReader::song(file))
        inputError(QStringLiteral("%1 is not audio whose tags can be read (damaged, or of an "
                                  "unsupported format).")
                       .arg(file));
    inputError(QStringLiteral("%1 holds no lyric in its tags.").arg(file));
}

int write(QStringList args)
{
    if (args.size() != 2)
        usageError(QStringLiteral("audio write needs a FILE and an LRC-FILE."));
    const QString text = readUtf8Text(args[1]);
    if (text.contains(QChar(0)))
        inputError(QStringLiteral("Cannot read %1: it is not text.").arg(args[1]));
    Lyric lyric;
    lyric.parseLRCcontent(text);
    if (lyric.lines() == 0)
        inputError(QStringLiteral("%1 has no timed line, so it is not a lyric.").arg(args[1]));
    const auto result = AudioFileLyrics::writeLyricOrWhyNot(args[0], text);
    if (result != AudioTagWriter::Result::Written)
        inputError(writeRefusal(result, args[0]));
    writeJsonLine(JsonObject()
                      .add(QStringLiteral("written"), true)
                      .add(QStringLiteral("file"), args[0])
                      .bytes());
    return Ok;
}

// "\r" and the line again, padded over what was there: one line that changes in place.
class Progress {
public:
    Progress()
        : m_shown(::isatty(STDERR_FILENO) == 1)
    {
    }
    ~Progress() { show(QString()); }
    // An empty line clears it, so that what goes to standard output starts on a clean line.
    void show(const QString& line)
    {
        if (!m_shown || (line.isEmpty() && m_last == 0))
            return;
        const QByteArray bytes = line.left(100).toLocal8Bit();
        const qsizetype pad = qMax<qsizetype>(0, m_last - bytes.size());
        std::fprintf(stderr, "\r%s%*s%s", bytes.constData(), int(pad), "",
                     line.isEmpty() ? "\r" : "");
        std::fflush(stderr);
        m_last = bytes.size();
    }

private:
    bool m_shown;
    qsizetype m_last = 0;
};

int transfer(QStringList args, AudioLyricsTransfer::Direction direction)
{
    const char* name = direction == AudioLyricsTransfer::Direction::Import ? "import" : "export";
    AudioLyricsTransfer::Options options;
    options.direction = direction;
    QStringList operands;
    for (const QString& arg : args) {
        if (arg == QLatin1String("--dry-run"))
            options.dryRun = true;
        else if (arg == QLatin1String("--force"))
            options.force = true;
        else
            operands << arg;
    }
    if (operands.size() != 1)
        usageError(QStringLiteral("audio %1 needs one DIR (and takes --dry-run, --force).")
                       .arg(QLatin1String(name)));
    const QString dir = operands[0];
    if (!QFileInfo(dir).isDir())
        inputError(QStringLiteral("Cannot read %1: it is not a folder.").arg(dir));

    // Links are not followed into folders, so a loop of links ends; hidden files are skipped,
    // the writer's own temporary copies among them.
    QStringList files;
    QDirIterator it(dir, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (AudioFileLyrics::isLyricFormat(path) || AudioFileLyrics::isOtherAudioFormat(path))
            files << path;
    }
    files.sort();

    AudioLyricsTransfer mover(options);
    Progress progress;
    int written = 0;
    QMap<QString, int> reasons;
    for (qsizetype i = 0; i < files.size(); ++i) {
        progress.show(QStringLiteral("%1/%2 %3")
                          .arg(i + 1)
                          .arg(files.size())
                          .arg(QFileInfo(files[i]).fileName()));
        const auto outcome = mover.transfer(files[i]);
        progress.show(QString());
        QString result = QStringLiteral("skipped");
        if (outcome.written) {
            ++written;
            result = options.dryRun ? QStringLiteral("would write") : QStringLiteral("written");
        } else {
            ++reasons[outcome.reason];
        }
        writeJsonLine(JsonObject()
                          .add(QStringLiteral("file"), files[i])
                          .add(QStringLiteral("result"), result)
                          .add(QStringLiteral("reason"),
                               jsonString(outcome.reason.isEmpty() ? QString() : outcome.reason))
                          .add(QStringLiteral("lyric"), jsonString(outcome.lyricPath))
                          .bytes());
        std::fflush(stdout);
    }
    QJsonObject why;
    for (auto r = reasons.cbegin(); r != reasons.cend(); ++r)
        why.insert(r.key(), r.value());
    writeJsonLine(JsonObject()
                      .add(QStringLiteral("found"), int(files.size()))
                      .add(QStringLiteral("written"), written)
                      .add(QStringLiteral("skipped"), int(files.size()) - written)
                      .add(QStringLiteral("reasons"), why)
                      .add(QStringLiteral("dryRun"), options.dryRun)
                      .bytes());
    return Ok;
}

} // namespace

int runAudioCommand(const QStringList& args)
{
    static const SubCommand subs[] = {
        {"read",
         {QStringLiteral("audio read FILE"),
          QStringLiteral("Prints the lyric FILE's tags hold, as LRC; exit 1 when there is none.")},
         read},
        {"write",
         {QStringLiteral("audio write FILE LRC-FILE"),
          QStringLiteral("Writes the LRC text (UTF-8, at most 4 MiB, with timed lines) into "
                         "FILE's lyrics tag,\nreplacing the file atomically; a read-only file "
                         "or folder is refused.")},
         write},
        {"import",
         {QStringLiteral("audio import DIR [--dry-run] [--force]"),
          QStringLiteral("Copies the lyrics of the music files under DIR into the lyrics "
                         "folder.")},
         [](QStringList a) { return transfer(a, AudioLyricsTransfer::Direction::Import); }},
        {"export",
         {QStringLiteral("audio export DIR [--dry-run] [--force]"),
          QStringLiteral("Writes the lyrics folder's lyrics into the music files under DIR.")},
         [](QStringList a) { return transfer(a, AudioLyricsTransfer::Direction::Export); }}};
    return dispatch(QStringLiteral("audio"), kAudioHelp, subs, args);
}

} // namespace cli
