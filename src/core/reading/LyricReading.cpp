#include "core/reading/LyricReading.h"

#include "core/foundation/StringAdditions.h"
#include "core/lyric/LRCItem.h"
#include "core/lyric/Lyric.h"
#include "core/reading/Romanizer.h"
#include "core/reading/TranslationLines.h"
#include "core/text/PLTranslatorZh.h"

LyricReading::LyricReading()
    : m_readings(std::make_shared<const LineReadings>())
{
}

LyricReading::~LyricReading() = default;

LyricReading& LyricReading::shared()
{
    static LyricReading instance;
    return instance;
}

void LyricReading::setOptions(const ReadingOptions& options)
{
    if (options == m_options)
        return;
    m_options = options;
    m_lyric = nullptr; // computed again on the next request
    Q_EMIT changed();
}

std::shared_ptr<const LineReadings> LyricReading::readingsFor(const Lyric* lyric)
{
    if (!lyric) {
        m_lyric = nullptr;
        return std::make_shared<const LineReadings>();
    }
    if (lyric == m_lyric && lyric->lines() == m_lines && lyric->contents() == m_contents)
        return m_readings;
    // Made on first use: the converter's tables and ICU's rules cost a few milliseconds.
    if (!m_converter)
        m_converter = std::make_unique<PLTranslatorZh>(false);
    // ICU's transliterators take long to build: only when a lyric is to be romanised.
    if (!m_romanizer && m_options.secondary == ReadingOptions::Secondary::Romanization &&
        lyric->lines() <= kMaxRomanizedLines)
        m_romanizer = std::make_unique<Romanizer>();
    m_readings = std::make_shared<const LineReadings>(
        compute(*lyric, m_options, *m_converter, m_romanizer.get()));
    m_lyric = lyric;
    m_lines = lyric->lines();
    m_contents = lyric->contents();
    return m_readings;
}

LineReadings LyricReading::compute(const Lyric& lyric, const ReadingOptions& options,
                                   const PLTranslatorZh& converter, const Romanizer* romanizer)
{
    using Secondary = ReadingOptions::Secondary;
    using Script = ReadingOptions::Script;
    const auto shown = [&](const QString& text) {
        switch (options.script) {
        case Script::Simplified:
            return converter.translateToSimplifed(text);
        case Script::Traditional: {
            // The converter's table writes 一 as the numeral 壹 (as on a cheque); a lyric means
            // the plain one, which traditional script writes the same.
            QString traditional = converter.translateToTraditional(text);
            if (traditional.size() == text.size())
                for (qsizetype i = 0; i < text.size(); ++i)
                    if (text[i] == QChar(0x4E00))
                        traditional[i] = text[i];
            return traditional;
        }
        case Script::Original:
            break;
        }
        return text;
    };
    const int n = lyric.lines();
    const bool aided = n <= kMaxRomanizedLines;
    LineReadings r;
    r.text.resize(std::size_t(n));
    r.secondary.resize(std::size_t(n));
    // Translation lines never stand as lines of their own while something goes under each line:
    // the sung line is lit, not its translation.
    if (aided && options.secondary != Secondary::None) {
        r.owner = translation::owners(lyric);
    } else {
        r.owner.resize(std::size_t(n));
        for (int i = 0; i < n; ++i)
            r.owner[std::size_t(i)] = i;
    }
    for (int i = 0; i < n; ++i) {
        const LRCItem* item = lyric.lrcItemAtIndex(i);
        const QString content = item ? item->content() : QString();
        r.text[std::size_t(i)] = aided ? shown(content) : content;
        const int owner = r.owner[std::size_t(i)];
        if (owner != i) {
            // A translation line: its text goes under its line, one line each.
            if (options.secondary == Secondary::Translation && foundation::isNonEmpty(content)) {
                QString& under = r.secondary[std::size_t(owner)];
                under +=
                    (under.isEmpty() ? QString() : QStringLiteral("\n")) + shown(content.trimmed());
            }
        } else if (options.secondary == Secondary::Romanization && aided && romanizer) {
            r.secondary[std::size_t(i)] = romanizer->romanize(content);
        }
    }
    return r;
}
