#pragma once

#include <QColor>
#include <QToolButton>

class QColorDialog;

// A colour picker button: shows its colour as a swatch and opens a colour dialog. A colour the
// user confirms there becomes the well's colour and is announced; nothing else is changed.
class ColorWell : public QToolButton {
    Q_OBJECT
public:
    explicit ColorWell(QWidget* parent = nullptr);

    QColor color() const { return m_color; }
    // An invalid colour shows an empty swatch.
    void setColor(const QColor& color);
    void openDialog();
    QColorDialog* dialog() const { return m_dialog; }

Q_SIGNALS:
    void colorPicked(const QColor& color);

private:
    void updateSwatch();

    QColor m_color;
    QColorDialog* m_dialog = nullptr; // owned by this (Qt parent), made on first use
};
