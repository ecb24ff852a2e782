#include "storage/newfile.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;
using namespace SongBytes;

/** A file that is written as a whole. */
class tst_NewFile : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void aNewFileIsThereWholeOrNotAtAll_data()
    {
        QTest::addColumn<bool>("isFat");
        QTest::addColumn<QByteArray>("old");
        QTest::addColumn<QByteArray>("waiting"); // what an earlier replacement left
        QTest::newRow("where there is none") << false << QByteArray() << QByteArray();
        QTest::newRow("over an old one") << false << QByteArray("old") << QByteArray();
        QTest::newRow("over an old one on FAT") << true << QByteArray("old") << QByteArray();
        QTest::newRow("over one that a power cut spoilt")
            << true << QByteArray(9, '\0') << QByteArray("old");
    }
    void aNewFileIsThereWholeOrNotAtAll()
    {
        QFETCH(bool, isFat);
        QFETCH(QByteArray, old);
        QFETCH(QByteArray, waiting);
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        const QString link = path("link");
        QVERIFY(QFile::link(path("b"), link));
        bool hasFailed = true;
        int step = 0;
        while (hasFailed) {
            if (!old.isEmpty())
                write(path("b"), old);
            if (!waiting.isEmpty())
                write(path("b.tarvel4.bak"), waiting);
            for (const char *name : {"b", "b.tarvel4.bak"})
                QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner);
            write(path(".b.tarvel4.part"), "of a run that was killed");
            FailingDisk disk;
            disk.isFat = isFat;
            disk.failAt = ++step;
            const LogCapture capture;
            const Outcome outcome = NewFile::write(disk, old.isEmpty() ? path("b") : link, "new");
            hasFailed = disk.operations.size() >= step;
            QVERIFY(hasFailed || outcome);
            const bool isUnsure =
                step == disk.operations.size() && disk.operations.last() == "syncAll"_s;
            QCOMPARE(outcome == Outcome::Code::NotConfirmed, isUnsure);
            const bool isNew = outcome || isUnsure;
            const QByteArray now = read(path("b"));
            const bool isOld = now == old || now == waiting
                || (!waiting.isEmpty() && read(path("b.tarvel4.bak")) == waiting);
            QVERIFY(isNew ? now == "new" : old.isEmpty() ? !QFile::exists(path("b")) : isOld);
            const bool staysBehind = disk.operations.value(step - 1) == "remove"_s;
            QVERIFY(staysBehind || !QFile::exists(path(".b.tarvel4.part")));
            QFile::remove(path("b.tarvel4.bak"));
        }
        QVERIFY(step > 4);
        QVERIFY(QFileInfo(link).isSymLink());
        QVERIFY(old.isEmpty() || !(QFile::permissions(path("b")) & QFile::ReadOther));
        QVERIFY(QDir(path()).mkdir("folder"_s));
        QCOMPARE(NewFile::write(Disk::real(), path("folder"), "new").codeName(), "not-a-file"_s);
    }
};

QTEST_GUILESS_MAIN(tst_NewFile)
#include "tst_newfile.moc"
