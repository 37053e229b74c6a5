#pragma once

#include <QDBusConnection>

// One application per session: the first owns com.morvane.Versewick; a later one only asks
// it to show its lyric window.
namespace SingleInstance {

// True when another application owns the name on the bus; it was asked to show its lyric
// window (toggled only when hidden, so a shown window stays shown).
bool showRunningInstance(QDBusConnection bus = QDBusConnection::sessionBus());

} // namespace SingleInstance
