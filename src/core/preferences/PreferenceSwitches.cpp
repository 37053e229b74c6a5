#include "core/preferences/PreferenceSwitches.h"

#include <QMetaProperty>

namespace {

int booleanProperty(const QObject& object, const char* name)
{
    const QMetaObject* meta = object.metaObject();
    const int index = meta->indexOfProperty(name);
    if (index < 0 || meta->property(index).metaType().id() != QMetaType::Bool)
        return -1;
    return index;
}

} // namespace

const std::vector<PreferenceSwitch>& PreferenceSwitches::all()
{
    static const std::vector<PreferenceSwitch> switches{
        {"traditionchinese", QT_TRANSLATE_NOOP("PreferenceController", "Traditional Chinese"), 0},
        {"launchAndQuitWithiTunes",
         QT_TRANSLATE_NOOP("PreferenceController", "Launch and quit with iTunes"), 0},
        {"isShowChangeSongNotify",
         QT_TRANSLATE_NOOP("PreferenceController", "Show a notification when the song changes"), 0},
        {"isShowSingleLineBG",
         QT_TRANSLATE_NOOP("PreferenceController", "Show the single-line background"), 1},
        {"isSaveLRCtoDisk",
         QT_TRANSLATE_NOOP("PreferenceController", "Save downloaded lyrics to the lyrics folder"),
         2},
        {"isSaveLRCtoTrackTags",
         QT_TRANSLATE_NOOP("PreferenceController", "Save downloaded lyrics to the track's tags"),
         2},
    };
    return switches;
}

std::vector<PreferenceSwitch> PreferenceSwitches::onPanel(int panel)
{
    std::vector<PreferenceSwitch> result;
    for (const PreferenceSwitch& s : all()) {
        if (s.panel == panel)
            result.push_back(s);
    }
    return result;
}

bool PreferenceSwitches::value(const QObject& settings, const char* property)
{
    const int index = booleanProperty(settings, property);
    return index >= 0 && settings.metaObject()->property(index).read(&settings).toBool();
}

void PreferenceSwitches::setValue(QObject& settings, const char* property, bool on)
{
    const int index = booleanProperty(settings, property);
    if (index >= 0)
        settings.metaObject()->property(index).write(&settings, on);
}
