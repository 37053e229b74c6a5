#pragma once

#include <QObject>

class AppState;

namespace cli {

// The controller's displays in a terminal: the lit line, the status and the song, one line
// each as they change (plain text, or one JSON object per line), flushed at once. It only
// observes the view model: windows and menus have nothing to show here.
class TerminalPrinter : public QObject {
    Q_OBJECT
public:
    explicit TerminalPrinter(bool json);
    // Prints what this state reports from now on.
    void watch(AppState& state);

private:
    void onChanged(const QString& name, const QVariant& value);
    void onSong(int kind, const QString& artist, const QString& title);
    void onLine(int index, const QString& text, double position);
    void print(const QByteArray& json, const QString& plain);

    bool m_json;
};

} // namespace cli
