#pragma once

#include <QWidget>

class ColorWell;
class QFormLayout;
class QLineEdit;
class QPushButton;

// The Appearance panel's controls: the two font fields with their choose buttons, the two
// colour wells, and Default and Apply. The controller connects them.
class AppearancePanel : public QWidget {
    Q_OBJECT
public:
    explicit AppearancePanel(QWidget* parent = nullptr);

    QLineEdit* fontField() const { return m_fontField; }
    QLineEdit* fontFieldLineMode() const { return m_fontFieldLineMode; }
    QPushButton* chooseFontButton() const { return m_chooseFont; }
    QPushButton* chooseFontLineModeButton() const { return m_chooseFontLineMode; }
    ColorWell* colorWellNormal() const { return m_colorWellNormal; }
    ColorWell* colorWellHighlight() const { return m_colorWellHighlight; }
    QPushButton* defaultButton() const { return m_default; }
    QPushButton* applyButton() const { return m_apply; }
    // Where switches of this panel go, under the colours.
    QFormLayout* form() const { return m_form; }

private:
    QLineEdit* fontRow(const QString& label, QPushButton** choose);

    QFormLayout* m_form = nullptr;
    QLineEdit* m_fontField = nullptr;
    QLineEdit* m_fontFieldLineMode = nullptr;
    QPushButton* m_chooseFont = nullptr;
    QPushButton* m_chooseFontLineMode = nullptr;
    ColorWell* m_colorWellNormal = nullptr;
    ColorWell* m_colorWellHighlight = nullptr;
    QPushButton* m_default = nullptr;
    QPushButton* m_apply = nullptr;
};
