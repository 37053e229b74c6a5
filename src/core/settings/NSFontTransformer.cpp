#include "core/settings/NSFontTransformer.h"

#include "core/foundation/DictionaryAdditions.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <optional>

namespace {

// A family the font database knows and the family name a stored value uses for it. The
// system font's family may be an alias (such as "Sans Serif") that the database does not
// list; its faces are those of the family it resolves to.
struct Family {
    QString name;
    QString database;
};

QList<Family> knownFamilies()
{
    QList<Family> families;
    for (const QString& family : QFontDatabase::families())
        families.append({family, family});
    const QFont system = NSFontTransformer::systemFont();
    if (!QFontDatabase::hasFamily(system.family()))
        families.append({system.family(), QFontInfo(system).family()});
    return families;
}

// The style a family's plain font resolves to ("Regular", "Book"): its faces' names are
// the family name alone.
QString regularStyle(const QString& family)
{
    return QFontInfo(QFont(family)).styleName();
}

// The font a stored name identifies: a family, or a family followed by one of its styles
// ("DejaVu Sans Bold Oblique"). The longest family that fits wins, so "DejaVu Sans Mono
// Bold" is not read as a style "Mono Bold" of "DejaVu Sans".
std::optional<QFont> fontForName(const QString& name, double size)
{
    std::optional<QFont> best;
    qsizetype bestLength = -1;
    for (const Family& family : knownFamilies()) {
        if (family.name.size() <= bestLength || !name.startsWith(family.name))
            continue;
        if (name.size() == family.name.size()) {
            best = QFont(family.name);
            bestLength = family.name.size();
            continue;
        }
        if (name[family.name.size()] != u' ')
            continue;
        const QString wanted = name.mid(family.name.size() + 1);
        for (const QString& style : QFontDatabase::styles(family.database)) {
            if (style.compare(wanted, Qt::CaseInsensitive) != 0)
                continue;
            // Weight and slant as the face has them (an oblique face is not "italic" to
            // the database), and the style name so that matching picks this very face.
            const QFont face = QFontDatabase::font(family.database, style, 12);
            QFont font(family.name);
            font.setStyleName(style);
            font.setWeight(face.weight());
            font.setStyle(face.style());
            best = font;
            bestLength = family.name.size();
            break;
        }
    }
    if (best)
        best->setPointSizeF(size);
    return best;
}

} // namespace

QFont NSFontTransformer::systemFont(double pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (pointSize > 0)
        font.setPointSizeF(pointSize);
    return font;
}

QString NSFontTransformer::faceName(const QFont& font)
{
    const QString style =
        font.styleName().isEmpty() ? QFontInfo(font).styleName() : font.styleName();
    if (style.isEmpty() || style == regularStyle(font.family()))
        return font.family();
    return font.family() + u' ' + style;
}

QVariant NSFontTransformer::transformFont(const QVariant& value)
{
    if (value.typeId() != QMetaType::QFont)
        return {};
    const QFont font = value.value<QFont>();
    return QVariantMap{{QStringLiteral("name"), faceName(font)},
                       {QStringLiteral("size"), font.pointSizeF()}};
}

QVariant NSFontTransformer::reverseTransformFont(const QVariant& value)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        const QString name = foundation::objectForKeyPL(map, QStringLiteral("name")).toString();
        bool ok = false;
        const double size = foundation::objectForKeyPL(map, QStringLiteral("size")).toDouble(&ok);
        if (!name.isEmpty() && ok && size > 0 && size < 10000) {
            if (const auto font = fontForName(name, size))
                return *font;
        }
    }
    return systemFont();
}
