#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTimer>

#include <functional>

class QLabel;
class QWidget;

// The strip's notice of a new offset ("Offset +0.3 s"), in place of the sung line for 2 s; a later
// nudge replaces it and starts the 2 s again. Nothing shows while the strip is not on screen.
class OffsetNotice : public QObject {
    Q_OBJECT
public:
    static constexpr int kShownMs = 2000;

    // strip: the strip's window when it is built, else null.
    explicit OffsetNotice(std::function<QWidget*()> strip, QObject* parent = nullptr);
    ~OffsetNotice() override;

    void show(double seconds);
    // The label while it shows; null otherwise.
    QLabel* label() const;

Q_SIGNALS:
    // Where the notice is drawn in the strip's window; empty once it is gone. The window's shape
    // must take it in, or the notice is cut to the line's shape.
    void areaChanged(const QRect& area);

private:
    std::function<QWidget*()> m_strip;
    QPointer<QLabel> m_label; // a child of the strip's window
    QTimer m_hide;
};
