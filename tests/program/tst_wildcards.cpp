#include "cli/wildcards.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;
using namespace SongBytes;

/** What "*" and "?" stand for where the shell leaves them to the program. */
class tst_Wildcards : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void expanded_data()
    {
        const Table<QString, QString> row; // below the folder
        row("a star, in the order of names", "*.mid", "a.mid b.mid");
        row("names are matched whatever their case", "A*", "a.mid");
        row("a question mark is one letter", "?.mid", "a.mid b.mid");
        row("several stars", "*o*.k*r", "song.kar");
        row("a dot at the front is named", ".*", ".hidden.mid");
        row("in a folder's name", "*/x.mid", "p/x.mid q/x.mid");
        row("in both", "?/*", "p/x.mid q/x.mid q/y.mp3");
        row("what matches nothing stays", "*.mf3", "*.mf3");
        row("a square bracket is a letter", "[a]*", "[a]*");
    }
    void expanded()
    {
        const auto [wildcards, names] = cells<QString, QString>();
        for (const QString &folder : words("p q"))
            QVERIFY(QDir().mkdir(path(folder)));
        for (const QString &name :
             words("b.mid a.mid song.kar .hidden.mid q/y.mp3 q/x.mid p/x.mid"))
            write(path(name), "x");
        QStringList paths;
        for (const QString &name : names.split(QLatin1Char(' ')))
            paths += path(name);
        QCOMPARE(Wildcards::expanded(path(wildcards)), paths);
        QVERIFY(Wildcards::areIn(path(wildcards)));
        QVERIFY(!Wildcards::areIn(path("a.mid")));
    }
};

QTEST_GUILESS_MAIN(tst_Wildcards)
#include "tst_wildcards.moc"
