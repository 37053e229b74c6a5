#include "TerminalPrinter.h"

#include "CliSupport.h"

#include "core/app/AppState.h"

#include <cstdio>

namespace cli {

namespace {
QString sourceKey(int kind)
{
    static const char* const keys[] = {"none", "itunes", "jukora", "qqmusic", "mpris"};
    return QLatin1String(kind >= 0 && kind <= 4 ? keys[kind] : "none");
}
} // namespace

TerminalPrinter::TerminalPrinter(bool json)
    : m_json(json)
{
}

void TerminalPrinter::watch(AppState& state)
{
    connect(&state, &AppState::changed, this, &TerminalPrinter::onChanged);
    connect(&state, &AppState::songChanged, this, &TerminalPrinter::onSong);
    connect(&state, &AppState::lineChanged, this, &TerminalPrinter::onLine);
}

void TerminalPrinter::onChanged(const QString& name, const QVariant& value)
{
    if (name != QLatin1String("Status"))
        return;
    const QString text = value.toString();
    print(JsonObject()
              .add("event", QStringLiteral("status"))
              .add("text", text.isEmpty() ? QJsonValue() : QJsonValue(text))
              .bytes(),
          text.isEmpty() ? QString() : QStringLiteral("(%1)").arg(text));
}

void TerminalPrinter::onSong(int kind, const QString& artist, const QString& title)
{
    if (title.isEmpty() && artist.isEmpty())
        return;
    print(JsonObject()
              .add("event", QStringLiteral("song"))
              .add("source", sourceKey(kind))
              .add("artist", artist)
              .add("title", title)
              .bytes(),
          QStringLiteral("== %1 - %2 ==").arg(artist, title));
}

void TerminalPrinter::onLine(int index, const QString& text, double position)
{
    print(JsonObject()
              .add("event", QStringLiteral("line"))
              .add("index", index)
              .add("text", text)
              .add("position", jsonFloat(float(position)))
              .bytes(),
          text);
}

void TerminalPrinter::print(const QByteArray& json, const QString& plain)
{
    if (m_json)
        writeJsonLine(json);
    else if (!plain.isNull())
        writeRaw(plain + u'\n');
    std::fflush(stdout);
}

} // namespace cli
