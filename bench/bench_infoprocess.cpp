// `tarvel4soft-cli info --json --recursive`, the whole process from its start to its end, against a
// C program that reads what is needed of the same songs.
// Usage: bench_infoprocess [SONGS], by default 10000 MIDI songs, as many MP3s, a tenth of MFx.
#include "bench/measure.h"
#include "bench/songlibrary.h"

#include <QLoggingCategory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace tarvel4;

namespace {

/** Both in turns, so that a busy machine slows both down; the least time of each counts. */
void compare(const char *what, const QString &folder)
{
    double bare = 1e9;
    double info = 1e9;
    for (int run = 0; run < 15; ++run) {
        bare = std::min(bare, Measure::run({QStringLiteral(TARVEL4_READFOLDER), folder}).processor);
        info =
            std::min(info,
                     Measure::run({QStringLiteral(TARVEL4_CLI), QStringLiteral("info"),
                                   QStringLiteral("--json"), QStringLiteral("--recursive"), folder})
                         .processor);
    }
    std::printf("%s: bare reads %.1f ms, info %.1f ms of processor time, ratio %.2f\n", what,
                bare * 1e3, info * 1e3, info / bare);
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const QTemporaryDir library;
    const auto folder = [&library](const char *kind) {
        return library.filePath(QLatin1String(kind));
    };
    const int songs = argc > 1 ? std::atoi(argv[1]) : 10'000;
    SongLibrary::make(library.path(), {songs, songs, songs / 10});
    compare("MIDI", folder(SongLibrary::midiFolder));
    compare("MP3", folder(SongLibrary::mp3Folder));
    compare("MFx (which must be expanded)", folder(SongLibrary::mfxFolder));
    return 0;
}
