#include "tests/program/historytest.h"

using namespace tarvel4;
using namespace Fixtures;

/** Songs, backups and a memory in a folder whose path is longer than the 260 characters that many a
 * call of Windows takes; each name in it fits everywhere. */
class tst_CliLongPaths : public HistoryTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder(qPrintable("s "_s + m_deep + "/b "_s + m_deep + "/m/Pop"_s));
        makeSongs();
        write("s/AZZURRO.mid", midi(meta(0x02, "(c) K-Varo")));
        QVERIFY(QDir().rename(path("s"), path(m_deep + "/s"_s)));
        QVERIFY(writeCatalogue(path(m_deep + "/c.db"_s)));
    }

    void works_data()
    {
        const Table<QString, QByteArray> row; // what it prints
        row("info", R"("$cli" info --fields title $d/s/SANTALUC.mid)", "title: Santa Lucia\n");
        row("edit of every format",
            R"("$cli" edit --json --title New $d/s/* | grep -c '"title":"New"')", "12\n");
        row("undo", R"(cp -r $d/s before
                       "$cli" edit --title New $d/s/* >said
                       ! diff -qr before $d/s >said && "$cli" undo >said && diff -r before $d/s)",
            "");
        row("sync, with its backup",
            R"(cp $d/s/AZZURRO.mid before
               "$cli" sync --json --catalogue $d/c.db --backup $d/b $d/s/AZZURRO.mid 2>said \
                   | grep -o '"status":"[a-z]*"'
               ! cmp -s before $d/s/AZZURRO.mid && cmp before $d/b/backup_kvaro_*/AZZURRO.mid)",
            "\"status\":\"updated\"\n");
        row("backup and restore",
            R"(cp -r $d/s before
               "$cli" backup --to $d/b --recursive $d/s >said 2>&1
               "$cli" edit --title New $d/s/* >said
               "$cli" restore --from $d/b/backup_kvaro_* --recursive $d/s >said
               diff -r before $d/s && ls $d/b/* | wc -l)",
            "12\n");
        row("transfer, and once more",
            R"(for i in 1 2; do
                   "$cli" transfer --json --quiet --overwrite yes --to $d/m/Pop --memory $d/m \
                       --recursive $d/s
               done | grep -c '"copied":12'
               diff -r $d/s $d/m/Pop && "$cli" index verify $d/m)",
            "2\n");
        row("index and list",
            R"(cp $d/s/*.mid $d/m/Pop
               "$cli" index rebuild --json $d/m | grep -o '"found":3' && "$cli" index verify $d/m
               "$cli" list --output $d/list.csv $d/m && grep -c /Pop/ $d/list.csv)",
            "\"found\":3\n3\n");
        row("extract", R"("$cli" extract $d/s/GREENSLV.mf5 >said && head -c 4 $d/s/GREENSLV.mid)",
            "MThd");
    }
    void works()
    {
        const auto [line, out] = cells<QString, QByteArray>();
        const Run run = shell("d="_s + m_deep + QLatin1Char('\n') + line);
        QCOMPARE(run, (Run{0, out, QByteArray()}));
    }

private:
    const QString m_deep =
        QStringList{QString(100, QLatin1Char('a')), QString(100, QLatin1Char('b')),
                    QString(100, QLatin1Char('c'))}
            .join(QLatin1Char('/'));
};

QTEST_GUILESS_MAIN(tst_CliLongPaths)
#include "tst_clilongpaths.moc"
