#pragma once

#include <QIcon>

// The toolbar images of the preferences panels, drawn so they look the same with or without
// an icon theme and stay sharp at any scale.
class PreferenceIcons {
public:
    static QIcon general();    // a gear
    static QIcon appearance(); // a palette
    static QIcon lyric();      // a note beside lines of text
};
