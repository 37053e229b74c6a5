#pragma once

#include <QString>

class LRCItem;
class Lyric;

// What the displays show for the lit line: the text of the line it is drawn with (a lit
// translation line shows its line) as it reads, and the smaller line under it. Both null
// when no line is lit.
struct ShownLine {
    QString text;
    QString secondary;
};

// With the shared readings of the lyric (see LyricReading::shared()).
ShownLine shownLine(const Lyric* lyric, const LRCItem* item, int index);
