#include "PublishCommand.h"

#include "CliSupport.h"

#include "core/editor/LrcDraft.h"
#include "core/publish/LrclibPublisher.h"

#include <QEventLoop>

#include <cmath>
#include <cstdio>
#include <utility>

namespace cli {

namespace {

const Help kHelp{
    QStringLiteral("publish LRC-FILE --artist A --title T --album B --duration S"),
    QStringLiteral("Publishes a synced lyric to LRCLIB (services/lrclibUrl in the settings):\n"
                   "asks for a challenge, does its proof of work and posts the lyric.\n"
                   "Progress goes to standard error. Exit status 0 when the service took the\n"
                   "lyric, 1 with one sentence when it did not or the file cannot be used,\n"
                   "2 for wrong usage.")};

const char* stageName(LrclibPublisher::Stage stage)
{
    switch (stage) {
    case LrclibPublisher::Stage::Challenge:
        return "asking for a challenge";
    case LrclibPublisher::Stage::Solving:
        return "solving the challenge";
    case LrclibPublisher::Stage::Publishing:
        return "publishing";
    }
    return "";
}

} // namespace

int runPublishCommand(const QStringList& args)
{
    if (wantsHelp(args)) {
        printHelp(kHelp);
        return Ok;
    }
    QString file;
    LrclibPublisher::Song song;
    QString duration;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const auto value = [&]() -> QString {
            if (i + 1 >= args.size() || args[i + 1].trimmed().isEmpty())
                usageError(QStringLiteral("publish: %1 needs a value.").arg(arg));
            return args[++i];
        };
        if (arg == QLatin1String("--artist"))
            song.artistName = value();
        else if (arg == QLatin1String("--title"))
            song.trackName = value();
        else if (arg == QLatin1String("--album"))
            song.albumName = value();
        else if (arg == QLatin1String("--duration"))
            duration = value();
        else if (file.isEmpty() && !arg.startsWith(QLatin1String("--")))
            file = arg;
        else
            usageError(QStringLiteral("publish: unexpected argument \"%1\".").arg(arg));
    }
    QStringList missing;
    if (file.isEmpty())
        missing << QStringLiteral("LRC-FILE");
    for (const auto& [name, given] :
         {std::pair{"--artist", &song.artistName}, std::pair{"--title", &song.trackName},
          std::pair{"--album", &song.albumName}, std::pair{"--duration", &duration}})
        if (given->isEmpty())
            missing << QLatin1String(name);
    if (!missing.isEmpty())
        usageError(QStringLiteral("publish needs %1; usage: versewick-cli %2.")
                       .arg(missing.join(QStringLiteral(", ")), kHelp.usage));
    bool isNumber = false;
    song.duration = duration.toDouble(&isNumber);
    if (!isNumber || !(song.duration > 0) || !std::isfinite(song.duration))
        usageError(QStringLiteral("publish: the duration must be a positive number of seconds."));

    const LrcDraft draft = LrcDraft::fromText(readUtf8Text(file));
    if (draft.timedCount() == 0)
        inputError(QStringLiteral("%1 has no timed lines to publish.").arg(file));
    song.syncedLyrics = draft.toLrc();
    song.plainLyrics = draft.plainText();

    LrclibPublisher publisher;
    QEventLoop loop;
    bool published = false;
    QString sentence;
    QObject::connect(&publisher, &LrclibPublisher::progress, [](auto stage, quint64 hashes) {
        if (stage == LrclibPublisher::Stage::Solving && hashes > 0)
            std::fprintf(stderr, "%s: %llu hashes\n", stageName(stage),
                         static_cast<unsigned long long>(hashes));
        else
            std::fprintf(stderr, "%s\n", stageName(stage));
    });
    QObject::connect(&publisher, &LrclibPublisher::finished, [&](bool ok, const QString& text) {
        published = ok;
        sentence = text;
        loop.quit();
    });
    publisher.start(LrclibPublisher::configuredUrl(), song);
    if (publisher.isRunning())
        loop.exec();
    if (!published)
        inputError(sentence);
    std::fprintf(stderr, "%s\n", qPrintable(sentence));
    return Ok;
}

} // namespace cli
