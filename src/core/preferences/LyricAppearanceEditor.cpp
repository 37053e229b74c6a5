#include "core/preferences/LyricAppearanceEditor.h"

#include "core/settings/NSFontTransformer.h"
#include "core/settings/Settings.h"

#include <QFontInfo>

LyricAppearanceEditor::LyricAppearanceEditor(Settings& settings)
    : m_settings(settings)
{
    reload();
}

QString LyricAppearanceEditor::fontFieldText(const QFont& font)
{
    const double size = font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
    return QStringLiteral("%1 %2").arg(NSFontTransformer::faceName(font)).arg(size, 0, 'f', 0);
}

QString LyricAppearanceEditor::lyricFontText() const
{
    return fontFieldText(m_settings.lyricFont());
}

QString LyricAppearanceEditor::singleLineFontText() const
{
    return fontFieldText(m_settings.fontSingleLine());
}

void LyricAppearanceEditor::reload()
{
    m_normal = m_settings.lyricNormalColor();
    m_highlight = m_settings.lyricHighlightColor();
}

void LyricAppearanceEditor::apply()
{
    m_settings.setLyricNormalColor(m_normal);
    m_settings.setLyricHighlightColor(m_highlight);
}

void LyricAppearanceEditor::restoreDefaults()
{
    m_settings.restoreLyricViewDefaults();
    reload();
}

QFont LyricAppearanceEditor::fontBeingChosen() const
{
    return m_isModifyStreamFont ? m_settings.lyricFont() : m_settings.fontSingleLine();
}

void LyricAppearanceEditor::changeFont(const QFont& font)
{
    if (m_isModifyStreamFont)
        m_settings.setLyricFont(font);
    else
        m_settings.setFontSingleLine(font);
}
