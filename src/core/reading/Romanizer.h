#pragma once

#include <QString>

#include <memory>

// The Latin reading of a line in Han, Kana or Hangul, with ICU's transliterators: Mandarin in
// pinyin with its tone marks, kana in Hepburn, Hangul in Revised Romanization. Latin and other
// text stays as it is. ICU has no Japanese readings of kanji, so in a line with kana the kanji
// are kept rather than read as Mandarin. The transliterators are made once per object.
class Romanizer {
public:
    Romanizer();
    ~Romanizer();
    Romanizer(const Romanizer&) = delete;
    Romanizer& operator=(const Romanizer&) = delete;

    // The reading, or "" when the line has nothing to read (no Han, Kana or Hangul).
    QString romanize(const QString& line) const;

private:
    enum Script { Other, Han, Hiragana, Katakana, Hangul };
    static Script scriptOf(char32_t c);
    QString transliterate(Script script, const QString& run) const;

    struct Transliterators; // ICU's, one per script
    std::unique_ptr<Transliterators> m_icu;
};
