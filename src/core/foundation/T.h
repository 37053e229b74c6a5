#pragma once

#include <QColor>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <optional>

// Small helpers for colours, relative times and file sizes.
class T {
public:
    // Red, green and blue on a 0-255 scale, alpha on 0-1.
    static QColor colorR(double r, double g, double b, double a = 1.0);
    static QColor colorWithHex(std::uint32_t rgb);
    // cssStyle: true, false, or nullopt to detect a leading "#". Invalid colour when the text
    // is shorter than three characters.
    static QColor colorHexFromString(const QString& text,
                                     std::optional<bool> cssStyle = std::nullopt);

    // "刚刚", "%d分钟前", "%d小时前", "%d天前", then "yy-MM-dd" (translated keys).
    static QString readableTime(const QDateTime& date,
                                const QDateTime& now = QDateTime::currentDateTime());
    static QString localizedFileSize(std::int64_t bytes);
};
