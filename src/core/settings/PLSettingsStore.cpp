#include "core/settings/PLSettingsStore.h"

#include <cmath>
#include <limits>

PLSettingsStore::PLSettingsStore(std::unique_ptr<QSettings> settings)
    : m_settings(std::move(settings))
{
}

std::unique_ptr<QSettings> PLSettingsStore::defaultSettings()
{
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("morvane"), QStringLiteral("Versewick"));
}

bool PLSettingsStore::contains(const QString& key) const
{
    return !key.isNull() && m_settings->contains(key);
}

QVariant PLSettingsStore::objectForKey(const QString& key) const
{
    return key.isNull() ? QVariant() : m_settings->value(key);
}

QByteArray PLSettingsStore::dataForKey(const QString& key) const
{
    const QVariant value = objectForKey(key);
    return value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
}

namespace {
double toNumber(const QVariant& value, bool* ok)
{
    *ok = false;
    switch (value.typeId()) {
    case QMetaType::Bool:
        *ok = true;
        return value.toBool() ? 1.0 : 0.0;
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString text = value.toString().trimmed().toLower();
        if (text == QLatin1String("true") || text == QLatin1String("yes")) {
            *ok = true;
            return 1.0;
        }
        if (text == QLatin1String("false") || text == QLatin1String("no")) {
            *ok = true;
            return 0.0;
        }
        const double number = text.toDouble(ok);
        return *ok && std::isfinite(number) ? number : (*ok = false, 0.0);
    }
    default: {
        if (!value.canConvert<double>())
            return 0.0;
        const double number = value.toDouble(ok);
        return *ok && std::isfinite(number) ? number : (*ok = false, 0.0);
    }
    }
}
} // namespace

int PLSettingsStore::toInteger(const QVariant& value)
{
    bool ok = false;
    const double number = toNumber(value, &ok);
    if (!ok)
        return 0;
    return static_cast<int>(std::clamp(std::trunc(number), double(std::numeric_limits<int>::min()),
                                       double(std::numeric_limits<int>::max())));
}

float PLSettingsStore::toFloat(const QVariant& value)
{
    bool ok = false;
    const double number = toNumber(value, &ok);
    if (!ok || std::fabs(number) > double(std::numeric_limits<float>::max()))
        return 0.0f;
    return static_cast<float>(number);
}

bool PLSettingsStore::toBool(const QVariant& value)
{
    bool ok = false;
    return toNumber(value, &ok) != 0.0 && ok;
}

int PLSettingsStore::integerForKey(const QString& key) const
{
    return toInteger(objectForKey(key));
}

float PLSettingsStore::floatForKey(const QString& key) const
{
    return toFloat(objectForKey(key));
}

bool PLSettingsStore::boolForKey(const QString& key) const
{
    return toBool(objectForKey(key));
}

void PLSettingsStore::setObject(const QVariant& value, const QString& key)
{
    if (key.isNull())
        return;
    if (!value.isValid() || value.isNull())
        m_settings->remove(key);
    else
        m_settings->setValue(key, value);
}

void PLSettingsStore::setInteger(int value, const QString& key)
{
    if (!key.isNull())
        m_settings->setValue(key, value);
}

void PLSettingsStore::setFloat(float value, const QString& key)
{
    if (!key.isNull())
        m_settings->setValue(key, double(value));
}

void PLSettingsStore::setBool(bool value, const QString& key)
{
    if (!key.isNull())
        m_settings->setValue(key, value);
}

void PLSettingsStore::synchronize()
{
    m_settings->sync();
}
