#include "core/app/AppState.h"

void AppState::setSong(const QString& artist, const QString& title)
{
    const QString a = artist.isNull() ? QStringLiteral("") : artist;
    const QString t = title.isNull() ? QStringLiteral("") : title;
    if (a == m_artist && t == m_title)
        return;
    const bool artistChanged = a != m_artist, titleChanged = t != m_title;
    m_artist = a;
    m_title = t;
    if (artistChanged)
        Q_EMIT changed(QStringLiteral("Artist"), a);
    if (titleChanged)
        Q_EMIT changed(QStringLiteral("Title"), t);
    Q_EMIT songChanged(m_sourceKind, a, t);
}

void AppState::setStatus(const QString& v)
{
    assign(m_status, v.isNull() ? QStringLiteral("") : v, "Status");
}

void AppState::showLyric(Lyric* lyric)
{
    m_shownLyric = lyric;
    Q_EMIT lyricShown(lyric);
}

void AppState::showInfo(const QString& info)
{
    Q_EMIT infoShown(info);
    setStatus(info);
    setLineText(info);
}

void AppState::setToggleTitle(const QString& title)
{
    if (title == m_toggleTitle)
        return;
    m_toggleTitle = title;
    Q_EMIT menuChanged();
}

void AppState::setModeItems(bool streamOn, bool lineOn)
{
    if (streamOn == m_streamItemOn && lineOn == m_lineItemOn)
        return;
    m_streamItemOn = streamOn;
    m_lineItemOn = lineOn;
    Q_EMIT menuChanged();
}

void AppState::setLine(int index, const QString& text, double position)
{
    const QString t = text.isNull() ? QStringLiteral("") : text;
    m_position = position;
    Q_EMIT stripTextShown(text);
    if (index == m_lineIndex && t == m_line)
        return;
    const bool indexChanged = index != m_lineIndex, textChanged = t != m_line;
    m_lineIndex = index;
    m_line = t;
    if (indexChanged)
        Q_EMIT changed(QStringLiteral("LineIndex"), index);
    if (textChanged)
        Q_EMIT changed(QStringLiteral("Line"), t);
    Q_EMIT lineChanged(index, t, position);
}

void AppState::setLyricLoaded(bool v)
{
    assign(m_lyricLoaded, v, "LyricLoaded");
    if (v)
        return;
    setLyricOrigin(None);
    setOffset(0.0);
    // The property only: lineChanged is for lines lit by the lyric.
    assign(m_lineIndex, -1, "LineIndex");
    setSecondaryLine({});
}

double AppState::lineProgress() const
{
    if (!m_lyricLoaded || m_lineIndex < 0)
        return -1;
    return karaoke::lineProgress(m_litLine, m_position);
}
