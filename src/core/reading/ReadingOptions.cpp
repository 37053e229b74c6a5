#include "core/reading/ReadingOptions.h"

#include "core/settings/PLSettingsStore.h"

QString ReadingOptions::name(Secondary value)
{
    switch (value) {
    case Secondary::None:
        return QStringLiteral("none");
    case Secondary::Romanization:
        return QStringLiteral("romanization");
    case Secondary::Translation:
        break;
    }
    return QStringLiteral("translation");
}

QString ReadingOptions::name(Script value)
{
    switch (value) {
    case Script::Simplified:
        return QStringLiteral("simplified");
    case Script::Traditional:
        return QStringLiteral("traditional");
    case Script::Original:
        break;
    }
    return QStringLiteral("original");
}

ReadingOptions::Secondary ReadingOptions::secondaryFromName(const QString& name)
{
    if (name == QLatin1String("none"))
        return Secondary::None;
    if (name == QLatin1String("romanization"))
        return Secondary::Romanization;
    return Secondary::Translation;
}

ReadingOptions::Script ReadingOptions::scriptFromName(const QString& name)
{
    if (name == QLatin1String("simplified"))
        return Script::Simplified;
    if (name == QLatin1String("traditional"))
        return Script::Traditional;
    return Script::Original;
}

ReadingOptions ReadingOptions::load(const PLSettingsStore& store)
{
    ReadingOptions options;
    options.secondary =
        secondaryFromName(store.objectForKey(QLatin1String(kSecondaryKey)).toString());
    options.script = scriptFromName(store.objectForKey(QLatin1String(kScriptKey)).toString());
    return options;
}

void ReadingOptions::save(PLSettingsStore& store) const
{
    store.setObject(name(secondary), QLatin1String(kSecondaryKey));
    store.setObject(name(script), QLatin1String(kScriptKey));
}
