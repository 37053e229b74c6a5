#pragma once

#include <QWidget>

// A stand-in for the desktop behind the floating windows: the left half light, the right half
// dark, with a few shapes, so one picture shows the displays on both.
class Backdrop : public QWidget {
    Q_OBJECT
public:
    enum class Kind { Split, Light, Dark };
    explicit Backdrop(Kind kind, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kind m_kind;
};
