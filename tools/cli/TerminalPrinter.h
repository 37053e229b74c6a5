#pragma once

#include "core/app/LyricPanelPort.h"
#include "core/app/LyricViewPort.h"
#include "core/app/SingleLinePort.h"
#include "core/app/StatusMenuPort.h"

#include <QObject>

class AppState;

namespace cli {

// The controller's displays in a terminal: the lit line, the status and the song, one line
// each as they change (plain text, or one JSON object per line), flushed at once. Windows
// and menus have nothing to show here.
class TerminalPrinter : public QObject,
                        public LyricViewPort,
                        public SingleLinePort,
                        public LyricPanelPort,
                        public StatusMenuPort {
    Q_OBJECT
public:
    explicit TerminalPrinter(bool json);
    // Prints what this state reports from now on.
    void watch(AppState& state);

    void setParser(Lyric*) override {}
    void updateTime(float) override {}
    void setInfo(const QString&) override {}
    void updateConfigs() override {}
    void setContent(const QString&) override {}
    void loadWindow() override {}
    void updateFromSettings() override {}
    WindowPort* window() override { return nullptr; }
    void setTitle(const QString&) override {}
    void orderFrontRegardless() override {}
    void close() override {}
    void setSourceTitle(const QString&) override {}
    void setToggleTitle(const QString&) override {}
    void setModeStreamOn(bool) override {}
    void setModeLineOn(bool) override {}

private:
    void onChanged(const QString& name, const QVariant& value);
    void onSong(int kind, const QString& artist, const QString& title);
    void onLine(int index, const QString& text, double position);
    void print(const QByteArray& json, const QString& plain);

    bool m_json;
};

} // namespace cli
