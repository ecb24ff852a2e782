#include "library/songselection.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "tests/storage/unixfile.h"

#include <QTemporaryDir>

#include <optional>

using namespace tarvel4;
using namespace TestFiles;

/** Which songs are meant by files and folders. */
class tst_SongSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        for (const char *name : {"b.mid", "a.MP3", "notes.txt", "below/d.kar", "below/c.mf3",
                                 ".hidden.mid", "other/e.mid"})
            write(path(text(name)), "");
        if (UnixFile::isHere)
            QVERIFY(QFile::link(path(text("gone")), path(text("other/lost.mid"))));
    }

    void selections_data()
    {
        const Table<QStringList, QStringList, QStringList> row;
        row("a folder: its songs, in the order of an import", strings({"below"}),
            strings({"below/c.mf3", "below/d.kar"}), {});
        row("files, as they are named", strings({"notes.txt", "b.mid", "none.mid"}),
            strings({"notes.txt", "b.mid", "none.mid"}), {});
        row("files and folders, in their order", strings({"below", "b.mid", "other"}),
            strings({"below/c.mf3", "below/d.kar", "b.mid", "other/e.mid"}),
            UnixFile::isHere ? strings({"other/lost.mid"}) : QStringList());
        row("what is named twice is taken once",
            strings({"b.mid", "below/d.kar", "below", "b.mid"}),
            strings({"b.mid", "below/d.kar", "below/c.mf3"}), {});
        row("nothing", {}, {}, {});
    }
    void selections()
    {
        const auto [named, songs, skipped] = cells<QStringList, QStringList, QStringList>();
        const SongSelection selection = SongSelection::of(paths(named), [](int) { return true; });
        QCOMPARE(selection.songs, paths(songs));
        QCOMPARE(selection.skipped, paths(skipped));
        QVERIFY(selection.isWhole);
    }

    void wholeTree()
    {
        QStringList songs = SongSelection::of({m_folder->path()}, [](int) { return true; }).songs;
        songs.sort();
        QCOMPARE(songs,
                 paths(strings({"a.MP3", "b.mid", "below/c.mf3", "below/d.kar", "other/e.mid"})));
    }

    void walkIsStopped_data()
    {
        const Table<int, int> row;
        row("at its first song", 1, 1);
        row("behind a folder, and the next one is not walked", 2, 2);
    }
    void walkIsStopped()
    {
        const auto [last, calls] = cells<int, int>();
        int called = 0;
        const SongSelection selection =
            SongSelection::of(paths(strings({"below", "other"})), [&, last = last](int found) {
                ++called;
                return found < last;
            });
        QVERIFY(!selection.isWhole);
        QCOMPARE(selection.songs.size(), last);
        QCOMPARE(called, calls);
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList paths(const QStringList &names) const
    {
        QStringList paths;
        for (const QString &name : names)
            paths += path(name);
        return paths;
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_SongSelection)
#include "tst_songselection.moc"
