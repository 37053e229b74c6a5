#include "core/settings/PLSettings.h"

#include "core/settings/KeyedArchive.h"

#include <limits>
#include <mutex>
#include <stdexcept>

namespace {
// The process-wide registry: the list published last.
struct Registry {
    std::mutex mutex;
    std::shared_ptr<const PLSettingPropertyList> list =
        std::make_shared<const PLSettingPropertyList>();
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

void publish(std::shared_ptr<const PLSettingPropertyList> list)
{
    const std::lock_guard lock(registry().mutex);
    registry().list = std::move(list);
}

void appendProperty(PLSettingProperty property)
{
    const std::lock_guard lock(registry().mutex);
    auto next = std::make_shared<PLSettingPropertyList>(*registry().list);
    next->push_back(std::move(property));
    registry().list = std::move(next);
}
} // namespace

PLSettings::PLSettings(std::unique_ptr<QSettings> store, QObject* parent)
    : PLSettings(std::move(store), registeredProperties(), parent)
{
}

PLSettings::PLSettings(std::unique_ptr<QSettings> store,
                       std::shared_ptr<const PLSettingPropertyList> properties, QObject* parent)
    : QObject(parent)
    , m_properties(properties ? std::move(properties)
                              : std::make_shared<const PLSettingPropertyList>())
    , m_store(std::move(store))
{
}

PLSettings::~PLSettings() = default;

std::shared_ptr<const PLSettingPropertyList> PLSettings::initializeClass(void (*setupRoutes)())
{
    publish(std::make_shared<const PLSettingPropertyList>());
    if (setupRoutes)
        setupRoutes();
    return registeredProperties();
}

std::shared_ptr<const PLSettingPropertyList> PLSettings::registeredProperties()
{
    const std::lock_guard lock(registry().mutex);
    return registry().list;
}

void PLSettings::setupProperty(const QString& name, const QString& key, PLSettingType type,
                               bool archive2Data)
{
    appendProperty(PLSettingProperty::propertyByName(name, key, type, archive2Data));
}

void PLSettings::setupProperty(const QString& name, PLSettingType type)
{
    setupProperty(name, name, type, false);
}

void PLSettings::setupPropertyWithArchivedType(const QString& name)
{
    setupProperty(name, name, PLSettingType::Object, true);
}

void PLSettings::setupPropertyWithTransformer(const QString& name,
                                              const QMetaObject& transformerClass)
{
    appendProperty(PLSettingProperty::propertyByName(name, name, transformerClass));
}

void PLSettings::init()
{
    m_isDynamicProperties = true;
    loadDefaults();
    // The count stops at the largest integer instead of wrapping round.
    const int count = initedCount();
    m_store.setInteger(count < std::numeric_limits<int>::max() ? count + 1 : count,
                       QLatin1String(kInitCountKey));
}

QDateTime PLSettings::installedAt() const
{
    return m_store.objectForKey(QLatin1String(kInitDateKey)).toDateTime();
}

int PLSettings::initedCount() const
{
    return m_store.integerForKey(QLatin1String(kInitCountKey));
}

bool PLSettings::checkIfDataAvailable() const
{
    return m_store.contains(stringForFirstLoadCheck());
}

void PLSettings::loadDefaults()
{
    if (checkIfDataAvailable()) {
        m_isFirstLaunched = false;
        const int stored = m_store.integerForKey(stringForFirstLoadCheck());
        if (stored != version())
            migrateFromOldVersion(stored);
    } else {
        m_isFirstLaunched = true;
        setupDefaults();
        m_store.setObject(QDateTime::currentDateTime(), QLatin1String(kInitDateKey));
    }
    markAsLoaded();
}

void PLSettings::markAsLoaded()
{
    m_store.setInteger(version(), stringForFirstLoadCheck());
}

void PLSettings::synchronize()
{
    if (!m_isDynamicProperties)
        _writePropertiesToDefaults();
    m_store.synchronize();
}

void PLSettings::reset()
{
    m_store.synchronize();
    setupDefaults();
    markAsLoaded();
}

void PLSettings::setIsDynamicProperties(bool dynamic)
{
    m_isDynamicProperties = dynamic;
    if (dynamic)
        return;
    if (m_isFirstLaunched)
        _writePropertiesToDefaults();
    else
        _readPropertiesFromDefaults();
}

void PLSettings::_readPropertiesFromDefaults()
{
    for (const PLSettingProperty& p : *m_properties) {
        QVariant value;
        if (p.archiveToData) {
            value = KeyedArchive::unarchiveObjectWithData(m_store.dataForKey(p.key));
        } else if (p.isNeedTransform) {
            value = p.reverseTransformedValue(m_store.objectForKey(p.key));
        } else {
            value = m_store.objectForKey(p.key);
            // Numbers are unboxed into the field's type; text that is no number reads as 0.
            if (value.isValid()) {
                switch (p.type) {
                case PLSettingType::Int:
                    value = PLSettingsStore::toInteger(value);
                    break;
                case PLSettingType::Float:
                    value = PLSettingsStore::toFloat(value);
                    break;
                case PLSettingType::Bool:
                    value = PLSettingsStore::toBool(value);
                    break;
                case PLSettingType::Object:
                    break;
                }
            }
        }
        if (value.isValid() && !value.isNull())
            setProperty(p.getter.toUtf8().constData(), value);
    }
}

void PLSettings::_writePropertiesToDefaults()
{
    for (const PLSettingProperty& p : *m_properties) {
        const QVariant value = property(p.getter.toUtf8().constData());
        if (p.archiveToData)
            m_store.setObject(KeyedArchive::archivedDataWithRootObject(value), p.key);
        else if (p.isNeedTransform)
            m_store.setObject(p.transformedValue(value), p.key);
        else
            m_store.setObject(value, p.key);
    }
}

bool PLSettings::isSetterProperty(const QString& name)
{
    return name.endsWith(u':');
}

const PLSettingProperty* PLSettings::propertyForGetter(const QString& name) const
{
    for (const PLSettingProperty& p : *m_properties) {
        if (p.getter == name)
            return &p;
    }
    return nullptr;
}

const PLSettingProperty* PLSettings::propertyForSetter(const QString& name) const
{
    for (const PLSettingProperty& p : *m_properties) {
        if (p.setter == name)
            return &p;
    }
    return nullptr;
}

namespace {
QString keyOf(const PLSettingProperty* p)
{
    return p ? p->key : QString();
}
} // namespace

int PLSettings::getIntValueFor(const QString& getter) const
{
    return m_store.integerForKey(keyOf(propertyForGetter(getter)));
}

float PLSettings::getFloatValueFor(const QString& getter) const
{
    return m_store.floatForKey(keyOf(propertyForGetter(getter)));
}

bool PLSettings::getBOOLValueFor(const QString& getter) const
{
    return m_store.boolForKey(keyOf(propertyForGetter(getter)));
}

QVariant PLSettings::getObjectValueFor(const QString& getter) const
{
    const PLSettingProperty* p = propertyForGetter(getter);
    if (p && p->archiveToData) {
        const QByteArray data = m_store.dataForKey(p->key);
        return data.isEmpty() ? QVariant() : KeyedArchive::unarchiveObjectWithData(data);
    }
    // A transformed property is kept in its object form on this path.
    return m_store.objectForKey(keyOf(p));
}

void PLSettings::setIntValue(int value, const QString& setter)
{
    m_store.setInteger(value, keyOf(propertyForSetter(setter)));
}

void PLSettings::setFloatValue(float value, const QString& setter)
{
    m_store.setFloat(value, keyOf(propertyForSetter(setter)));
}

void PLSettings::setBoolValue(bool value, const QString& setter)
{
    m_store.setBool(value, keyOf(propertyForSetter(setter)));
}

void PLSettings::setObjectValue(const QVariant& value, const QString& setter)
{
    const PLSettingProperty* p = propertyForSetter(setter);
    if (p && p->archiveToData)
        m_store.setObject(KeyedArchive::archivedDataWithRootObject(value), p->key);
    else
        m_store.setObject(value, keyOf(p));
}

bool PLSettings::respondsToSelector(const QString& selector) const
{
    return propertyForGetter(selector) || propertyForSetter(selector);
}

QString PLSettings::methodSignatureForSelector(const QString& selector) const
{
    for (const PLSettingProperty& p : *m_properties) {
        if (p.getter == selector)
            return p.signatureForGetter();
        if (p.setter == selector)
            return p.signatureForSetter();
    }
    return {};
}

QVariant PLSettings::forwardInvocation(const QString& selector, const QVariant& argument)
{
    bool matched = false;
    QVariant result;
    // Every descriptor is visited; a later match repeats the call, as the routing is defined.
    for (const PLSettingProperty& p : *m_properties) {
        if (p.getter == selector) {
            matched = true;
            switch (p.type) {
            case PLSettingType::Int:
                result = getIntValueFor(selector);
                break;
            case PLSettingType::Float:
                result = getFloatValueFor(selector);
                break;
            case PLSettingType::Bool:
                result = getBOOLValueFor(selector);
                break;
            case PLSettingType::Object:
                result = getObjectValueFor(selector);
                break;
            }
        } else if (p.setter == selector) {
            matched = true;
            switch (p.type) {
            case PLSettingType::Int:
                setIntValue(PLSettingsStore::toInteger(argument), selector);
                break;
            case PLSettingType::Float:
                setFloatValue(PLSettingsStore::toFloat(argument), selector);
                break;
            case PLSettingType::Bool:
                setBoolValue(PLSettingsStore::toBool(argument), selector);
                break;
            case PLSettingType::Object:
                setObjectValue(argument, selector);
                break;
            }
        }
    }
    if (!matched)
        throw std::invalid_argument("unrecognized selector sent to settings: " +
                                    selector.toStdString());
    return result;
}
