#pragma once

#include "core/display/LineReadings.h"
#include "core/reading/ReadingOptions.h"

#include <QObject>

#include <memory>

class Lyric;
class PLTranslatorZh;
class Romanizer;

// The readings of the installed lyric for the displays, computed once per lyric and setting and
// shared by every display: asking again for the same lyric text costs a comparison.
class LyricReading : public QObject {
    Q_OBJECT
public:
    // Romanising costs about 0.1 ms a line, and finding translations and converting the script
    // grow with the lyric: a longer lyric (a hostile or generated one; no song has that many
    // lines) gets no reading aids rather than holding the displays up.
    static constexpr int kMaxRomanizedLines = 2000;

    LyricReading();
    ~LyricReading() override;

    // The process's one instance, which the displays and the controller share.
    static LyricReading& shared();

    const ReadingOptions& options() const { return m_options; }
    // Signals changed() when the options differ, so that open displays lay out again.
    void setOptions(const ReadingOptions& options);

    // Never null; empty readings for no lyric.
    std::shared_ptr<const LineReadings> readingsFor(const Lyric* lyric);

    // The computation itself, uncached; without a romanizer no line is romanised.
    static LineReadings compute(const Lyric& lyric, const ReadingOptions& options,
                                const PLTranslatorZh& converter, const Romanizer* romanizer);

Q_SIGNALS:
    void changed();

private:
    ReadingOptions m_options;
    std::unique_ptr<PLTranslatorZh> m_converter;
    std::unique_ptr<Romanizer> m_romanizer;
    std::shared_ptr<const LineReadings> m_readings;
    const Lyric* m_lyric = nullptr;
    QString m_contents;
    int m_lines = -1;
};
