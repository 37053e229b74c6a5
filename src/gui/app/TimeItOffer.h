#pragma once

#include <QObject>
#include <QPointer>
#include <QPushButton>

class AppDelegate;
class QWidget;

// The "Time it..." button at the foot of the lyric panel: shown while the lyric on display is
// a plain one, it opens the editor on it.
class TimeItOffer : public QObject {
    Q_OBJECT
public:
    // The button is a child of panel (not owned here); the offer follows delegate's state.
    TimeItOffer(QWidget& panel, AppDelegate& delegate);
    QPushButton* button() const { return m_button; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void place();

    QPointer<QWidget> m_panel;
    QPointer<AppDelegate> m_delegate;
    QPointer<QPushButton> m_button;
};
