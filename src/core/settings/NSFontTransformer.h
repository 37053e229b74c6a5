#pragma once

#include "settings/PLSettingTransformerProtocol.h"

#include <QFont>
#include <QObject>

// A font's stored form: {"name": family, "size": point size as a double}.
class NSFontTransformer : public QObject, public PLSettingTransformerProtocol {
    Q_OBJECT
    Q_INTERFACES(PLSettingTransformerProtocol)
public:
    Q_INVOKABLE NSFontTransformer() = default;

    // A font to its dictionary; anything else to an invalid value.
    static QVariant transformFont(const QVariant& value);
    // A dictionary naming an installed font to that font; anything else to the system font
    // at its standard size.
    static QVariant reverseTransformFont(const QVariant& value);
    static QFont systemFont(double pointSize = -1);

    QVariant transformedValue(const QVariant& value) const override { return transformFont(value); }
    QVariant reverseTransformedValue(const QVariant& value) const override
    {
        return reverseTransformFont(value);
    }
};
