#pragma once

#include "gui/display/SingleLineView.h"

#include <QObject>
#include <QPointer>
#include <QRect>

#include <memory>

class AppState;
class QSettings;
class QWidget;
class Settings;
class WindowFrameAutosave;

// Single-line mode: a borderless strip floating above the other windows, showing the line now
// sung. The user drags it anywhere; its place is kept under "frames/SingleLineWindowFrame".
class SingleLineModeController : public QObject {
    Q_OBJECT
public:
    static constexpr char kFrameName[] = "SingleLineWindowFrame";

    // settings: the application's settings, or null for AppSetting(); the frame is kept in
    // their store.
    explicit SingleLineModeController(Settings* settings = nullptr, QObject* parent = nullptr);
    ~SingleLineModeController() override;

    // The strip window, built on first use; never destroyed when hidden.
    QWidget* window();
    void loadWindow();
    bool isWindowLoaded() const { return m_window != nullptr; }
    SingleLineView* view() const { return m_view; }

    void setContent(const QString& text);
    // The facts the strip's karaoke fill follows (the lit line's word timing and the play
    // time), read on each content update; not owned.
    void followState(const AppState* state);
    void updateFromSettings();
    // A part of the window drawn over the line for a while (a notice); the window's shape takes
    // it in until it is set empty again.
    void setOverlay(const QRect& area);

    // A frameless, floating strip with the content rectangle's size, placed where it was
    // saved or, the first time, centred 200 above the bottom of the main screen.
    std::unique_ptr<QWidget> bordlessWindow(const QRect& contentRect);

private:
    void applyShape(const QRect& shown);
    Settings& settings() const;
    QSettings* store() const;

    Settings* m_settings;
    std::unique_ptr<QWidget> m_window;
    QPointer<SingleLineView> m_view;
    QPointer<const AppState> m_state;
    QRect m_overlay;
};
