#pragma once

#include <QLabel>

// One of the song-change panel's texts: a label on a translucent plate that never takes the
// keyboard. It can also draw itself into another painter, so the plate can be scaled whole.
class LayerTextField : public QLabel {
    Q_OBJECT
public:
    explicit LayerTextField(QWidget* parent = nullptr);

    // Fits the field to its text, never wider than maximumWidth().
    void sizeToFit();
    // Draws the text at the field's place in its parent's coordinates.
    void drawInto(QPainter& painter) const;
};
