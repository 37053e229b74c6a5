#pragma once

#include "core/settings/PLSettingProperty.h"
#include "core/settings/PLSettingsStore.h"

#include <QDateTime>
#include <QObject>

#include <memory>
#include <vector>

using PLSettingPropertyList = std::vector<PLSettingProperty>;

// A typed registry of persistent settings over the settings store. A subclass registers its
// properties (setupRoutes), assigns defaults (setupDefaults), names a version and migrates.
//
// Dynamic mode: reads and writes go straight to the store, routed by accessor name
// ("volume", "setVolume:") to typed operations. Cached mode: the subclass's Qt properties hold
// the values; entering it loads them (or, on a first launch, writes the defaults out), and
// synchronize() writes them all back.
class PLSettings : public QObject {
    Q_OBJECT
public:
    // Serves the properties registered for the process at this moment.
    explicit PLSettings(std::unique_ptr<QSettings> store, QObject* parent = nullptr);
    ~PLSettings() override;

    // Registry: one list for the process, replaced when a settings class is initialised. A
    // published list never changes (registering one more property publishes a new list), so
    // a settings object keeps the list it was created with, whatever is initialised later.
    static std::shared_ptr<const PLSettingPropertyList> initializeClass(void (*setupRoutes)());
    static std::shared_ptr<const PLSettingPropertyList> registeredProperties();
    static void setupProperty(const QString& name, const QString& key, PLSettingType type,
                              bool archive2Data);
    static void setupProperty(const QString& name, PLSettingType type);
    static void setupPropertyWithArchivedType(const QString& name);
    static void setupPropertyWithTransformer(const QString& name,
                                             const QMetaObject& transformerClass);

    // Two-phase initialisation, so that the subclass's overrides take part: dynamic mode,
    // load or seed the store, count the launch.
    void init();
    virtual void setupDefaults() {}
    virtual int version() const { return 1; }
    virtual void migrateFromOldVersion(int /*storedVersion*/) {}

    QString stringForFirstLoadCheck() const { return QStringLiteral("PLSettings"); }
    QDateTime installedAt() const;
    int initedCount() const;
    void synchronize();
    void reset();
    void setIsDynamicProperties(bool dynamic);
    bool isDynamicProperties() const { return m_isDynamicProperties; }
    bool isFirstLaunched() const { return m_isFirstLaunched; }

    void loadDefaults();
    void markAsLoaded();
    bool checkIfDataAvailable() const;

    // This object's properties, in registration order.
    const PLSettingPropertyList& properties() const { return *m_properties; }
    static bool isSetterProperty(const QString& name);
    const PLSettingProperty* propertyForGetter(const QString& name) const;
    const PLSettingProperty* propertyForSetter(const QString& name) const;

    int getIntValueFor(const QString& getter) const;
    float getFloatValueFor(const QString& getter) const;
    bool getBOOLValueFor(const QString& getter) const;
    QVariant getObjectValueFor(const QString& getter) const;
    void setIntValue(int value, const QString& setter);
    void setFloatValue(float value, const QString& setter);
    void setBoolValue(bool value, const QString& setter);
    void setObjectValue(const QVariant& value, const QString& setter);

    // Dynamic dispatch by accessor name. respondsToSelector answers only for registered
    // getter and setter names, never for the class's own operations.
    bool respondsToSelector(const QString& selector) const;
    QString methodSignatureForSelector(const QString& selector) const; // null when unknown
    // Routes a getter (answers the value) or a setter (argument = new value). Throws
    // std::invalid_argument for a name no property has.
    QVariant forwardInvocation(const QString& selector, const QVariant& argument = {});

    PLSettingsStore& store() { return m_store; }
    static constexpr char kInitDateKey[] = "kSettingInitDate";
    static constexpr char kInitCountKey[] = "PLSettingInitCount";

protected:
    // Serves the given properties: a class that initialised its registry once keeps using it.
    PLSettings(std::unique_ptr<QSettings> store,
               std::shared_ptr<const PLSettingPropertyList> properties, QObject* parent = nullptr);
    void _readPropertiesFromDefaults();
    void _writePropertiesToDefaults();

private:
    std::shared_ptr<const PLSettingPropertyList> m_properties;
    PLSettingsStore m_store;
    bool m_isDynamicProperties = true;
    bool m_isFirstLaunched = false;
};
