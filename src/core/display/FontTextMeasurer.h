#pragma once

#include "core/display/TextMeasurer.h"

// Measures with the fonts installed on the system (QTextLayout): needs a QGuiApplication.
class FontTextMeasurer : public TextMeasurer {
public:
    QSizeF sizeWithFont(const QString& text, const QFont& font, QSizeF constraint) const override;
    double lineHeight(const QFont& font) const override;

    // The shared instance the widgets use.
    static const FontTextMeasurer& shared();
};
