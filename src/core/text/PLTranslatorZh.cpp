#include "core/text/PLTranslatorZh.h"

#include "core/text/ZhTables.h"

PLTranslatorZh::Index::Index(const QString& table)
    : m_positions(0x10000, kNone)
{
    // Walk backwards so that the first occurrence is the one that stays.
    for (qsizetype i = table.size(); i-- > 0;)
        m_positions[table.at(i).unicode()] = static_cast<std::uint16_t>(i);
}

PLTranslatorZh::PLTranslatorZh(bool marsSupport)
    : m_charListS(QString::fromUtf8(zh::simplifiedTable()))
    , m_charListT(QString::fromUtf8(zh::traditionalTable()))
    , m_indexS(m_charListS)
    , m_indexT(m_charListT)
{
    if (marsSupport) {
        m_charListMars = QString::fromUtf8(zh::marsTable());
        m_indexMars = Index(m_charListMars);
    }
}

QString PLTranslatorZh::convert(const QString& text, const Index& first, const Index* second,
                                const QString& target) const
{
    QString result(text.size(), Qt::Uninitialized);
    QChar* out = result.data();
    for (qsizetype k = 0; k < text.size(); ++k) {
        const char16_t unit = text.at(k).unicode();
        std::uint16_t position = first.find(unit);
        if (position == Index::kNone && second)
            position = second->find(unit);
        out[k] = position == Index::kNone ? QChar(unit) : target.at(position);
    }
    return result;
}

QString PLTranslatorZh::translateToSimplifed(const QString& text) const
{
    return convert(text, m_indexT, hasMarsSupport() ? &m_indexMars : nullptr, m_charListS);
}

QString PLTranslatorZh::translateToTraditional(const QString& text) const
{
    return convert(text, m_indexS, hasMarsSupport() ? &m_indexMars : nullptr, m_charListT);
}

QString PLTranslatorZh::translateToMars(const QString& text) const
{
    if (!hasMarsSupport())
        return text;
    return convert(text, m_indexS, &m_indexT, m_charListMars);
}
