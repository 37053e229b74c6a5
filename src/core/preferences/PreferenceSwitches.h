#pragma once

#include <QObject>

#include <vector>

// The on/off settings the preferences window offers, each bound to its setting by property
// name, with the panel it sits on and its label (an untranslated source text; translate it in
// the context "PreferenceController").
struct PreferenceSwitch {
    const char* property;
    const char* label;
    int panel; // 0 General, 1 Appearance, 2 Lyric
};

class PreferenceSwitches {
public:
    static const std::vector<PreferenceSwitch>& all();
    static std::vector<PreferenceSwitch> onPanel(int panel);

    // Read and write a boolean property by name; an unknown name reads as off and writes
    // nothing.
    static bool value(const QObject& settings, const char* property);
    static void setValue(QObject& settings, const char* property, bool on);
};
