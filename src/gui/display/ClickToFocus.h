#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// A floating window that never takes the keyboard focus on its own (showing or updating it
// leaves the player focused) takes it when the user clicks it, so its keys work, and gives up
// the right to it as soon as another window is activated or it is hidden.
class ClickToFocus : public QObject {
    Q_OBJECT
public:
    // Install after the window's other mouse filters: it sees the press first and passes it on.
    explicit ClickToFocus(QWidget* window);

    // Whether the window may take the focus now (a click has let it).
    bool isAccepting() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void accept(bool on);

    QPointer<QWidget> m_window;
};
