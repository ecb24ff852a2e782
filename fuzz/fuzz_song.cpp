// Imports any bytes as a song file, reads it, changes it in both ways, saves it and imports it
// again.
#include "fuzz/fuzzing.h"
#include "songs/metasong.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace tarvel4;

namespace {

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Fuzzing::silenceLog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/tarvel4-fuzz-XXXXXX"));
    static const QString path = folder.filePath(QStringLiteral("song.mp3"));
    Fuzzing::require(write(path, Fuzzing::bytes(data, size)));

    MetaSong song;
    if (!song.importFile(path))
        return 0;
    SongInfo info;
    song.readInfo(info);
    song.setSongInfo(info, WrittenBy::Catalogue);
    info.title += QStringLiteral(" x");
    info.artist.clear();
    const QVector<FieldNote> notes = song.checkEdit(info);
    const bool isRefused = std::any_of(notes.begin(), notes.end(), [](const FieldNote &note) {
        return note.grade == FieldNote::Grade::Refused;
    });
    song.setSongInfo(info, WrittenBy::User);
    Fuzzing::require(static_cast<bool>(song.whyNotSavable()) != isRefused);
    song.addMarker(info.title, 65535);

    const bool savable = static_cast<bool>(song.whyNotSavable());
    Fuzzing::require(static_cast<bool>(song.saveToFile(path)) == savable);
    return 0;
}
