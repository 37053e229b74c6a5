#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <optional>

// A reader of the .ts catalogs and the checks the shipped ones must pass: every message
// translated, not empty, with the same %1/%n/%d markers as its source text, and every source
// text still in the code.
namespace tscatalog {

struct Message {
    QString context;
    QString source;
    QStringList translations; // one per numerus form
    QString type;             // "unfinished", "vanished"...; empty when done
};

std::optional<QList<Message>> read(const QByteArray& xml)
{
    QList<Message> messages;
    QString context;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = reader.name();
        if (name == u"TS" || name == u"context") {
            continue; // descend
        } else if (name == u"name") {
            context = reader.readElementText();
        } else if (name == u"message") {
            Message message{context, {}, {}, {}};
            while (reader.readNextStartElement()) {
                if (reader.name() == u"source") {
                    message.source = reader.readElementText();
                } else if (reader.name() == u"translation") {
                    message.type = reader.attributes().value(QLatin1String("type")).toString();
                    // A numerus message holds its forms in <numerusform> children.
                    QString plain;
                    while (!reader.atEnd()) {
                        reader.readNext();
                        if (reader.isCharacters())
                            plain += reader.text();
                        else if (reader.isStartElement() && reader.name() == u"numerusform")
                            message.translations.append(reader.readElementText());
                        else if (reader.isEndElement() && reader.name() == u"translation")
                            break;
                    }
                    if (message.translations.isEmpty())
                        message.translations.append(plain);
                } else {
                    reader.skipCurrentElement();
                }
            }
            if (message.translations.isEmpty())
                message.translations.append(QString());
            messages.append(message);
        } else {
            reader.skipCurrentElement();
        }
    }
    if (reader.hasError())
        return std::nullopt;
    return messages;
}

QStringList placeholders(const QString& text)
{
    static const QRegularExpression marker(QStringLiteral("%(\\d{1,2}|n|d)"));
    QStringList found;
    for (const auto& match : marker.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

QStringList problems(const QList<Message>& messages)
{
    QStringList faults;
    for (const Message& m : messages) {
        const QString where = m.context + QStringLiteral(" / \"") + m.source + u'"';
        if (!m.type.isEmpty()) // unfinished, vanished or obsolete
            faults.append(where + QStringLiteral(": ") + m.type);
        for (const QString& t : m.translations) {
            if (t.trimmed().isEmpty()) // also a message with no translation at all
                faults.append(where + QStringLiteral(": empty translation"));
            else if (placeholders(t) != placeholders(m.source))
                faults.append(where + QStringLiteral(": placeholders differ in \"") + t + u'"');
        }
    }
    return faults;
}

bool appearsInCode(const QString& source, const QString& code)
{
    QString literal;
    for (QChar c : source) {
        if (c == u'\\' || c == u'"')
            literal += u'\\';
        if (c == u'\n')
            literal += QStringLiteral("\\n");
        else
            literal += c;
    }
    return code.contains(u'"' + literal + u'"');
}

} // namespace tscatalog

namespace {

const QString kShippedTs = QStringLiteral(VERSEWICK_SOURCE_DIR "/translations/versewick_zh_CN.ts");

QList<tscatalog::Message> readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return tscatalog::read(file.readAll()).value_or(QList<tscatalog::Message>{});
}

QString allSources()
{
    QString code;
    QDirIterator it(QStringLiteral(VERSEWICK_SOURCE_DIR "/src"), {"*.cpp", "*.h"}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            code += QString::fromUtf8(file.readAll());
    }
    return code;
}

QByteArray ts(const QByteArray& messages)
{
    return QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?><!DOCTYPE TS>"
                      "<TS version=\"2.1\" language=\"zh_CN\"><context><name>C</name>") +
           messages + "</context></TS>";
}

} // namespace

TEST(ShippedCatalog, EveryMessageIsTranslatedWithTheSamePlaceholders)
{
    const auto messages = readFile(kShippedTs);
    ASSERT_GT(messages.size(), 40);
    EXPECT_EQ(tscatalog::problems(messages).join(u'\n').toStdString(), "");
}

// A text that left the code must leave the catalog too (refresh with the lupdate target).
// A literal split over several lines ("a" "b") would be reported here: keep texts on one line.
TEST(ShippedCatalog, EverySourceTextIsStillInTheCode)
{
    const QString code = allSources();
    ASSERT_FALSE(code.isEmpty());
    QStringList stale;
    for (const auto& m : readFile(kShippedTs))
        if (!tscatalog::appearsInCode(m.source, code))
            stale.append(m.context + QStringLiteral(" / ") + m.source);
    EXPECT_EQ(stale.join(u'\n').toStdString(), "");
}

struct FaultCase {
    const char* name;
    const char* source;
    const char* translation; // the element, absent when null
    const char* fault;       // empty: no fault expected
};

class CatalogFaults : public ::testing::TestWithParam<FaultCase> {};

TEST_P(CatalogFaults, AreReported)
{
    const FaultCase& c = GetParam();
    const QByteArray translation = c.translation ? QByteArray(c.translation) : QByteArray();
    const QByteArray numerus = translation.contains("numerusform") ? " numerus=\"yes\"" : "";
    const auto messages = tscatalog::read(ts("<message" + numerus + "><source>" + c.source +
                                             "</source>" + translation + "</message>"));
    ASSERT_TRUE(messages.has_value());
    ASSERT_EQ(messages->size(), 1);
    const QString found = tscatalog::problems(*messages).join(u'\n');
    if (*c.fault == '\0')
        EXPECT_TRUE(found.isEmpty()) << found.toStdString();
    else
        EXPECT_TRUE(found.contains(QLatin1String(c.fault))) << found.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Ts, CatalogFaults,
    ::testing::Values(
        FaultCase{"Done", "Total %1 items", "<translation>共 %1 项</translation>", ""},
        FaultCase{"Unfinished", "Search", R"(<translation type="unfinished">搜索</translation>)",
                  "unfinished"},
        FaultCase{"Vanished", "Search", R"(<translation type="vanished">搜索</translation>)",
                  "vanished"},
        FaultCase{"Empty", "Search", "<translation> </translation>", "empty translation"},
        FaultCase{"Missing", "Search", nullptr, "empty translation"},
        FaultCase{"DroppedMarker", "%1 is not playing", "<translation>未在播放</translation>",
                  "placeholders differ"},
        FaultCase{"SwappedMarker", "%d天前", "<translation>%1天前</translation>",
                  "placeholders differ"},
        FaultCase{"NumerusDone", "%n result(s)",
                  "<translation><numerusform>%n 个结果</numerusform></translation>", ""},
        FaultCase{"NumerusEmptyForm", "%n result(s)",
                  "<translation><numerusform>%n 个</numerusform><numerusform></numerusform>"
                  "</translation>",
                  "empty translation"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(TsCatalog, SourceTextsAreFoundAsEscapedLiterals)
{
    const QString code = QStringLiteral("tr(\"\\\"%1\\\" is gone\"); tr(\"Search\");");
    EXPECT_TRUE(tscatalog::appearsInCode(QStringLiteral("\"%1\" is gone"), code));
    EXPECT_TRUE(tscatalog::appearsInCode(QStringLiteral("Search"), code));
    EXPECT_FALSE(tscatalog::appearsInCode(QStringLiteral("Sear"), code));
    EXPECT_FALSE(tscatalog::appearsInCode(QStringLiteral("Rescan"), code));
}
