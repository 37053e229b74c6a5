#include "CliSupport.h"
#include "StoreCommand.h"

#include "core/settings/NSFontTransformer.h"
#include "core/settings/Settings.h"

#include <QColor>
#include <QJsonObject>

namespace cli {
namespace {

QJsonValue jsonSetting(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
        return value.toInt();
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QColor: {
        const QColor c = value.value<QColor>();
        if (!c.isValid())
            return QJsonValue::Null;
        return c.alpha() == 255 ? c.name(QColor::HexRgb) : c.name(QColor::HexArgb);
    }
    case QMetaType::QFont:
        // As stored: the face's full name and the size.
        return QJsonObject::fromVariantMap(NSFontTransformer::transformFont(value).toMap());
    default:
        return QJsonValue::Null;
    }
}

int show(QStringList args)
{
    if (!args.isEmpty())
        usageError(QStringLiteral("settings show takes no arguments."));
    Settings& settings = AppSetting();
    JsonObject json;
    for (const PLSettingProperty& p : settings.properties())
        json.add(p.getter, jsonSetting(settings.property(p.getter.toUtf8().constData())));
    PLSettingsStore& store = settings.store();
    json.add(settings.stringForFirstLoadCheck(),
             store.integerForKey(settings.stringForFirstLoadCheck()))
        .add(QLatin1String(PLSettings::kInitDateKey),
             settings.installedAt().isValid()
                 ? QJsonValue(settings.installedAt().toString(Qt::ISODate))
                 : QJsonValue())
        .add(QLatin1String(PLSettings::kInitCountKey), settings.initedCount());
    writeJsonLine(json.bytes());
    return Ok;
}

const Help kSettingsHelp{
    QStringLiteral("settings show"),
    QStringLiteral("Starts the settings as the application does (a first start writes the\n"
                   "defaults; every start counts) and prints every registered setting and the\n"
                   "keys \"PLSettings\", \"kSettingInitDate\" and \"PLSettingInitCount\" as one "
                   "JSON object.\n"
                   "Fonts print as {\"name\", \"size\"} (name: the face's full name), colours as "
                   "\"#rrggbb\" (\"#aarrggbb\" "
                   "when not opaque).\n"
                   "The settings file is $XDG_CONFIG_HOME/morvane/Versewick.ini.")};

} // namespace

int runSettingsCommand(const QStringList& args)
{
    static const SubCommand subs[] = {{"show", kSettingsHelp, show}};
    return dispatch(QStringLiteral("settings"), kSettingsHelp, subs, args);
}

} // namespace cli
