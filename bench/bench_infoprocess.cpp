// `tarvel4soft-cli info --json --recursive`, the whole process from its start to its end, against a
// C program that reads what is needed of the same songs.
// Usage: bench_infoprocess [SONGS], by default 10000 MIDI songs, as many MP3s, a tenth of MFx.
#include "bench/songlibrary.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tarvel4;

namespace {

/** The processor seconds, of program and system, of a process that throws its output away. */
double secondsOf(std::initializer_list<const char *> command)
{
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        std::vector<char *> words;
        for (const char *word : command)
            words.push_back(const_cast<char *>(word));
        words.push_back(nullptr);
        execv(words.front(), words.data());
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    if (wait4(child, &status, 0, &usage) != child || status != 0)
        qFatal("%s failed", *command.begin());
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/** Both in turns, so that a busy machine slows both down; the least time of each counts. */
void compare(const char *what, const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    double bare = 1e9;
    double info = 1e9;
    for (int run = 0; run < 15; ++run) {
        bare = std::min(bare, secondsOf({TARVEL4_READFOLDER, path.constData()}));
        info = std::min(
            info, secondsOf({TARVEL4_CLI, "info", "--json", "--recursive", path.constData()}));
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
