// Imports any bytes as a song file, reads it, changes it in both ways, saves it and imports it
// again.
#include "fuzz/fuzzing.h"
#include "songs/metasong.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace tarvel4;

namespace {

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/** True where what was not said of a text before the edit is not so after it. */
bool keepsItsWord(const QVector<FieldNote> &notes, const SongInfo &typed, const SongInfo &stored)
{
    const std::pair<const char *, QString SongInfo::*> texts[] = {{"title", &SongInfo::title},
                                                                  {"artist", &SongInfo::artist},
                                                                  {"genre", &SongInfo::genre},
                                                                  {"author", &SongInfo::author}};
    return std::all_of(std::begin(texts), std::end(texts), [&](const auto &text) {
        const auto isTold = [&text](const FieldNote &note) {
            return note.field == QLatin1String(text.first)
                && note.grade != FieldNote::Grade::NearLimit;
        };
        return typed.*text.second == stored.*text.second
            || std::any_of(notes.begin(), notes.end(), isTold);
    });
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
    SongInfo stored;
    song.readInfo(stored);
    Fuzzing::require(isRefused || keepsItsWord(notes, info, stored));
    song.addMarker(info.title, 65535);

    const bool savable = static_cast<bool>(song.whyNotSavable());
    Fuzzing::require(static_cast<bool>(song.saveToFile(path)) == savable);
    return 0;
}
