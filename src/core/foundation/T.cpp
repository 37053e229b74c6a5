#include "core/foundation/T.h"

#include <QCoreApplication>

QColor T::colorR(double r, double g, double b, double a)
{
    return QColor::fromRgbF(static_cast<float>(r / 255.0), static_cast<float>(g / 255.0),
                            static_cast<float>(b / 255.0), static_cast<float>(a));
}

QColor T::colorWithHex(std::uint32_t rgb)
{
    return colorR((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

QColor T::colorHexFromString(const QString& text, std::optional<bool> cssStyle)
{
    if (text.size() < 3)
        return {};
    const bool css = cssStyle.value_or(text.startsWith(QLatin1Char('#')));
    QStringView rest(text);
    if (css)
        rest = rest.mid(1);
    // Read like a hexadecimal scanner: leading blanks, an optional 0x, then the digits.
    // No digits reads as 0; an overflow saturates.
    while (!rest.isEmpty() && rest.front().isSpace())
        rest = rest.mid(1);
    if (rest.size() > 2 && rest[0] == QLatin1Char('0') &&
        (rest[1] == QLatin1Char('x') || rest[1] == QLatin1Char('X')))
        rest = rest.mid(2);
    std::uint64_t value = 0;
    for (QChar c : rest) {
        const int digit = c.isDigit() && c.unicode() < 128 ? c.unicode() - '0'
                          : (c.toLower() >= QLatin1Char('a') && c.toLower() <= QLatin1Char('f'))
                              ? c.toLower().unicode() - 'a' + 10
                              : -1;
        if (digit < 0)
            break;
        value =
            std::min<std::uint64_t>(value * 16 + static_cast<std::uint64_t>(digit), 0xFFFFFFFFu);
    }
    return colorWithHex(static_cast<std::uint32_t>(value));
}

QString T::readableTime(const QDateTime& date, const QDateTime& now)
{
    const double d = static_cast<double>(now.msecsTo(date)) / 1000.0;
    auto tr = [](const char* key) { return QCoreApplication::translate("T", key); };
    // The translated text keeps "%d"; it is replaced rather than used as a format string.
    auto count = [&](const char* key, double n) {
        return tr(key).replace(QLatin1String("%d"), QString::number(static_cast<long long>(n)));
    };
    if (d >= -60)
        return QCoreApplication::translate("T", "刚刚");
    if (d >= -3600)
        return count(QT_TRANSLATE_NOOP("T", "%d分钟前"), -d / 60);
    if (d >= -86400)
        return count(QT_TRANSLATE_NOOP("T", "%d小时前"), -d / 3600);
    if (d >= -604800)
        return count(QT_TRANSLATE_NOOP("T", "%d天前"), -d / 86400);
    return date.toString(QStringLiteral("yy-MM-dd"));
}

QString T::localizedFileSize(std::int64_t bytes)
{
    constexpr std::int64_t KiB = 1LL << 10;
    constexpr std::int64_t MiB = 1LL << 20;
    constexpr std::int64_t GiB = 1LL << 30;
    const std::int64_t g = bytes / GiB;
    const std::int64_t m = (bytes % GiB) / MiB;
    const std::int64_t k = (bytes % MiB) / KiB;
    if (g > 0)
        return QString::asprintf("%d GB %d MB", static_cast<int>(g), static_cast<int>(m));
    if (m > 0) // whole megabytes, then the fraction with its own "0." (reads "30.50 MB")
        return QString::asprintf("%d%.2f MB", static_cast<int>(m), static_cast<double>(k) / 1024.0);
    return QString::asprintf("%d KB", static_cast<int>(k));
}
