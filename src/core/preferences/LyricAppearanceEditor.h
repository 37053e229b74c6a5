#pragma once

#include <QColor>
#include <QFont>
#include <QString>

class Settings;

// What the Appearance panel edits, without its widgets: the font texts, which of the two
// fonts a font choice changes, and the two lyric colours, which stay pending until apply().
class LyricAppearanceEditor {
public:
    explicit LyricAppearanceEditor(Settings& settings);

    // "<face name> <points>", the size rounded to a whole number: "DejaVu Sans Bold 14".
    static QString fontFieldText(const QFont& font);
    QString lyricFontText() const;
    QString singleLineFontText() const;

    // The pending colours start as the settings' and reach them only through apply().
    void reload();
    QColor pendingNormalColor() const { return m_normal; }
    QColor pendingHighlightColor() const { return m_highlight; }
    void setPendingNormalColor(const QColor& color) { m_normal = color; }
    void setPendingHighlightColor(const QColor& color) { m_highlight = color; }
    void apply();
    // The appearance defaults (fonts, colours, row padding, strip background); the display
    // mode and the other switches stay. Pending colours become the restored ones.
    void restoreDefaults();

    // A font choice edits the scrolling view's font (stream) or the single-line one; the
    // chosen font replaces only that one.
    void beginFontChoice(bool streamFont) { m_isModifyStreamFont = streamFont; }
    bool isModifyStreamFont() const { return m_isModifyStreamFont; }
    QFont fontBeingChosen() const;
    void changeFont(const QFont& font);

private:
    Settings& m_settings;
    QColor m_normal;
    QColor m_highlight;
    bool m_isModifyStreamFont = true;
};
