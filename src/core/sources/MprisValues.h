#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <optional>

// Values read from an MPRIS player, checked before use: a player may send any type, strings
// of any size and numbers of any magnitude. Whatever does not fit reads as absent.
namespace mpris {

inline constexpr char kBusPrefix[] = "org.mpris.MediaPlayer2.";
inline constexpr char kObjectPath[] = "/org/mpris/MediaPlayer2";
inline constexpr char kRootInterface[] = "org.mpris.MediaPlayer2";
inline constexpr char kPlayerInterface[] = "org.mpris.MediaPlayer2.Player";
inline constexpr qsizetype kMaxStringLength = 8192;
// About 115 days: any position or length past it is nonsense.
inline constexpr qint64 kMaxMicroseconds = 10'000'000'000'000LL;

// The value inside any number of D-Bus variant wrappers.
QVariant unwrap(const QVariant& value);
// A string of at most kMaxStringLength characters; null otherwise.
QString string(const QVariant& value);
// A list of strings ("as") or one string, joined with ", "; null when neither.
QString stringOrList(const QVariant& value);
// An object path or a string naming one (mpris:trackid).
QString objectPath(const QVariant& value);
// Microseconds (an integer, or a finite double) in [0, kMaxMicroseconds].
std::optional<qint64> microseconds(const QVariant& value);
// A playback rate: finite, above 0 and at most 100.
std::optional<double> rate(const QVariant& value);
// A dictionary "a{sv}", also when it arrives still marshalled; empty otherwise.
QVariantMap dictionary(const QVariant& value);

} // namespace mpris
