#include "core/audiofile/AudioTagWriter.h"

#include "core/audiofile/AudioTagReader.h"
#include "core/foundation/RegularFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/tpropertymap.h>
#include <taglib/wavpackproperties.h>

#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

namespace {

TagLib::String toTagString(const QString& s)
{
    const QByteArray utf8 = s.toUtf8();
    return TagLib::String(std::string(utf8.constData(), std::size_t(utf8.size())),
                          TagLib::String::UTF8);
}

bool copyInto(QFile& from, QFile& to)
{
    char buffer[1 << 16];
    for (;;) {
        const qint64 n = from.read(buffer, sizeof buffer);
        if (n < 0)
            return false;
        if (n == 0)
            return true;
        if (to.write(buffer, n) != n)
            return false;
    }
}

// What identifies the audio: a copy must still read as the same stream. Null when TagLib
// finds no audio (a damaged or unknown file is never written).
std::optional<std::tuple<int, int, int>> audioOf(const QString& path)
{
    const QByteArray local = QFile::encodeName(path);
    TagLib::FileRef ref(local.constData(), true, TagLib::AudioProperties::Accurate);
    const TagLib::AudioProperties* audio = ref.isNull() ? nullptr : ref.audioProperties();
    if (!audio || audio->sampleRate() <= 0 || audio->channels() <= 0)
        return std::nullopt;
    // TagLib takes any WavPack block header; the stream versions that exist are 0x402-0x410.
    const auto* wavpack = dynamic_cast<const TagLib::WavPack::Properties*>(audio);
    if (wavpack && (wavpack->version() < 0x402 || wavpack->version() > 0x410))
        return std::nullopt;
    return std::tuple{audio->sampleRate(), audio->channels(), audio->lengthInMilliseconds()};
}

bool setLyrics(const QString& path, const QString& text)
{
    const QByteArray local = QFile::encodeName(path);
    TagLib::FileRef ref(local.constData(), false);
    TagLib::File* file = ref.file();
    if (!file || !file->isValid() || file->readOnly())
        return false;
    TagLib::PropertyMap properties = file->properties();
    properties.replace("LYRICS", TagLib::StringList(toTagString(text)));
    const TagLib::PropertyMap refused = file->setProperties(properties);
    if (refused.contains("LYRICS"))
        return false;
    return file->save();
}

// The copy gets the original's owner and group where the user may give them (root, or a group
// the user is in); otherwise it stays the user's, which is all an unprivileged rename can do.
void keepOwner(int originalFd, int copyFd)
{
    struct stat st {};
    if (::fstat(originalFd, &st) != 0)
        return;
    if (::fchown(copyFd, st.st_uid, st.st_gid) == 0)
        return;
    [[maybe_unused]] const int groupOnly = ::fchown(copyFd, uid_t(-1), st.st_gid);
}

// The rename itself reaches the disk only when the folder is synced.
void syncFolder(const QString& folder)
{
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

AudioTagWriter::Result AudioTagWriter::writability(const QString& path)
{
    // A link is followed: its target is replaced, the link stays. A file or folder without its
    // owner's write permission counts as read-only also for root, who could write it anyway.
    const QFileInfo original(QFileInfo(path).canonicalFilePath());
    if (!original.exists() || !original.isFile())
        return Result::Missing;
    if (!original.isWritable() || !(original.permissions() & QFile::WriteOwner))
        return Result::ReadOnlyFile;
    const QFileInfo folder(original.absolutePath());
    if (!folder.isWritable() || !(folder.permissions() & QFile::WriteOwner))
        return Result::ReadOnlyFolder;
    if (original.size() > AudioTagReader::kMaxFileBytes)
        return Result::TooLarge;
    return Result::Written;
}

AudioTagWriter::Result AudioTagWriter::writeLyrics(const QString& path, const QString& text)
{
    if (const Result refused = writability(path); refused != Result::Written)
        return refused;
    const QFileInfo original(QFileInfo(path).canonicalFilePath());
    // Opened and checked on the descriptor: a pipe or device swapped in after the checks above
    // is refused, never waited on. TagLib only ever opens the copy.
    foundation::OpenedFile opened =
        foundation::openRegularFile(original.absoluteFilePath(), AudioTagReader::kMaxFileBytes);
    QFile source;
    if (!opened.fd.isOpen() ||
        !source.open(opened.fd.get(), QIODevice::ReadOnly, QFileDevice::DontCloseHandle))
        return Result::Missing;

    // The copy keeps the extension: TagLib chooses the format by it.
    QTemporaryFile copy(original.dir().filePath(
        QStringLiteral(".%1.XXXXXX.%2").arg(original.completeBaseName(), original.suffix())));
    if (!copy.open() || !copyInto(source, copy) || !copy.flush())
        return Result::Failed;
    copy.setPermissions(original.permissions());
    keepOwner(opened.fd.get(), copy.handle());
    copy.close();

    const auto audio = audioOf(copy.fileName());
    if (!audio)
        return Result::NotAudio;
    if (!setLyrics(copy.fileName(), text) || audioOf(copy.fileName()) != audio)
        return Result::Failed;
    const QStringList back = AudioTagReader::lyricTexts(copy.fileName());
    if (back.isEmpty() || back.first() != text)
        return Result::Failed;

    if (!copy.open())
        return Result::Failed;
    ::fsync(copy.handle());
    copy.close();
    const QByteArray from = QFile::encodeName(copy.fileName());
    const QByteArray to = QFile::encodeName(original.absoluteFilePath());
    if (std::rename(from.constData(), to.constData()) != 0)
        return Result::Failed;
    copy.setAutoRemove(false); // it is the original now
    syncFolder(original.absolutePath());
    return Result::Written;
}
