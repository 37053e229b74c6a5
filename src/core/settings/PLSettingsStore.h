#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

// Typed access to the settings store (an INI file through QSettings). Values of the wrong
// type read as the type's empty value, never as an error: a hand-edited or damaged file must
// not stop the application, and the next synchronize writes proper values back.
class PLSettingsStore {
public:
    explicit PLSettingsStore(std::unique_ptr<QSettings> settings);
    // ~/.config/morvane/Versewick.ini (XDG_CONFIG_HOME honoured).
    static std::unique_ptr<QSettings> defaultSettings();

    bool contains(const QString& key) const;
    QVariant objectForKey(const QString& key) const;
    QByteArray dataForKey(const QString& key) const; // empty unless the value is a blob
    int integerForKey(const QString& key) const;
    float floatForKey(const QString& key) const;
    bool boolForKey(const QString& key) const;

    void setObject(const QVariant& value, const QString& key); // invalid value removes the key
    void setInteger(int value, const QString& key);
    void setFloat(float value, const QString& key);
    void setBool(bool value, const QString& key);

    void synchronize();
    QSettings& settings() { return *m_settings; }

    // The conversions used for stored values, also when a whole property set is read.
    static int toInteger(const QVariant& value);
    static float toFloat(const QVariant& value);
    static bool toBool(const QVariant& value);

private:
    std::unique_ptr<QSettings> m_settings;
};
