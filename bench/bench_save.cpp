// A new title in every song of a folder, against a flushed copy of the folder made by cp; and the
// flushes that it takes. Usage: bench_save [FOLDER [CLI]]
#include "bench/measure.h"
#include "bench/songlibrary.h"

#include <QDir>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

using namespace tarvel4;

namespace {

constexpr int songCount = 2000;

/** Songs of one kind, the folder that they are copied to, and the command that changes the copies.
 */
class Edit
{
public:
    Edit(const Measure::Setup &setup, const QString &from, const QString &work)
        : m_cli(setup.cli)
        , m_from(from)
        , m_to(work + QStringLiteral("/songs"))
    {}

    void prepare() const
    {
        Measure::run({QStringLiteral("cp"), QStringLiteral("-r"), m_from, m_to});
    }

    QStringList command(int count) const
    {
        QStringList words = {m_cli, QStringLiteral("edit"), QStringLiteral("--quiet"),
                             QStringLiteral("--title"), QStringLiteral("La luna di carta")};
        for (const QFileInfo &song : QDir(m_from).entryInfoList(QDir::Files).mid(0, count))
            words.append(m_to + QLatin1Char('/') + song.fileName());
        return words;
    }

    QStringList plainCommand() const { return Measure::copyAndFlush(m_from, m_to); }

private:
    QString m_cli;
    QString m_from;
    QString m_to;
};

double megabytes(const QString &folder)
{
    qint64 bytes = 0;
    for (const QFileInfo &song : QDir(folder).entryInfoList(QDir::Files))
        bytes += song.size();
    return static_cast<double>(bytes) * 1e-6;
}

/** The flushes of a run, as strace counts them. */
int flushes(const Edit &edit, int count, const QString &work)
{
    const QString summary = work + QStringLiteral("/summary");
    const QString home = work + QStringLiteral("/home");
    Measure::renewFolder(work, home);
    edit.prepare();
    Measure::run(QStringList{QStringLiteral("strace"), QStringLiteral("-f"), QStringLiteral("-c"),
                             QStringLiteral("-o"), summary, QStringLiteral("-e"),
                             QStringLiteral("trace=fsync,fdatasync,syncfs")}
                     + edit.command(count),
                 home);
    QFile file(summary);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no summary of strace");
    int calls = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() >= 5 && words.last() != "total")
            calls += words[3].toInt(); // % time, seconds, usecs/call, calls
    }
    return calls;
}

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const Measure::Setup setup = Measure::setup(argc, argv);
    const QTemporaryDir folder(setup.folder + QStringLiteral("/bench_save-XXXXXX"));
    SongLibrary::make(folder.path(), {songCount, songCount, 0, 720, 1680});
    const QString work = folder.filePath(QStringLiteral("work"));
    const bool hasStrace = !QStandardPaths::findExecutable(QStringLiteral("strace")).isEmpty();

    Measure::printHeading("cp+sync -f", "edit");
    for (const char *kind : {SongLibrary::mp3Folder, SongLibrary::midiFolder}) {
        const QString from = folder.filePath(QLatin1String(kind));
        const Edit edit(setup, from, work);
        const QString name = QStringLiteral("%1 songs of %2 kB (%3)")
                                 .arg(songCount)
                                 .arg(megabytes(from) * 1e3 / songCount, 0, 'f', 0)
                                 .arg(QLatin1String(kind));
        Measure::compare(name, songCount, work, {edit.plainCommand(), [] {}},
                         {edit.command(songCount), [&edit] { edit.prepare(); }});
        if (!hasStrace) {
            std::printf("  flushes: left out, strace was not found\n");
            continue;
        }
        for (const int count : {200, 1000})
            std::printf("  flushes of a run of %d songs: %d\n", count, flushes(edit, count, work));
    }
    return 0;
}
