#include "core/store/LyricTagBlock.h"

#include "core/foundation/DataAdditions.h"
#include "core/foundation/StringAdditions.h"
#include "core/lyric/Lyric.h"

namespace tagblock {

std::optional<QString> tagTextForLyric(const Lyric& lyric)
{
    const QString readable = lyric.contentsReadable();
    if (!foundation::isNonEmpty(lyric.contents()) || !foundation::isNonEmpty(readable))
        return std::nullopt;
    // A block that reading would refuse to inflate is never written.
    if (lyric.contents().toUtf8().size() > foundation::kMaxInflatedSize)
        return std::nullopt;
    const QString payload = foundation::zlibDeflateString(lyric.contents());
    if (payload.isNull())
        return std::nullopt;
    return readable + QString(kSpacerLineFeeds, u'\n') + QLatin1String(kNotice) +
           QLatin1String(kStartMarker) + payload + QLatin1String(kEndMarker);
}

std::optional<QString> lrcFromTagText(const QString& tagText)
{
    const qsizetype start = tagText.indexOf(QLatin1String(kStartMarker));
    const qsizetype end = tagText.indexOf(QLatin1String(kEndMarker));
    if (start < 0 || end < 0)
        return std::nullopt;
    const qsizetype payloadStart = start + qsizetype(sizeof kStartMarker - 1);
    if (end - payloadStart <= 0)
        return std::nullopt;
    const QString text =
        foundation::zlibInflateString(tagText.mid(payloadStart, end - payloadStart));
    if (!foundation::isNonEmpty(text))
        return std::nullopt;
    return text;
}

} // namespace tagblock
