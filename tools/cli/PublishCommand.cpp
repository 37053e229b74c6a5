#include "PublishCommand.h"

#include "CliSupport.h"

#include "core/editor/LrcDraft.h"
#include "core/publish/LrclibPublisher.h"

#include <QEventLoop>

#include <cmath>
#include <cstdio>

namespace cli {

namespace {

const Help kHelp{
    QStringLiteral("publish LRC-FILE --artist A --title T --album B --duration S"),
    QStringLiteral("Publishes a synced lyric to LRCLIB (services/lrclibUrl in the settings):\n"
                   "asks for a challenge, does its proof of work and posts the lyric.\n"
                   "Progress goes to standard error. Exit status 0 when the service took the\n"
                   "lyric, 1 with one sentence otherwise (wrong usage included).")};

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
    bool hasDuration = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        const auto value = [&]() -> QString {
            if (i + 1 >= args.size())
                inputError(QStringLiteral("%1 needs a value.").arg(arg));
            return args[++i];
        };
        if (arg == QLatin1String("--artist"))
            song.artistName = value();
        else if (arg == QLatin1String("--title"))
            song.trackName = value();
        else if (arg == QLatin1String("--album"))
            song.albumName = value();
        else if (arg == QLatin1String("--duration")) {
            song.duration = value().toDouble(&hasDuration);
        } else if (file.isEmpty() && !arg.startsWith(QLatin1String("--")))
            file = arg;
        else
            inputError(QStringLiteral("Unexpected argument \"%1\".").arg(arg));
    }
    if (file.isEmpty() || song.artistName.isEmpty() || song.trackName.isEmpty() ||
        song.albumName.isEmpty() || !hasDuration)
        inputError(QStringLiteral("Usage: versewick-cli %1").arg(kHelp.usage));
    if (!(song.duration > 0) || !std::isfinite(song.duration))
        inputError(QStringLiteral("The duration must be a positive number of seconds."));

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
