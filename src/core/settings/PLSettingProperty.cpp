#include "core/settings/PLSettingProperty.h"

#include "core/settings/PLSettingTransformerProtocol.h"

namespace {
const char* typeLetter(PLSettingType type)
{
    static const char* const letters[] = {"i", "f", "c", "@"};
    return letters[static_cast<int>(type)];
}
} // namespace

PLSettingProperty PLSettingProperty::propertyByName(const QString& name, const QString& key,
                                                    PLSettingType type, bool archive2Data)
{
    PLSettingProperty property;
    property.getter = name;
    property.setter = setterNameSEL(name);
    property.key = key;
    property.type = type;
    property.archiveToData = archive2Data;
    return property;
}

PLSettingProperty PLSettingProperty::propertyByName(const QString& name, const QString& key,
                                                    const QMetaObject& transformClass)
{
    std::shared_ptr<QObject> instance(transformClass.newInstance());
    if (!instance || !qobject_cast<PLSettingTransformerProtocol*>(instance.get()))
        throw PLSettingsException(QStringLiteral(
            "Transformer Class have to conforms to Protocol PLSettingTransformerProtocol"));
    PLSettingProperty property = propertyByName(name, key, PLSettingType::Object, false);
    property.isNeedTransform = true;
    property.transformer = std::move(instance);
    return property;
}

QString PLSettingProperty::setterNameSEL(const QString& name)
{
    if (name.isEmpty())
        return QStringLiteral("set:");
    const char32_t first = name.at(0).unicode();
    return QStringLiteral("set") + QString(QChar(QChar::toTitleCase(first))) + name.mid(1) + u':';
}

QString PLSettingProperty::signatureForGetter() const
{
    return QString::fromLatin1(typeLetter(type)) + QStringLiteral("^v^c^@");
}

QString PLSettingProperty::signatureForSetter() const
{
    return QStringLiteral("v^v^c") + QString::fromLatin1(typeLetter(type)) + u'@';
}

const PLSettingTransformerProtocol* PLSettingProperty::protocol() const
{
    return transformer ? qobject_cast<PLSettingTransformerProtocol*>(transformer.get()) : nullptr;
}

QVariant PLSettingProperty::transformedValue(const QVariant& value) const
{
    const auto* p = protocol();
    return p ? p->transformedValue(value) : QVariant();
}

QVariant PLSettingProperty::reverseTransformedValue(const QVariant& value) const
{
    const auto* p = protocol();
    return p ? p->reverseTransformedValue(value) : QVariant();
}
