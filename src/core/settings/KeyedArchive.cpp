#include "core/settings/KeyedArchive.h"

#include <QColor>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
const QString kArchiver = QStringLiteral("VersewickKeyedArchive");
constexpr int kVersion = 1;
} // namespace

QByteArray KeyedArchive::archivedDataWithRootObject(const QVariant& value)
{
    QJsonValue root = QJsonValue::Null;
    if (value.typeId() == QMetaType::QColor && value.value<QColor>().isValid()) {
        const QColor c = value.value<QColor>().toRgb();
        root = QJsonObject{{"$class", "QColor"},
                           {"r", c.redF()},
                           {"g", c.greenF()},
                           {"b", c.blueF()},
                           {"a", c.alphaF()}};
    } else if (value.typeId() == QMetaType::QString) {
        root = QJsonObject{{"$class", "QString"}, {"value", value.toString()}};
    }
    const QJsonObject archive{{"$archiver", kArchiver}, {"$version", kVersion}, {"root", root}};
    return QJsonDocument(archive).toJson(QJsonDocument::Compact);
}

QVariant KeyedArchive::unarchiveObjectWithData(const QByteArray& data)
{
    const QJsonObject archive = QJsonDocument::fromJson(data).object();
    if (archive.value("$archiver").toString() != kArchiver)
        return {};
    const QJsonObject root = archive.value("root").toObject();
    const QString cls = root.value("$class").toString();
    if (cls == QLatin1String("QColor")) {
        auto component = [&](const char* name) {
            return float(std::clamp(root.value(QLatin1String(name)).toDouble(), 0.0, 1.0));
        };
        return QColor::fromRgbF(component("r"), component("g"), component("b"), component("a"));
    }
    if (cls == QLatin1String("QString"))
        return root.value("value").toString();
    return {};
}
