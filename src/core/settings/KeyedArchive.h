#pragma once

#include <QByteArray>
#include <QVariant>

// A self-describing byte form for objects kept in the settings store as blobs: UTF-8 JSON
// naming the archived class, e.g. {"$archiver":"VersewickKeyedArchive","$version":1,
// "root":{"$class":"QColor","r":..,"g":..,"b":..,"a":..}}. An absent value archives as a
// null root. Anything unreadable unarchives as an invalid QVariant.
namespace KeyedArchive {
QByteArray archivedDataWithRootObject(const QVariant& value);
QVariant unarchiveObjectWithData(const QByteArray& data);
} // namespace KeyedArchive
