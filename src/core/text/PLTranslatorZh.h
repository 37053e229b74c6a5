#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

// Converts Chinese text character by character between simplified, traditional and "Mars"
// script through three parallel tables. A character is looked up in one table, then in a
// second; the first position it stands at decides, and its counterpart in the target table
// replaces it. Anything not in the tables passes through, so the output has as many UTF-16
// units as the input.
class PLTranslatorZh {
public:
    static constexpr int kTableLength = 4792;

    explicit PLTranslatorZh(bool marsSupport = true);

    QString translateToSimplifed(const QString& text) const;
    QString translateToTraditional(const QString& text) const;
    // The input itself when the converter was made without Mars support.
    QString translateToMars(const QString& text) const;

    const QString& charListS() const { return m_charListS; }
    const QString& charListT() const { return m_charListT; }
    const QString& charListMars() const { return m_charListMars; }
    bool hasMarsSupport() const { return !m_charListMars.isNull(); }

private:
    // For every UTF-16 unit, its first position in one table, or kNone.
    class Index {
    public:
        static constexpr std::uint16_t kNone = 0xFFFF;
        Index() = default;
        explicit Index(const QString& table);
        std::uint16_t find(char16_t unit) const
        {
            return m_positions.empty() ? kNone : m_positions[unit];
        }

    private:
        std::vector<std::uint16_t> m_positions;
    };

    QString convert(const QString& text, const Index& first, const Index* second,
                    const QString& target) const;

    QString m_charListS;
    QString m_charListT;
    QString m_charListMars;
    Index m_indexS;
    Index m_indexT;
    Index m_indexMars;
};
