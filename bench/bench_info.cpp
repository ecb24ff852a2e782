// The records of a library's songs against bare reads of the same bytes, and of its MP3s against
// TagLib. Usage: bench_info [SONGS], 10000 by default: 60 % MIDI, 25 % MP3, 15 % MFx.

#include "bench/readbytes.h"
#include "bench/songlibrary.h"
#include "songs/metasong.h"

#include <QDirIterator>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>

#ifdef TARVEL4_HAVE_TAGLIB
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#endif

using namespace tarvel4;

namespace {

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
        return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
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
    const int count = static_cast<int>(QDir(folder).entryList(QDir::Files).size());
    long long bytes = 0;
    int titles = 0;
    const Seconds time = seconds([&] { bytes = read_bytes(QFile::encodeName(folder).constData()); },
                                 [&] { titles = readRecords(folder); });
    if (bytes < 0 || titles != count)
        qFatal("not every song could be read");
    std::printf("%s: %d songs, %.1f MB read; bare reads %.1f us a song, records %.1f us, ratio "
                "%.2f\n",
                what, count, static_cast<double>(bytes) * 1e-6, time.one / count * 1e6,
                time.other / count * 1e6, time.other / time.one);
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QTemporaryDir library;
    const int songs = argc > 1 ? std::atoi(argv[1]) : 10'000;
    SongLibrary::make(library.path(), {songs * 60 / 100, songs * 25 / 100, songs * 15 / 100});
    const auto folder = [&library](const char *kind) {
        return library.filePath(QLatin1String(kind));
    };

    const QString mp3Folder = folder(SongLibrary::mp3Folder);
    compare("MIDI", folder(SongLibrary::midiFolder));
    compare("MP3", mp3Folder);
    compare("MFx (which must be expanded)", folder(SongLibrary::mfxFolder));
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
