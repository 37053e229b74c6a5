#pragma once

#include <QWidget>

class LayerTextField;

// The song-change panel: a borderless, translucent window above the others that never takes
// the keyboard. It paints the rounded plate (a dark gradient) scaled about its centre; while
// the scale is not 1 it also paints its fields itself, scaled with the plate.
class NotificationWindow : public QWidget {
    Q_OBJECT
public:
    explicit NotificationWindow(QWidget* parent = nullptr);

    double plateScale() const { return m_scale; }
    void setPlateScale(double scale);
    void setFields(const QList<LayerTextField*>& fields) { m_fields = fields; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    double m_scale = 1.0;
    QList<LayerTextField*> m_fields;
};
