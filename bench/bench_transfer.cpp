// Copies songs into a folder as the transfer does, and as cp does, with everything flushed on both
// sides.
#include "library/filecopier.h"
#include "library/messagelog.h"

#include "bench/silenthost.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tarvel4;

namespace {

QStringList makeSongs(const QString &folder, int count, int size)
{
    QDir().mkpath(folder);
    QByteArray bytes(size, 'x');
    QStringList files;
    for (int i = 0; i < count; ++i) {
        files.append(folder + QStringLiteral("/song%1.mid").arg(i));
        QFile file(files.last());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != size)
            qFatal("can't make the songs");
    }
    return files;
}

double secondsOf(const std::function<bool()> &job)
{
    QElapsedTimer timer;
    timer.start();
    if (!job())
        qFatal("the copy failed");
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

double copyWithCp(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    return secondsOf([&] {
        return QProcess::execute(QStringLiteral("cp"),
                                 {QStringLiteral("-r"), from + QStringLiteral("/."), to})
            == 0
            && Disk::real().syncAll({to});
    });
}

double copyWithOurs(const QStringList &files, const QString &to)
{
    QDir().mkpath(to);
    SilentHost host;
    FileCopier copier(host, host, host, Disk::real());
    return secondsOf([&] { return copier.copy(files, to).isComplete(); });
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void compare(const char *name, const QString &folder, int count, int size)
{
    constexpr int rounds = 7;
    const QString from = folder + QStringLiteral("/from");
    const QString to = folder + QStringLiteral("/to");
    const QStringList files = makeSongs(from, count, size);
    std::vector<double> cp;
    std::vector<double> ours;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        // Turn and turn about, each into a new folder, on a medium with nothing left to write.
        for (int turn = 0; turn < 2; ++turn) {
            QDir(to).removeRecursively();
            Disk::real().syncAll({folder});
            if ((round + turn) % 2 == 0)
                cp.push_back(copyWithCp(from, to));
            else
                ours.push_back(copyWithOurs(files, to));
        }
        ratios.push_back(ours.back() / cp.back());
    }
    std::printf("%-32s cp %6.2f s   transfer %6.2f s   ratio %.2f (median of %d rounds)\n", name,
                median(cp), median(ours), median(ratios), rounds);
    QDir(from).removeRecursively();
    QDir(to).removeRecursively();
}

} // namespace

int main(int argc, char *argv[])
{
    // The medium is the folder given, else the one for temporary files.
    const QString base = argc > 1 ? QFile::decodeName(argv[1]) : QDir::tempPath();
    QTemporaryDir dir(base + QStringLiteral("/bench_transfer-XXXXXX"));
    if (!dir.isValid())
        qFatal("can't make a folder in %s", qPrintable(base));
    MessageLog::silence(); // as the programs do when no log is kept
    compare("5,000 MIDI songs of 40 kB", dir.path(), 5000, 40 << 10);
    compare("150 MP3 songs of 4 MB", dir.path(), 150, 4 << 20);
    return 0;
}
