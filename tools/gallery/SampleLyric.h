#pragma once

#include <QString>

// A lyric for screenshots and measurements: Latin and CJK lines, a blank line, a long line
// that wraps, lines about four seconds apart.
QString sampleLyric();
// A plain lyric of `lines` lines, `gap` seconds apart.
QString generatedLyric(int lines, double gap);
