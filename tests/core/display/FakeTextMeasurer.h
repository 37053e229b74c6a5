#pragma once

#include "core/display/TextMeasurer.h"

#include <algorithm>
#include <cmath>

// Every character is 10 wide, every line 20 high: exact numbers for the row arithmetic.
class FakeTextMeasurer : public TextMeasurer {
public:
    double charWidth = 10;
    double line = 20;
    mutable int calls = 0;

    QSizeF sizeWithFont(const QString& text, const QFont&, QSizeF box) const override
    {
        ++calls;
        if (text.isEmpty() || box.width() <= 0 || box.height() <= 0)
            return {};
        const double natural = text.size() * charWidth;
        const double lines = std::ceil(natural / box.width());
        const double fitting = std::max(1.0, std::min(lines, std::floor(box.height() / line)));
        return {std::min(natural, box.width()), std::min(fitting * line, box.height())};
    }
    double lineHeight(const QFont&) const override { return line; }
};
