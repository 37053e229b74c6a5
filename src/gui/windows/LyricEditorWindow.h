#pragma once

#include "core/editor/LyricEditorModel.h"
#include "core/publish/LrclibPublisher.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QPlainTextEdit;
class QProgressDialog;
class QPushButton;
class QStackedWidget;
class QTableWidget;

// The lyric editor: the lines with their times, stamped by tapping along (Space or "Tap"),
// stepped back (Backspace), shifted, edited as a table or as text, saved and published. All it
// knows of the application comes through its Host.
class LyricEditorWindow : public QWidget {
    Q_OBJECT
public:
    struct Host {
        std::function<double()> playTime; // seconds; never waits for a player
        // Answers false when the player cannot seek; never waits for it.
        std::function<void(double, std::function<void(bool)>)> seek;
        std::function<std::optional<QString>(QString)> save;        // a reason when it failed
        std::function<std::optional<LrclibPublisher::Song>()> song; // the song, for publishing
    };

    explicit LyricEditorWindow(Host host, QWidget* parent = nullptr);
    ~LyricEditorWindow() override;

    // Starts over on this text and song title ("Title - Artist", or empty).
    void open(const QString& text, const QString& songTitle);
    LyricEditorModel& model() { return m_model; }
    QTableWidget* table() const { return m_table; }
    QLabel* statusLabel() const { return m_status; }

    void tap();
    void stepBack();
    void shiftBy(double seconds);
    bool saveLyric();
    void publish();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void rebuild();
    void cellEdited(int row, int column);
    void toggleTextMode();
    void publishProgress(LrclibPublisher::Stage stage, quint64 hashes);
    void published(bool ok, const QString& message);

    Host m_host;
    LyricEditorModel m_model;
    QTableWidget* m_table = nullptr;
    QPlainTextEdit* m_text = nullptr;
    QStackedWidget* m_pages = nullptr;
    QLabel* m_song = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_textMode = nullptr;
    std::unique_ptr<LrclibPublisher> m_publisher;
    QProgressDialog* m_progress = nullptr; // child of this window
    bool m_rebuilding = false;
};
