#include "library/mountedmedia.h"
#include "tests/library/mediummount.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"

#include <QStorageInfo>

using namespace tarvel4;

/** Where cards and sticks are, and where a dialog begins that looks for one. */
class tst_MountedMedia : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void mediumRoots_data()
    {
        const Table<bool> row;
#ifdef Q_OS_WIN
        row("E:/", true);
        row("C:/", false); // the system's
        row("c:/", false);
#else
        row("/media/anna/CARD", true);
        row("/run/media/anna/CARD", true);
        row("/Volumes/CARD", true);
        row("/", false);
        row("/home", false);
        row("/mnt/backup", false); // for what an administrator mounts
        row("/boot/efi", false);
        row("/mediathek", false);
        row("/srv/media/anna", false);
#endif
    }
    void mediumRoots()
    {
        const auto [isMedium] = cells<bool>();
        QCOMPARE(MountedMedia::isMediumRoot(text(QTest::currentDataTag())), isMedium);
    }

    void names_data()
    {
        const Table<QString, QString, QString> row;
        row("a label", "/media/anna/1234-ABCD", "CARD", "CARD");
        row("no label: the folder", "/media/anna/1234-ABCD", "", "1234-ABCD");
        row("a drive with a label", "E:/", "CARD", "CARD (E:)");
        row("a drive without a label", "E:/", "", "E:");
    }
    void names()
    {
        const auto [root, label, name] = cells<QString, QString, QString>();
        QCOMPARE(MountedMedia::nameOf(root, label), name);
    }

    void startFolders_data()
    {
        const Table<QStringList, QStringList, QString> row;
        row("the only medium", strings({"/media/anna/CARD"}), strings({"/tmp"}),
            "/media/anna/CARD");
        row("the folder of several", strings({"/media/anna/CARD", "/media/anna/STICK"}), {},
            "/media/anna");
        row("none: the first place that is there", {}, strings({"/no/such/place", "/tmp", "/"}),
            "/tmp");
        row("none, and no place", {}, strings({"/no/such/place"}), "");
    }
    void startFolders()
    {
        const auto [roots, places, folder] = cells<QStringList, QStringList, QString>();
        QVector<MountedMedium> media;
        for (const QString &root : roots)
            media.append({root, root, 0});
        QCOMPARE(MountedMedia::startFolder(media, places), folder);
    }

    void whatIsListedIsMounted()
    {
        QStringList before;
        for (const MountedMedium &medium : MountedMedia::list())
            before += medium.root;
        const MediumMount card(text("CARD"));
        if (!card.isMounted())
            QSKIP("Nothing can be mounted here.");
        bool isListed = false;
        for (const MountedMedium &medium : MountedMedia::list()) {
            QVERIFY(before.contains(medium.root) || medium.root == card.root());
            if (medium.root != card.root())
                continue;
            isListed = true;
            QVERIFY(!medium.name.isEmpty());
        }
        QVERIFY(isListed);
        // Others may write there between the two looks: one equal pair is enough.
        bool isTold = false;
        QTRY_VERIFY(
            isTold
            || (isTold = freeOf(card.root()) == QStorageInfo(QDir::tempPath()).bytesAvailable()));
    }

private:
    static qint64 freeOf(const QString &root)
    {
        for (const MountedMedium &medium : MountedMedia::list())
            if (medium.root == root)
                return medium.free;
        return -1;
    }
};

QTEST_GUILESS_MAIN(tst_MountedMedia)
#include "tst_mountedmedia.moc"
