#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>

// What the displays need to know about text: how much room a string takes when wrapped at
// words inside a box, and a font's line height. The GUI answers with the real fonts; tests
// answer with exact made-up numbers.
class TextMeasurer {
public:
    virtual ~TextMeasurer() = default;
    // The size of text drawn with font, wrapped at words (a word longer than the width breaks
    // anywhere) inside constraint. The height never exceeds the constraint's: only whole lines
    // that fit are counted, and at least the first line, cut to the constraint.
    virtual QSizeF sizeWithFont(const QString& text, const QFont& font,
                                QSizeF constraint) const = 0;
    virtual double lineHeight(const QFont& font) const = 0;
};
