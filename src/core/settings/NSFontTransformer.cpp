#include "settings/NSFontTransformer.h"

#include "foundation/DictionaryAdditions.h"

#include <QFontDatabase>
#include <QFontInfo>

QFont NSFontTransformer::systemFont(double pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (pointSize > 0)
        font.setPointSizeF(pointSize);
    return font;
}

QVariant NSFontTransformer::transformFont(const QVariant& value)
{
    if (value.typeId() != QMetaType::QFont)
        return {};
    const QFont font = value.value<QFont>();
    return QVariantMap{{QStringLiteral("name"), font.family()},
                       {QStringLiteral("size"), font.pointSizeF()}};
}

QVariant NSFontTransformer::reverseTransformFont(const QVariant& value)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        const QString name = foundation::objectForKeyPL(map, QStringLiteral("name")).toString();
        bool ok = false;
        const double size = foundation::objectForKeyPL(map, QStringLiteral("size")).toDouble(&ok);
        // The system font's family may be an alias (such as "Sans Serif") that the font
        // database does not list; it is a font all the same.
        const bool known = QFontDatabase::hasFamily(name) || name == systemFont().family();
        if (!name.isEmpty() && ok && size > 0 && size < 10000 && known) {
            QFont font(name);
            font.setPointSizeF(size);
            return font;
        }
    }
    return systemFont();
}
