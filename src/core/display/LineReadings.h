#pragma once

#include <QString>

#include <vector>

// How each line of a lyric reads on the displays, computed once per lyric and setting: the text
// shown for it (the Chinese script converted, or the content itself), the smaller line shown
// under it, and the line it is drawn with: a translation line is folded under the line it
// translates and takes no row of its own. Empty: every line as its content, nothing under it.
struct LineReadings {
    std::vector<QString> text;
    std::vector<QString> secondary;
    std::vector<int> owner; // the line this one is drawn with: itself unless folded

    bool covers(int index) const { return index >= 0 && std::size_t(index) < owner.size(); }
    int ownerOf(int index) const { return covers(index) ? owner[std::size_t(index)] : index; }
    bool isFolded(int index) const { return ownerOf(index) != index; }
    QString textOf(int index, const QString& content) const
    {
        return covers(index) ? text[std::size_t(index)] : content;
    }
    QString secondaryOf(int index) const
    {
        return covers(index) ? secondary[std::size_t(index)] : QString();
    }
};
