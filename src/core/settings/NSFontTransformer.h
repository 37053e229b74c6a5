#pragma once

#include "core/settings/PLSettingTransformerProtocol.h"

#include <QFont>
#include <QObject>

// A font's stored form: {"name": the face's full name, "size": point size as a double}. The
// full name is the family followed by the face's style ("DejaVu Sans Bold Oblique"), or the
// family alone for its regular face, which is also how values stored before faces were kept
// read back.
class NSFontTransformer : public QObject, public PLSettingTransformerProtocol {
    Q_OBJECT
    Q_INTERFACES(PLSettingTransformerProtocol)
public:
    Q_INVOKABLE NSFontTransformer() = default;

    // The full name of the face a font selects.
    static QString faceName(const QFont& font);
    // A font to its dictionary; anything else to an invalid value.
    static QVariant transformFont(const QVariant& value);
    // A dictionary naming an installed face (or family) to that font; anything else to the
    // system font at its standard size.
    static QVariant reverseTransformFont(const QVariant& value);
    static QFont systemFont(double pointSize = -1);

    QVariant transformedValue(const QVariant& value) const override { return transformFont(value); }
    QVariant reverseTransformedValue(const QVariant& value) const override
    {
        return reverseTransformFont(value);
    }
};
