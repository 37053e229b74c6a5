#include "OnlineCommands.h"

#include "CliSupport.h"

#include "core/foundation/TextDecoding.h"
#include "core/http/BlockingGet.h"
#include "core/http/PLHttpClient.h"
#include "core/online/QQFetchHelper.h"
#include "core/settings/ServiceAddresses.h"
#include "core/text/PLTranslator.h"
#include "core/text/PLTranslatorZh.h"

#include <QJsonValue>

namespace cli {
namespace {

QString serverHost()
{
    return ServiceAddresses().lyricServerHost();
}

std::int64_t parseId(const QString& text)
{
    bool ok = false;
    const qlonglong id = text.toLongLong(&ok);
    if (!ok)
        usageError(QStringLiteral("ID must be a whole number, not \"%1\".").arg(text));
    return id;
}

JsonObject itemJson(const LRCListItem& item)
{
    return JsonObject()
        .addRaw(QStringLiteral("id"), QByteArray::number(qlonglong(item.uid())))
        .add(QStringLiteral("artist"), jsonString(item.artist()))
        .add(QStringLiteral("title"), jsonString(item.title()))
        .add(QStringLiteral("url"), item.fileURL().toString());
}

void printItems(const QByteArray& xml)
{
    QList<JsonObject> items;
    for (const LRCListItem& item : QQFetchHelper::lrcListItemsFromXML(xml, serverHost()))
        items.append(itemJson(item));
    writeJsonLine(toJson(items));
}

int searchUrl(QStringList args)
{
    if (args.size() != 2)
        usageError(QStringLiteral("server search-url needs an ARTIST and a TITLE."));
    writeJsonLine(
        JsonObject()
            .add(QStringLiteral("url"),
                 QQFetchHelper::urlForLRCsearching(args[0], args[1], serverHost()).toString())
            .bytes());
    return Ok;
}

int downloadUrl(QStringList args)
{
    if (args.size() != 3)
        usageError(QStringLiteral("server download-url needs an ID, an ARTIST and a TITLE."));
    const QUrl url =
        QQFetchHelper::urlForLRCfetching(parseId(args[0]), args[1], args[2], serverHost());
    writeJsonLine(JsonObject().add(QStringLiteral("url"), url.toString()).bytes());
    return Ok;
}

int code(QStringList args)
{
    if (args.size() != 3)
        usageError(QStringLiteral("server code needs an ID, an ARTIST and a TITLE."));
    const std::int64_t value =
        QQFetchHelper::encryptedCodeFromID(parseId(args[0]), args[1], args[2]);
    writeJsonLine(QByteArray::number(qlonglong(value)));
    return Ok;
}

int parse(QStringList args)
{
    if (args.size() > 1)
        usageError(QStringLiteral("server parse takes at most one FILE."));
    printItems(readInput(args.value(0)));
    return Ok;
}

// The server's answer, or exit 1 with the reason. Bounded like any blocking request: 5 s for
// the whole request, 4 MiB for the body; only a 2xx status is an answer.
QByteArray askServer(const QUrl& url)
{
    const http::BlockingAnswer answer = http::blockingFetch(url);
    switch (answer.failure) {
    case http::BlockingFailure::None:
        break;
    case http::BlockingFailure::TimedOut:
        inputError(QStringLiteral("The lyric server at %1 did not answer within %2 s.")
                       .arg(serverHost())
                       .arg(http::kBlockingDefaultTimeoutMs / 1000));
    case http::BlockingFailure::TooLarge:
        inputError(QStringLiteral("The lyric server at %1 sent more than %2 MiB.")
                       .arg(serverHost())
                       .arg(http::kBlockingDefaultMaxBytes / (1024 * 1024)));
    case http::BlockingFailure::Status:
        inputError(QStringLiteral("The lyric server at %1 answered with HTTP status %2.")
                       .arg(serverHost())
                       .arg(answer.status));
    default:
        inputError(QStringLiteral("The lyric server at %1 did not answer.").arg(serverHost()));
    }
    return answer.body.value_or(QByteArray());
}

int search(QStringList args)
{
    if (args.size() != 2)
        usageError(QStringLiteral("server search needs an ARTIST and a TITLE."));
    printItems(askServer(QQFetchHelper::urlForLRCsearching(args[0], args[1], serverHost())));
    return Ok;
}

int download(QStringList args)
{
    if (args.size() != 3)
        usageError(QStringLiteral("server download needs an ID, an ARTIST and a TITLE."));
    const QUrl url =
        QQFetchHelper::urlForLRCfetching(parseId(args[0]), args[1], args[2], serverHost());
    const QString text =
        foundation::decodeText(askServer(url), PLHttpClient::globalEncoding()).value_or(QString());
    if (text.isNull())
        inputError(QStringLiteral("The lyric server at %1 gave no lyric text.").arg(serverHost()));
    writeRaw(text);
    return Ok;
}

const Help kServerHelp{
    QStringLiteral("server search-url|download-url|code|parse|search|download ..."),
    QStringLiteral(
        "The online lyric server (host: the \"services/lyricServerHost\" value of the settings\n"
        "file, $XDG_CONFIG_HOME/morvane/Versewick.ini).\n\n"
        "  search-url ARTIST TITLE        {\"url\"} of the search\n"
        "  download-url ID ARTIST TITLE   {\"url\"} of the download, with its request code\n"
        "  code ID ARTIST TITLE           the signed 64-bit request code\n"
        "  parse [FILE|-]                 [{\"id\", \"artist\", \"title\", \"url\"}] of a search "
        "answer\n"
        "  search ARTIST TITLE            asks the server; prints the results as parse does\n"
        "  download ID ARTIST TITLE       asks the server; prints the LRC text exactly\n"
        "Exit 1 when the server cannot be reached, takes more than 5 s in all, sends more\n"
        "than 4 MiB or answers with a status other than 2xx (a 300 or a 404 included).")};

int convert(const QStringList& args, QString (PLTranslatorZh::*to)(const QString&) const,
            const char* name)
{
    if (args.size() > 1)
        usageError(QStringLiteral("zh %1 takes at most one TEXT.").arg(QLatin1String(name)));
    const QString text =
        args.isEmpty() || args[0] == QLatin1String("-") ? readUtf8Text(QString()) : args[0];
    writeRaw((PLTranslatorZh().*to)(text));
    return Ok;
}

const Help kZhHelp{
    QStringLiteral("zh simplified|traditional|mars [TEXT|-]"),
    QStringLiteral("Converts TEXT (standard input for - or no TEXT) character by character and "
                   "prints\nit exactly; characters outside the tables pass through.")};

int translateUrl(QStringList args)
{
    if (args.size() != 3)
        usageError(QStringLiteral("translate url needs a TEXT, a FROM language and a TO language "
                                  "(FROM may be \"\" to detect it)."));
    const QString from = args[1].isEmpty() ? QString() : args[1];
    const QString address =
        PLTranslator::addressForText(args[0], from, args[2], ServiceAddresses().translationHost());
    writeJsonLine(JsonObject().add(QStringLiteral("url"), address).bytes());
    return Ok;
}

int translateParse(QStringList args)
{
    if (args.size() > 1)
        usageError(QStringLiteral("translate parse takes at most one FILE."));
    const QVariantMap result = PLTranslator::TranslationFromResponse(readUtf8Text(args.value(0)));
    JsonObject json;
    for (const QString& key :
         {PLTranslator::kDetails, PLTranslator::kStatus, PLTranslator::kTranslatedText,
          PLTranslator::kDetectedSourceLanguage}) {
        if (result.contains(key))
            json.add(key, QJsonValue::fromVariant(result.value(key)));
    }
    writeJsonLine(json.bytes());
    return Ok;
}

const Help kTranslateHelp{
    QStringLiteral("translate url|parse ..."),
    QStringLiteral("The online translation service (host: \"services/translationHost\").\n\n"
                   "  url TEXT FROM TO     {\"url\"}: the request address; FROM \"\" asks the "
                   "service to detect it\n"
                   "  parse [FILE|-]       the result of an answer as JSON, in the order details, "
                   "status,\n"
                   "                       text, detected language, ending at the first missing "
                   "one")};

} // namespace

int runServerCommand(const QStringList& args)
{
    static const SubCommand subs[] = {{"search-url", kServerHelp, searchUrl},
                                      {"download-url", kServerHelp, downloadUrl},
                                      {"code", kServerHelp, code},
                                      {"parse", kServerHelp, parse},
                                      {"search", kServerHelp, search},
                                      {"download", kServerHelp, download}};
    return dispatch(QStringLiteral("server"), kServerHelp, subs, args);
}

int runZhCommand(const QStringList& args)
{
    static const SubCommand subs[] = {
        {"simplified", kZhHelp,
         [](QStringList a) {
             return convert(a, &PLTranslatorZh::translateToSimplifed, "simplified");
         }},
        {"traditional", kZhHelp,
         [](QStringList a) {
             return convert(a, &PLTranslatorZh::translateToTraditional, "traditional");
         }},
        {"mars", kZhHelp,
         [](QStringList a) { return convert(a, &PLTranslatorZh::translateToMars, "mars"); }}};
    return dispatch(QStringLiteral("zh"), kZhHelp, subs, args);
}

int runTranslateCommand(const QStringList& args)
{
    static const SubCommand subs[] = {{"url", kTranslateHelp, translateUrl},
                                      {"parse", kTranslateHelp, translateParse}};
    return dispatch(QStringLiteral("translate"), kTranslateHelp, subs, args);
}

} // namespace cli
