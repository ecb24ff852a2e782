// Transfers songs to a memory, against a flushed copy of them made by cp. The transfer makes the
// index of the memory too. Usage: bench_transfer [FOLDER [CLI]]
#include "bench/measure.h"
#include "bench/songlibrary.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>

using namespace tarvel4;

namespace {

void compare(const Measure::Setup &setup, const QString &folder, const char *kind,
             const QString &name)
{
    const QString from = folder + QLatin1Char('/') + QLatin1String(kind);
    const QString work = folder + QStringLiteral("/work");
    const QString memory = work + QStringLiteral("/memory");
    const QString to = memory + QStringLiteral("/songs");
    const int songs = static_cast<int>(QDir(from).entryList(QDir::Files).size());
    const Measure::Side plain = {Measure::copyAndFlush(from + QStringLiteral("/."), to),
                                 [&to] { QDir().mkpath(to); }};
    const Measure::Side ours = {{setup.cli, QStringLiteral("transfer"), QStringLiteral("--quiet"),
                                 QStringLiteral("--overwrite"), QStringLiteral("yes"),
                                 QStringLiteral("--memory"), memory, QStringLiteral("--to"), to,
                                 QStringLiteral("--recursive"), from},
                                plain.prepare};
    Measure::compare(name, songs, work, plain, ours, 7);
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const Measure::Setup setup = Measure::setup(argc, argv);
    const QTemporaryDir folder(setup.folder + QStringLiteral("/bench_transfer-XXXXXX"));
    SongLibrary::make(folder.path(), {5000, 150, 0, 9600, 9600});
    Measure::printHeading("cp+sync -f", "transfer");
    compare(setup, folder.path(), SongLibrary::midiFolder,
            QStringLiteral("5,000 MIDI songs of 32 kB"));
    compare(setup, folder.path(), SongLibrary::mp3Folder, QStringLiteral("150 MP3 songs of 4 MB"));
    return 0;
}
