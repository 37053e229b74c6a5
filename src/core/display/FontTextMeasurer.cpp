#include "core/display/FontTextMeasurer.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

QSizeF FontTextMeasurer::sizeWithFont(const QString& text, const QFont& font,
                                      QSizeF constraint) const
{
    if (text.isEmpty() || constraint.width() <= 0 || constraint.height() <= 0)
        return {};
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setCacheEnabled(false);
    double width = 0;
    double height = 0;
    layout.beginLayout();
    for (;;) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(constraint.width());
        const double bottom = height + line.height();
        if (bottom > constraint.height()) {
            if (height == 0) { // the first line always counts, cut to the box
                height = constraint.height();
                width = std::min(line.naturalTextWidth(), constraint.width());
            }
            break;
        }
        height = bottom;
        width = std::max(width, std::min(line.naturalTextWidth(), constraint.width()));
    }
    layout.endLayout();
    return {std::ceil(width), std::ceil(height)};
}

double FontTextMeasurer::lineHeight(const QFont& font) const
{
    return QFontMetricsF(font).height();
}

const FontTextMeasurer& FontTextMeasurer::shared()
{
    static const FontTextMeasurer instance;
    return instance;
}
