#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <QPushButton>

// A borderless, translucent, dark panel with a drawn title strip: the floating lyric panel.
// Its frame is painted into one picture, made again when the size or the title changes.
class HUDWindow : public QWidget {
    Q_OBJECT
public:
    static constexpr int kCloseSize = 13;

    explicit HUDWindow(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    QString title() const { return windowTitle(); }
    // Adds the close button at the title strip's left; it hides the panel.
    void addCloseWidget();
    QPushButton* closeWidget() const { return m_close; }
    // Changes the frame; with animate, each step repaints at once with a fitting frame.
    void setFrame(const QRect& frame, bool display, bool animate);
    bool forceDisplay() const { return m_forceDisplay; }
    const QPixmap& sizedHUDBackground() const { return m_background; }
    // Frames painted since the panel was made.
    int backgroundBuilds() const { return m_backgroundBuilds; }
    static QFont titleFont();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void windowDidResize();
    void rebuildBackground();

    bool m_forceDisplay = false;
    QPixmap m_background;
    QPointer<QPushButton> m_close;
    int m_backgroundBuilds = 0;
};
