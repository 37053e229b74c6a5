#include "AudioFixtures.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <taglib/apetag.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/unsynchronizedlyricsframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavpackfile.h>
#include <taglib/xiphcomment.h>

namespace {

TagLib::String str(const QString& s)
{
    return TagLib::String(s.toStdString(), TagLib::String::UTF8);
}

QByteArray local(const QString& path)
{
    return QFile::encodeName(path);
}

bool mp3Uslt(const QString& path, const QString& text)
{
    TagLib::MPEG::File f(local(path).constData());
    auto* frame = new TagLib::ID3v2::UnsynchronizedLyricsFrame(TagLib::String::UTF8);
    frame->setLanguage("eng");
    frame->setText(str(text));
    f.ID3v2Tag(true)->addFrame(frame);
    return f.save();
}

bool mp3Ape(const QString& path, const QString& text)
{
    TagLib::MPEG::File f(local(path).constData());
    f.APETag(true)->addValue("Lyrics", str(text));
    return f.save(TagLib::MPEG::File::AllTags, TagLib::File::StripNone);
}

template <typename File> bool xiph(const QString& path, const char* field, const QString& text)
{
    File f(local(path).constData());
    f.tag()->addField(field, str(text));
    return f.save();
}

bool flacLyrics(const QString& path, const QString& text)
{
    TagLib::FLAC::File f(local(path).constData());
    f.xiphComment(true)->addField("LYRICS", str(text));
    return f.save();
}

bool mp4Lyrics(const QString& path, const QString& text)
{
    TagLib::MP4::File f(local(path).constData());
    f.tag()->setItem("\251lyr", TagLib::StringList(str(text)));
    return f.save();
}

bool wavpackLyrics(const QString& path, const QString& text)
{
    TagLib::WavPack::File f(local(path).constData());
    f.APETag(true)->addValue("Lyrics", str(text));
    return f.save();
}

} // namespace

const QList<AudioFormat>& audioFormats()
{
    static const QList<AudioFormat> formats{
        {"Mp3Uslt", "mp3", "libmp3lame", mp3Uslt},
        {"Mp3Ape", "mp3", "libmp3lame", mp3Ape},
        {"FlacLyrics", "flac", "flac", flacLyrics},
        {"VorbisUnsynced", "ogg", "libvorbis",
         [](const QString& p, const QString& t) {
             return xiph<TagLib::Ogg::Vorbis::File>(p, "UNSYNCEDLYRICS", t);
         }},
        {"OpusLyrics", "opus", "libopus",
         [](const QString& p, const QString& t) {
             return xiph<TagLib::Ogg::Opus::File>(p, "LYRICS", t);
         }},
        {"Mp4Lyr", "m4a", "aac", mp4Lyrics},
        {"WavPackApe", "wv", "wavpack", wavpackLyrics},
    };
    return formats;
}

QString makeAudioFile(const AudioFormat& format, const QString& folder, const QString& base)
{
    // ffmpeg runs once per codec; each test gets a copy.
    static QTemporaryDir cache;
    const QString made =
        cache.filePath(QLatin1String(format.codec) + u'.' + QLatin1String(format.extension));
    if (!QFile::exists(made)) {
        QProcess ffmpeg;
        ffmpeg.start("ffmpeg", {"-hide_banner", "-loglevel", "error", "-y", "-f", "lavfi", "-i",
                                "sine=frequency=440:duration=0.5", "-c:a", format.codec, made});
        if (!ffmpeg.waitForFinished(30000) || ffmpeg.exitCode() != 0)
            return {};
    }
    const QString path = QDir(folder).filePath(base + u'.' + QLatin1String(format.extension));
    QFile::remove(path);
    if (!QFile::copy(made, path) ||
        !QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup))
        return {};
    return path;
}

bool addSyncedLyrics(const QString& path, const QList<std::pair<unsigned, QString>>& lines)
{
    TagLib::MPEG::File f(local(path).constData());
    auto* frame = new TagLib::ID3v2::SynchronizedLyricsFrame(TagLib::String::UTF8);
    frame->setTimestampFormat(TagLib::ID3v2::SynchronizedLyricsFrame::AbsoluteMilliseconds);
    frame->setType(TagLib::ID3v2::SynchronizedLyricsFrame::Lyrics);
    TagLib::ID3v2::SynchronizedLyricsFrame::SynchedTextList list;
    for (const auto& [ms, text] : lines)
        list.append(TagLib::ID3v2::SynchronizedLyricsFrame::SynchedText(ms, str(text)));
    frame->setSynchedText(list);
    f.ID3v2Tag(true)->addFrame(frame);
    return f.save();
}

bool isPlayableAudio(const QString& path)
{
    TagLib::FileRef ref(local(path).constData(), true);
    return !ref.isNull() && ref.audioProperties() && ref.audioProperties()->sampleRate() > 0;
}

bool setSongTags(const QString& path, const QString& artist, const QString& title)
{
    TagLib::FileRef ref(local(path).constData(), false);
    if (ref.isNull())
        return false;
    ref.tag()->setArtist(str(artist));
    ref.tag()->setTitle(str(title));
    return ref.save();
}
