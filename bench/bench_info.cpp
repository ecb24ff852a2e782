// The records of a library's songs against bare reads of the same bytes, and of its MP3s against
// TagLib. Usage: bench_info [SONGS], 10000 by default: 60 % MIDI, 25 % MP3, 15 % MFx.

#include "bench/readbytes.h"
#include "songs/metasong.h"
#include "tests/songs/mfxbytes.h"

#include <QDirIterator>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <random>

#ifdef TARVEL4_HAVE_TAGLIB
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#endif

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
    const int notes = 2500 + int(random() % 3000);
    QByteArray music;
    for (int i = 0; i < notes; ++i) {
        const char channel = char(random() % 16);
        const char pitch = char(40 + random() % 40);
        music += QByteArray(1, char(random() % 100)) + char(0x90 | channel) + pitch + char(100);
        music += QByteArray(1, char(random() % 100)) + char(0x80 | channel) + pitch + char(0);
    }
    return midi(1, {track(events + endOfTrack()), track(music + endOfTrack())});
}

/** An MP3 with a picture in every third tag. */
QByteArray mp3Song(std::mt19937 &random, bool hasPicture)
{
    QByteArray body = frame("TIT2", "Song title") + frame("TPE1", "Mina") + frame("TALB", "Album")
        + frame("TLEN", "215000") + frame("TCON", "Pop");
    if (hasPicture) {
        QByteArray picture(40'000, '\0');
        std::generate(picture.begin(), picture.end(), [&] { return char(random()); });
        body += frame("APIC", picture);
    }
    return tag(body + QByteArray(1024, '\0')) + audio(100);
}

void makeLibrary(const QDir &midi, const QDir &mp3, const QDir &mfxFolder, int songs)
{
    std::mt19937 random(4);
    for (int i = 0; i < songs * 60 / 100; ++i)
        write(midi.filePath(QStringLiteral("%1.mid").arg(i)), midiSong(random, i % 2 == 0));
    for (int i = 0; i < songs * 25 / 100; ++i)
        write(mp3.filePath(QStringLiteral("%1.mp3").arg(i)), mp3Song(random, i % 3 == 0));
    QByteArray packed[20];
    for (QByteArray &song : packed)
        song =
            mfx(3, {"Title", "Mina", "Conte", "Pop", "SONG.MF3", 120, 0}, midiSong(random, true));
    for (int i = 0; i < songs * 15 / 100; ++i)
        write(mfxFolder.filePath(QStringLiteral("%1.mf3").arg(i)), packed[i % 20]);
}

struct Seconds
{
    double one = 1e9;
    double other = 1e9;
};

/** The least processor time of five runs of two jobs that take turns: the files are in memory, so
 * that this is all they cost, and a busy machine does not blur it. */
Seconds seconds(const std::function<void()> &one, const std::function<void()> &other)
{
    const auto time = [](const std::function<void()> &job) {
        const std::clock_t start = std::clock();
        job();
        return double(std::clock() - start) / CLOCKS_PER_SEC;
    };
    Seconds least;
    for (int run = 0; run < 5; ++run) {
        least.one = std::min(least.one, time(one));
        least.other = std::min(least.other, time(other));
    }
    return least;
}

int readRecords(const QString &folder)
{
    int titles = 0;
    QDirIterator songs(folder, QDir::Files);
    while (songs.hasNext()) {
        MetaSong song;
        SongInfo info;
        if (song.importFile(songs.next()))
            song.readInfo(info);
        titles += !info.title.isEmpty();
    }
    return titles;
}

#ifdef TARVEL4_HAVE_TAGLIB
int readWithTagLib(const QString &folder)
{
    int titles = 0;
    QDirIterator songs(folder, QDir::Files);
    while (songs.hasNext()) {
        TagLib::MPEG::File file(QFile::encodeName(songs.next()).constData(), false);
        titles += !file.tag()->title().isEmpty() && !file.tag()->artist().isEmpty()
            && !file.tag()->genre().isEmpty();
    }
    return titles;
}
#endif

void compare(const char *what, const QString &folder)
{
    const int count = int(QDir(folder).entryList(QDir::Files).size());
    long long bytes = 0;
    int titles = 0;
    const Seconds time = seconds([&] { bytes = read_bytes(QFile::encodeName(folder).constData()); },
                                 [&] { titles = readRecords(folder); });
    if (bytes < 0 || titles != count)
        qFatal("not every song could be read");
    std::printf("%s: %d songs, %.1f MB read; bare reads %.1f us a song, records %.1f us, ratio "
                "%.2f\n",
                what, count, double(bytes) * 1e-6, time.one / count * 1e6, time.other / count * 1e6,
                time.other / time.one);
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QTemporaryDir library;
    const QDir root(library.path());
    for (const char *folder : {"midi", "mp3", "mfx"})
        root.mkdir(QString::fromLatin1(folder));
    const QString midiFolder = root.filePath(QStringLiteral("midi"));
    const QString mp3Folder = root.filePath(QStringLiteral("mp3"));
    const QString mfxFolder = root.filePath(QStringLiteral("mfx"));
    makeLibrary(QDir(midiFolder), QDir(mp3Folder), QDir(mfxFolder),
                argc > 1 ? std::atoi(argv[1]) : 10'000);

    compare("MIDI", midiFolder);
    compare("MP3", mp3Folder);
    compare("MFx (which must be expanded)", mfxFolder);
#ifdef TARVEL4_HAVE_TAGLIB
    const Seconds time =
        seconds([&] { readWithTagLib(mp3Folder); }, [&] { readRecords(mp3Folder); });
    std::printf("MP3 against TagLib: TagLib %.1f ms, records %.1f ms, ratio %.2f\n", time.one * 1e3,
                time.other * 1e3, time.other / time.one);
#else
    std::printf("MP3 against TagLib: left out, TagLib was not found when this was built\n");
#endif
    return 0;
}
