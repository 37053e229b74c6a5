#include "core/audiofile/AudioTagReader.h"

#include "core/audiofile/TagLyricText.h"
#include "core/foundation/RegularFile.h"
#include "core/foundation/SystemLog.h"

#include <QFile>

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/tag.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/tdebuglistener.h>
#include <taglib/tfilestream.h>
#include <taglib/tpropertymap.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/wavpackfile.h>

#include <memory>

#include <unistd.h>

namespace {

QString toQString(const TagLib::String& s)
{
    return QString::fromStdWString(s.toWString());
}

// The ID3v2 tag of the formats that may carry one; null otherwise.
TagLib::ID3v2::Tag* id3v2Of(TagLib::File* file)
{
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file))
        return mpeg->hasID3v2Tag() ? mpeg->ID3v2Tag() : nullptr;
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file))
        return flac->hasID3v2Tag() ? flac->ID3v2Tag() : nullptr;
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file))
        return wav->hasID3v2Tag() ? wav->ID3v2Tag() : nullptr;
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file))
        return aiff->hasID3v2Tag() ? aiff->tag() : nullptr;
    return nullptr;
}

QStringList syncedTexts(TagLib::ID3v2::Tag* tag)
{
    QStringList out;
    if (!tag)
        return out;
    for (TagLib::ID3v2::Frame* frame : tag->frameList("SYLT")) {
        const auto* sylt = dynamic_cast<TagLib::ID3v2::SynchronizedLyricsFrame*>(frame);
        // Times counted in MPEG frames cannot be turned into seconds without the stream.
        if (!sylt ||
            sylt->timestampFormat() != TagLib::ID3v2::SynchronizedLyricsFrame::AbsoluteMilliseconds)
            continue;
        QList<taglyrics::SyncedLine> lines;
        for (const auto& line : sylt->synchedText())
            lines.append({line.time, toQString(line.text)});
        const QString lrc = taglyrics::lrcFromSyncedLines(lines);
        if (!lrc.isEmpty())
            out << lrc;
    }
    return out;
}

// An MP3 shows only one of its tags as properties (ID3v2 first); its APE tag may hold the
// lyrics all the same.
TagLib::PropertyMap propertiesOf(TagLib::File* file)
{
    TagLib::PropertyMap properties = file->properties();
    auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file);
    if (mpeg && mpeg->hasAPETag() && mpeg->hasID3v2Tag()) {
        for (const auto& [key, values] : mpeg->APETag()->properties()) {
            if (!properties.contains(key))
                properties.insert(key, values);
        }
    }
    return properties;
}

QStringList textsOf(TagLib::File* file)
{
    QStringList out;
    if (!file || !file->isValid())
        return out;
    const TagLib::PropertyMap properties = propertiesOf(file);
    QStringList described;
    QStringList unsynced;
    for (const auto& [key, values] : properties) {
        QStringList* into = nullptr;
        if (key == "LYRICS")
            into = &out;
        else if (key.startsWith("LYRICS:"))
            into = &described;
        else if (key == "UNSYNCEDLYRICS")
            into = &unsynced;
        if (!into)
            continue;
        for (const TagLib::String& value : values)
            into->append(toQString(value));
    }
    return out + described + unsynced + syncedTexts(id3v2Of(file));
}

std::unique_ptr<TagLib::File> open(TagLib::IOStream* stream, AudioTagReader::Format format)
{
    using F = AudioTagReader::Format;
    const auto frames = TagLib::ID3v2::FrameFactory::instance();
    switch (format) {
    case F::Mpeg:
        return std::make_unique<TagLib::MPEG::File>(stream, frames, false);
    case F::Flac:
        return std::make_unique<TagLib::FLAC::File>(stream, frames, false);
    case F::OggVorbis:
        return std::make_unique<TagLib::Ogg::Vorbis::File>(stream, false);
    case F::Opus:
        return std::make_unique<TagLib::Ogg::Opus::File>(stream, false);
    case F::Mp4:
        return std::make_unique<TagLib::MP4::File>(stream, false);
    case F::Ape:
        return std::make_unique<TagLib::APE::File>(stream, false);
    case F::WavPack:
        return std::make_unique<TagLib::WavPack::File>(stream, false);
    }
    return nullptr;
}

// A descriptor opened and checked here, handed to TagLib (which closes it), under the file's
// own name so that TagLib still picks the format by the extension.
class CheckedStream : public TagLib::FileStream {
public:
    CheckedStream(int fd, const QByteArray& name)
        : TagLib::FileStream(fd, true)
        , m_name(name)
    {
    }
    TagLib::FileName name() const override { return m_name.constData(); }

private:
    QByteArray m_name;
};

class SilentListener : public TagLib::DebugListener {
public:
    void printMessage(const TagLib::String&) override {}
};

} // namespace

void AudioTagReader::setDiagnosticsEnabled(bool enabled)
{
    static SilentListener silent;
    TagLib::setDebugListener(enabled ? nullptr : &silent);
}

namespace {

// Runs read on the file opened by TagLib, or answers fallback when it cannot be opened.
// TagLib is never handed a path: it would open a pipe or a device and wait on it.
template <typename T, typename Read>
T withFile(const QString& path, bool audioProperties, T fallback, Read read)
{
    foundation::OpenedFile opened =
        foundation::openRegularFile(path, AudioTagReader::kMaxFileBytes);
    if (!opened.fd.isOpen()) {
        if (!opened.missing)
            foundation::systemLog(
                QStringLiteral("The audio file %1 is not read: %2").arg(path, opened.reason));
        return fallback;
    }
    const int fd = opened.fd.release();
    CheckedStream stream(fd, QFile::encodeName(path));
    if (!stream.isOpen()) {
        ::close(fd);
        return fallback;
    }
    TagLib::FileRef ref(&stream, audioProperties);
    return read(ref.file());
}

} // namespace

QStringList AudioTagReader::lyricTexts(const QString& path)
{
    return withFile(path, false, QStringList(), [](TagLib::File* file) { return textsOf(file); });
}

std::optional<AudioTagReader::Song> AudioTagReader::song(const QString& path)
{
    return withFile(
        path, true, std::optional<Song>(), [](TagLib::File* file) -> std::optional<Song> {
            const TagLib::AudioProperties* audio = file ? file->audioProperties() : nullptr;
            if (!file || !file->isValid() || !audio || audio->sampleRate() <= 0)
                return std::nullopt;
            const TagLib::Tag* tag = file->tag();
            if (!tag)
                return Song{};
            return Song{toQString(tag->artist()).trimmed(), toQString(tag->title()).trimmed(),
                        toQString(tag->album()).trimmed()};
        });
}

QStringList AudioTagReader::lyricTextsFromBytes(const QByteArray& bytes, Format format)
{
    if (bytes.size() > kMaxFileBytes)
        return {};
    TagLib::ByteVectorStream stream(TagLib::ByteVector(bytes.constData(), uint(bytes.size())));
    const std::unique_ptr<TagLib::File> file = open(&stream, format);
    return textsOf(file.get());
}
