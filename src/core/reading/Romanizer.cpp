#include "core/reading/Romanizer.h"

#include <QList>
#include <QStringView>

#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace {

std::unique_ptr<icu::Transliterator> make(const char* id)
{
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> t(icu::Transliterator::createInstance(
        icu::UnicodeString::fromUTF8(id), UTRANS_FORWARD, status));
    return U_SUCCESS(status) ? std::move(t) : nullptr; // an ICU without the rules: no reading
}

bool endsWithSpace(const QString& s)
{
    return !s.isEmpty() && s.back().isSpace();
}

} // namespace

struct Romanizer::Transliterators {
    std::unique_ptr<icu::Transliterator> han = make("Han-Latin");
    std::unique_ptr<icu::Transliterator> hiragana = make("Hiragana-Latin");
    std::unique_ptr<icu::Transliterator> katakana = make("Katakana-Latin");
    std::unique_ptr<icu::Transliterator> hangul = make("Hangul-Latin");
};

Romanizer::Romanizer()
    : m_icu(std::make_unique<Transliterators>())
{
}

Romanizer::~Romanizer() = default;

Romanizer::Script Romanizer::scriptOf(char32_t c)
{
    if (c >= 0x3040 && c <= 0x309F)
        return Hiragana;
    if ((c >= 0x30A0 && c <= 0x30FF) || (c >= 0x31F0 && c <= 0x31FF) ||
        (c >= 0xFF66 && c <= 0xFF9F))
        return Katakana;
    if ((c >= 0x1100 && c <= 0x11FF) || (c >= 0x3130 && c <= 0x318F) ||
        (c >= 0xAC00 && c <= 0xD7AF))
        return Hangul;
    if ((c >= 0x3400 && c <= 0x4DBF) || (c >= 0x4E00 && c <= 0x9FFF) ||
        (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x20000 && c <= 0x3FFFF))
        return Han;
    return Other;
}

QString Romanizer::transliterate(Script script, const QString& run) const
{
    icu::Transliterator* t = script == Han        ? m_icu->han.get()
                             : script == Hiragana ? m_icu->hiragana.get()
                             : script == Katakana ? m_icu->katakana.get()
                             : script == Hangul   ? m_icu->hangul.get()
                                                  : nullptr;
    if (!t)
        return run;
    icu::UnicodeString text(reinterpret_cast<const UChar*>(run.utf16()), int32_t(run.size()));
    t->transliterate(text);
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

QString Romanizer::romanize(const QString& line) const
{
    const QList<uint> points = line.toUcs4();
    bool kana = false, readable = false;
    for (const uint c : points) {
        const Script s = scriptOf(c);
        kana = kana || s == Hiragana || s == Katakana;
        readable = readable || s != Other;
    }
    if (!readable)
        return {};
    // Runs of one script; each transliterated run is set off from its neighbours by a space.
    QString out;
    bool lastRead = false;
    for (qsizetype i = 0; i < points.size();) {
        Script s = scriptOf(points[i]);
        if (s == Han && kana)
            s = Other; // kanji: ICU reads them only as Mandarin
        qsizetype end = i + 1;
        while (end < points.size()) {
            Script next = scriptOf(points[end]);
            if (next == Han && kana)
                next = Other;
            if (next != s)
                break;
            ++end;
        }
        const QString run =
            QString::fromUcs4(reinterpret_cast<const char32_t*>(&points[i]), end - i);
        const bool read = s != Other;
        const QString piece = read ? transliterate(s, run) : run;
        if ((read || lastRead) && !out.isEmpty() && !endsWithSpace(out) && !piece.isEmpty() &&
            !piece.front().isSpace() && !piece.front().isPunct())
            out += QLatin1Char(' ');
        out += piece;
        lastRead = read;
        i = end;
    }
    out = out.simplified();
    return out == line.simplified() ? QString() : out;
}
