#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class AppDelegate;

namespace cli {

// A status-bar template: text with fields such as "{line}" and "{{"/"}}" for literal braces.
class StatusTemplate {
public:
    enum class Field { Line, Next, Artist, Title, Album, Offset, Origin };
    struct Values {
        QString line, next, artist, title, album, offset, origin;
    };

    // The template, or nullopt with the reason (an unknown field, an unclosed brace).
    static std::optional<StatusTemplate> parse(const QString& text, QString* error);
    // Line breaks in the values become spaces: a status bar shows one line.
    QString render(const Values& values) const;

private:
    struct Piece {
        QString literal;
        std::optional<Field> field;
    };
    std::vector<Piece> m_pieces;
};

// Prints the template for the application's state: one line whenever it renders
// differently, flushed at once; an empty line while nothing plays. Changes that arrive
// together (a new song, its lyric and its first line) print once.
class StatusLinePrinter : public QObject {
    Q_OBJECT
public:
    // album answers the album of the song now playing; asked once per song.
    StatusLinePrinter(StatusTemplate format, AppDelegate& app, std::function<QString()> album);

private:
    void schedule();
    void printNow();
    StatusTemplate::Values values() const;

    StatusTemplate m_format;
    AppDelegate& m_app;
    std::function<QString()> m_albumOf;
    QString m_album;
    bool m_pending = false;
    std::optional<QString> m_printed;
};

} // namespace cli
