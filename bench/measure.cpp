#include "bench/measure.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvel4 {

namespace {

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/** The costs of one side's rounds. */
struct Series
{
    std::vector<double> wall;
    std::vector<double> processor;

    Measure::Cost median() const { return {tarvel4::median(wall), tarvel4::median(processor)}; }
};

} // namespace

Measure::Setup Measure::setup(int argc, char **argv)
{
    const QString folder =
        argc > 1 ? QDir(QFile::decodeName(argv[1])).absolutePath() : QDir::tempPath();
    if (!QFileInfo(folder).isWritable()) {
        std::fprintf(stderr, "can't write into %s\n", qPrintable(folder));
        std::exit(1);
    }
    return {folder, argc > 2 ? QFile::decodeName(argv[2]) : QStringLiteral(TARVEL4_CLI)};
}

Measure::Cost Measure::run(const QStringList &command, const QString &home, int status)
{
    QList<QByteArray> words;
    for (const QString &word : command)
        words.append(QFile::encodeName(word));
    std::vector<char *> pointers;
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    QElapsedTimer timer;
    timer.start();
    const pid_t child = fork();
    if (child == 0) {
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        if (!home.isEmpty()) {
            for (const char *name : {"HOME", "XDG_DATA_HOME"})
                setenv(name, QFile::encodeName(home).constData(), 1);
        }
        execvp(pointers.front(), pointers.data());
        _exit(127);
    }
    int ending = 0;
    rusage usage = {};
    if (wait4(child, &ending, 0, &usage) != child || !WIFEXITED(ending)
        || WEXITSTATUS(ending) != status) {
        std::fprintf(stderr, "%s did not exit with %d\n", pointers.front(), status);
        std::exit(1);
    }
    return {static_cast<double>(timer.nsecsElapsed()) * 1e-9,
            seconds(usage.ru_utime) + seconds(usage.ru_stime)};
}

QStringList Measure::copyAndFlush(const QString &from, const QString &to)
{
    return {QStringLiteral("sh"), QStringLiteral("-c"),
            QStringLiteral("cp -r \"$0\" \"$1\" && sync -f \"$1\""), from, to};
}

void Measure::printHeading(const char *plain, const char *ours)
{
    std::printf("%-30s  %11s %11s %6s %11s  %11s %11s %6s  %9s\n", "medians, in seconds", plain,
                ours, "ratio", "from-to", "cpu", "cpu", "ratio", "us a song");
}

void Measure::renewFolder(const QString &folder, const QString &home)
{
    // An empty path would be the working directory.
    if (!QDir::isAbsolutePath(folder) || !home.startsWith(folder + QLatin1Char('/')))
        qFatal("no folder to work in");
    QDir(folder).removeRecursively();
    QDir().mkpath(home);
}

Measure::Cost Measure::compare(const QString &name, int songs, const QString &work,
                               const Side &plain, const Side &ours, int rounds)
{
    const QString home = work + QStringLiteral("/home");
    const Side *const sides[] = {&plain, &ours};
    Series series[2];
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        for (int turn = 0; turn < 2; ++turn) {
            const int side = (round + turn) % 2;
            renewFolder(work, home);
            sides[side]->prepare();
            run({QStringLiteral("sync"), QStringLiteral("-f"), work});
            const Cost cost = run(sides[side]->command, home, sides[side]->status);
            series[side].wall.push_back(cost.wall);
            series[side].processor.push_back(cost.processor);
        }
        ratios.push_back(series[1].wall.back() / series[0].wall.back());
    }
    renewFolder(work, home);
    const Cost bare = series[0].median();
    const Cost cost = series[1].median();
    const auto spread = std::minmax_element(ratios.begin(), ratios.end());
    std::printf("%-30s  %11.3f %11.3f %6.2f %5.2f-%5.2f  %11.3f %11.3f %6.2f  %9.1f\n",
                qPrintable(name), bare.wall, cost.wall, median(ratios), *spread.first,
                *spread.second, bare.processor, cost.processor, cost.processor / bare.processor,
                cost.wall / songs * 1e6);
    std::fflush(stdout);
    return cost;
}

} // namespace tarvel4
