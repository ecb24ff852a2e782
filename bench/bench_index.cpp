// Builds and updates the index of a memory, against plain walks that make the same system calls on
// the same files: one that stats, opens and reads 3,072 bytes of each, and one that only stats.
//   bench_index [SONGS]...     10000 and 60000 when none is given
#include "indexer/index.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tarvel4;

namespace {

constexpr int headSize = 3072;
constexpr int songSize = 4096;
constexpr int runs = 7;

QByteArray event(char type, const QByteArray &payload)
{
    return QByteArray("\x00\xFF", 2) + type + static_cast<char>(payload.size()) + payload;
}

QByteArray filledUp(QByteArray bytes, char filling)
{
    return bytes.append(QByteArray(songSize - bytes.size(), filling));
}

QByteArray midiSong(int number)
{
    const QByteArray text = QByteArray::number(number);
    return filledUp(
        QByteArray("MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\x0F\xEA", 22)
            + event(0x03, "Canzone numero " + text)
            + event(0x4B, "\x02" + QByteArray("Interprete ") + QByteArray::number(number % 997))
            + event(0x4B, QByteArray("\x01Pop")) + event(0x51, "\x07\xA1\x20"),
        '\x40');
}

QByteArray frame(const QByteArray &id, const QByteArray &text)
{
    return id + QByteArray("\0\0\0", 3) + static_cast<char>(text.size() + 1)
        + QByteArray("\0\0\0", 3) + text;
}

QByteArray mp3Song(int number)
{
    return filledUp(QByteArray("ID3\3\0\0\0\0\2\0", 10)
                        + frame("TIT2", "Canzone numero " + QByteArray::number(number))
                        + frame("TPE1", "Interprete " + QByteArray::number(number % 997))
                        + frame("TCON", "Pop"),
                    '\0');
}

QByteArray mfxSong(int number)
{
    QByteArray bytes(songSize, '\0');
    bytes.replace(0, 4, "_MF4");
    const auto put = [&bytes](int at, const QByteArray &text) {
        bytes.replace(at, text.size(), text);
    };
    put(38, "\x78");
    put(122, "Canzone numero " + QByteArray::number(number));
    put(218, "Interprete " + QByteArray::number(number % 997));
    put(250, "Pop");
    return bytes;
}

/** 60 % MIDI, 25 % MP3, 15 % MFx, a hundred songs a folder, ten folders a folder. */
void makeSongs(const QString &root, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString folder = QStringLiteral("%1/Genere %2/Raccolta %3")
                                   .arg(root)
                                   .arg(i / 1000, 3, 10, QLatin1Char('0'))
                                   .arg(i / 100 % 10);
        if (i % 100 == 0)
            QDir().mkpath(folder);
        const int kind = i % 20;
        const char *suffix = kind < 12 ? "mid" : kind < 17 ? "mp3" : "mf4";
        QFile file(
            QStringLiteral("%1/Canzone %2.%3").arg(folder).arg(i).arg(QLatin1String(suffix)));
        const QByteArray bytes = kind < 12 ? midiSong(i) : kind < 17 ? mp3Song(i) : mfxSong(i);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != songSize)
            qFatal("can't make the songs");
    }
}

/** Walks like a plain C program; returns the files met. */
int walk(const std::string &folder, bool reads)
{
    int count = 0;
    DIR *const dir = opendir(folder.c_str());
    while (const dirent *entry = readdir(dir)) {
        const std::string path = folder + '/' + entry->d_name;
        struct stat status = {};
        if (entry->d_name[0] == '.' || stat(path.c_str(), &status) != 0)
            continue;
        if (S_ISDIR(status.st_mode)) {
            count += walk(path, reads);
            continue;
        }
        ++count;
        if (!reads)
            continue;
        char head[headSize];
        const int fd = open(path.c_str(), O_RDONLY);
        if (fd < 0 || read(fd, head, sizeof head) < 0)
            qFatal("can't read a song");
        close(fd);
    }
    closedir(dir);
    return count;
}

/** Wall clock and processor time: on a busy machine only the second says what a job costs. */
struct Cost
{
    double wall = 0;
    double processor = 0;
};

double processorSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

Cost costOf(const std::function<bool()> &job)
{
    const double before = processorSeconds();
    QElapsedTimer timer;
    timer.start();
    if (!job())
        qFatal("a run failed");
    return {static_cast<double>(timer.nsecsElapsed()) / 1e9, processorSeconds() - before};
}

double median(const std::vector<Cost> &costs, double Cost::*kind)
{
    std::vector<double> values;
    for (const Cost &cost : costs)
        values.push_back(cost.*kind);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/** Runs both in turns, so that a busy machine slows both down, and compares the medians. */
void compare(const char *what, int songs, const std::function<bool()> &ours,
             const std::function<bool()> &theirs)
{
    std::vector<Cost> ourCosts;
    std::vector<Cost> theirCosts;
    for (int i = 0; i < runs; ++i) {
        theirCosts.push_back(costOf(theirs));
        ourCosts.push_back(costOf(ours));
    }
    for (const auto &[kind, member] :
         {std::pair("wall clock", &Cost::wall), std::pair("processor", &Cost::processor)}) {
        const double our = median(ourCosts, member);
        const double their = median(theirCosts, member);
        std::printf("%-7s %6d songs, %-10s: %7.1f ms, the walk %7.1f ms, ratio %.2f\n", what, songs,
                    kind, our * 1e3, their * 1e3, our / their);
    }
}

long residentKilobytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void measure(int songs)
{
    QTemporaryDir folder;
    const QString root = folder.filePath(QStringLiteral("memory"));
    makeSongs(root, songs);
    const std::string plainRoot = QFile::encodeName(root).toStdString();
    ::sync();

    const int indexFiles = 7;
    const auto walked = [&](bool reads) {
        const int count = walk(plainRoot, reads);
        return count == songs || count == songs + indexFiles;
    };
    malloc_trim(0);
    const long before = residentKilobytes();
    {
        Index index;
        if (!index.rebuild(root) || index.found() != songs)
            qFatal("the rebuild failed");
    }
    const long after = residentKilobytes();
    compare(
        "rebuild", songs, [&] { return Index().rebuild(root); }, [&] { return walked(true); });
    compare(
        "update", songs,
        [&] {
            Index index;
            return index.update(root) && !index.changed();
        },
        [&] { return walked(false); });
    std::printf("memory  %6d songs: %ld bytes a song at most\n", songs,
                (after - before) * 1024 / songs);
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
            std::exit(1);
        }
    });
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false")); // nobody reads the log here
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty())
        sizes = {10'000, 60'000};
    for (const int songs : sizes)
        measure(songs);
}
