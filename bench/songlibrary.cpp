#include "bench/songlibrary.h"

#include "tests/songs/songbytes.h"

#include <QDir>

#include <algorithm>
#include <random>

namespace tarvel4 {

using namespace SongBytes;

namespace {

/** A song of some minutes; half of them carry our fields, half lack every one. */
QByteArray midiSong(std::mt19937 &random, bool hasFields)
{
    QByteArray events = meta(3, "Song title") + meta(5, "La la");
    if (hasFields)
        events += songInfo(1, "Pop") + songInfo(2, "Mina") + songInfo(3, "Conte")
            + songInfo(4, "215") + songInfo(5, "120") + marker(1, "Intro")
            + meta(0x59, hex("0200"));
    const int notes = 2500 + static_cast<int>(random() % 3000);
    QByteArray music;
    for (int i = 0; i < notes; ++i) {
        const char channel = static_cast<char>(random() % 16);
        const char pitch = static_cast<char>(40 + random() % 40);
        music += QByteArray(1, static_cast<char>(random() % 100))
            + static_cast<char>(0x90 | channel) + pitch + static_cast<char>(100);
        music += QByteArray(1, static_cast<char>(random() % 100))
            + static_cast<char>(0x80 | channel) + pitch + static_cast<char>(0);
    }
    return midi(1, {track(events + endOfTrack()), track(music + endOfTrack())});
}

/** An MP3 with a picture in every third tag. */
QByteArray mp3Song(std::mt19937 &random, bool hasPicture, int frames)
{
    QByteArray body = frame("TIT2", "Song title") + frame("TPE1", "Mina") + frame("TALB", "Album")
        + frame("TLEN", "215000") + frame("TCON", "Pop");
    if (hasPicture) {
        QByteArray picture(40'000, '\0');
        std::generate(picture.begin(), picture.end(), [&] { return static_cast<char>(random()); });
        body += frame("APIC", picture);
    }
    return tag(body + QByteArray(1024, '\0')) + audio(frames);
}

} // namespace

void SongLibrary::make(const QString &folder, const Counts &counts)
{
    QDir root(folder);
    for (const char *kind : {midiFolder, mp3Folder, mfxFolder})
        root.mkpath(QString::fromLatin1(kind));
    const QDir midi(root.filePath(QLatin1String(midiFolder)));
    const QDir mp3(root.filePath(QLatin1String(mp3Folder)));
    const QDir mfxs(root.filePath(QLatin1String(mfxFolder)));
    std::mt19937 random(4);
    for (int i = 0; i < counts.midi; ++i)
        write(midi.filePath(QStringLiteral("%1.mid").arg(i)), midiSong(random, i % 2 == 0));
    std::uniform_int_distribution<int> frames(counts.leastMp3Frames, counts.mostMp3Frames);
    for (int i = 0; i < counts.mp3; ++i) {
        write(mp3.filePath(QStringLiteral("%1.mp3").arg(i)),
              mp3Song(random, i % 3 == 0, frames(random)));
    }
    QByteArray packed[20];
    for (QByteArray &song : packed)
        song =
            mfx(3, {"Title", "Mina", "Conte", "Pop", "SONG.MF3", 120, 0}, midiSong(random, true));
    for (int i = 0; i < counts.mfx; ++i)
        write(mfxs.filePath(QStringLiteral("%1.mf3").arg(i)), packed[i % 20]);
}

} // namespace tarvel4
