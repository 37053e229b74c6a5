#include "StatusLine.h"

#include "CliSupport.h"

#include "core/app/AppDelegate.h"
#include "core/app/AppState.h"
#include "core/lyric/Lyric.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace cli {

namespace {

struct FieldName {
    const char* name;
    StatusTemplate::Field field;
};
constexpr FieldName kFields[] = {
    {"line", StatusTemplate::Field::Line},     {"next", StatusTemplate::Field::Next},
    {"artist", StatusTemplate::Field::Artist}, {"title", StatusTemplate::Field::Title},
    {"album", StatusTemplate::Field::Album},   {"offset", StatusTemplate::Field::Offset},
    {"origin", StatusTemplate::Field::Origin}};

QString oneLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

QString originName(int origin)
{
    switch (origin) {
    case AppState::Folder:
        return QStringLiteral("folder");
    case AppState::TrackTag:
        return QStringLiteral("tag");
    case AppState::Plugin:
        return QStringLiteral("online");
    case AppState::ByHand:
        return QStringLiteral("chosen");
    case AppState::BesideAudio:
        return QStringLiteral("beside");
    default:
        return {};
    }
}

} // namespace

std::optional<StatusTemplate> StatusTemplate::parse(const QString& text, QString* error)
{
    StatusTemplate out;
    QString literal;
    auto fail = [&](const QString& why) {
        if (error)
            *error = why;
        return std::nullopt;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool doubled = i + 1 < text.size() && text[i + 1] == c;
        if ((c == u'{' || c == u'}') && doubled) {
            literal += c;
            ++i;
        } else if (c == u'}') {
            return fail(QStringLiteral("A lone } in the format; write }} for a brace."));
        } else if (c == u'{') {
            const qsizetype end = text.indexOf(u'}', i);
            if (end < 0)
                return fail(QStringLiteral("A { in the format is not closed; write {{ for a "
                                           "brace."));
            const QString name = text.mid(i + 1, end - i - 1);
            std::optional<Field> field;
            for (const FieldName& f : kFields) {
                if (name == QLatin1String(f.name))
                    field = f.field;
            }
            if (!field)
                return fail(QStringLiteral("Unknown field {%1} in the format; the fields are "
                                           "{line}, {next}, {artist}, {title}, {album}, {offset} "
                                           "and {origin}.")
                                .arg(name));
            out.m_pieces.push_back({literal, field});
            literal.clear();
            i = end;
        } else {
            literal += c;
        }
    }
    out.m_pieces.push_back({literal, std::nullopt});
    return out;
}

QString StatusTemplate::render(const Values& values) const
{
    QString out;
    for (const Piece& piece : m_pieces) {
        out += piece.literal;
        if (!piece.field)
            continue;
        switch (*piece.field) {
        case Field::Line:
            out += oneLine(values.line);
            break;
        case Field::Next:
            out += oneLine(values.next);
            break;
        case Field::Artist:
            out += oneLine(values.artist);
            break;
        case Field::Title:
            out += oneLine(values.title);
            break;
        case Field::Album:
            out += oneLine(values.album);
            break;
        case Field::Offset:
            out += values.offset;
            break;
        case Field::Origin:
            out += values.origin;
            break;
        }
    }
    return out;
}

StatusLinePrinter::StatusLinePrinter(StatusTemplate format, AppDelegate& app,
                                     std::function<QString()> album)
    : m_format(std::move(format))
    , m_app(app)
    , m_albumOf(std::move(album))
{
    AppState& state = app.state();
    connect(&state, &AppState::changed, this, &StatusLinePrinter::schedule);
    connect(&state, &AppState::lineChanged, this, &StatusLinePrinter::schedule);
    connect(&state, &AppState::songChanged, this, [this] {
        m_album = m_albumOf ? m_albumOf() : QString();
        schedule();
    });
    schedule(); // the first line, empty while nothing plays
}

void StatusLinePrinter::schedule()
{
    if (m_pending)
        return;
    m_pending = true;
    QTimer::singleShot(0, this, &StatusLinePrinter::printNow);
}

StatusTemplate::Values StatusLinePrinter::values() const
{
    const AppState& state = m_app.state();
    StatusTemplate::Values v;
    v.artist = state.artist();
    v.title = state.title();
    v.album = m_album;
    const Lyric* lyric = state.lyricLoaded() ? m_app.lyric() : nullptr;
    if (!lyric)
        return v;
    const int index = state.lineIndex();
    if (index >= 0)
        v.line = state.line();
    // The next line with words: a blank timed line only ends the one before it.
    const auto& items = lyric->lrcArray();
    for (std::size_t i = std::size_t(std::max(index + 1, 0)); i < items.size(); ++i) {
        if (items[i] && !items[i]->content().trimmed().isEmpty()) {
            v.next = items[i]->content();
            break;
        }
    }
    v.offset = QString::number(std::lround(lyric->offsetTime() * 1000.0));
    v.origin = originName(state.lyricOrigin());
    return v;
}

void StatusLinePrinter::printNow()
{
    m_pending = false;
    const AppState& state = m_app.state();
    const bool playing = !state.artist().isEmpty() || !state.title().isEmpty();
    const QString line = playing ? m_format.render(values()) : QString();
    if (m_printed == line)
        return;
    m_printed = line;
    writeRaw(line + u'\n');
    std::fflush(stdout);
}

} // namespace cli
