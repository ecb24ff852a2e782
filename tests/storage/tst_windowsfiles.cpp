#include "storage/systemfile.h"
#include "storage/windowshandle.h"
#include "tests/storage/foldertest.h"

#include <functional>

using namespace tarvel4;
using namespace SongBytes;

namespace {

HANDLE heldFile = INVALID_HANDLE_VALUE;
int waits = 0; ///< until now
int waitsUntilFree = 0; ///< when the file is let go of; 0: never

void letGo()
{
    CloseHandle(std::exchange(heldFile, INVALID_HANDLE_VALUE));
}

void WINAPI countWait(DWORD)
{
    if (++waits == waitsUntilFree)
        letGo();
}

} // namespace

/** Files that other programs have open, and read-only ones, which Windows neither replaces nor
 * removes. */
class tst_WindowsFiles : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { waitForOthers = &countWait; }
    void init()
    {
        makeFolder();
        waits = 0;
    }
    void cleanup()
    {
        if (heldFile != INVALID_HANDLE_VALUE)
            letGo();
    }

    void fileInUse_data()
    {
        const Table<QString, QString, quint32, int, QString> row;
        const quint32 readers = FILE_SHARE_READ;
        const quint32 all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        row("a song to be replaced, for a moment", "replace", "b", readers, 3, "");
        row("the one that replaces it, for a moment", "replace", "new", readers, 3, "");
        row("a song to be replaced, by one who shares it", "replace", "b", all, 3, "");
        row("a song to be replaced, for good", "replace", "b", readers, 0, "in-use");
        row("the one that replaces it, for good", "replace", "new", readers, 0, "in-use");
        row("a song to be removed, for a moment", "remove", "b", readers, 3, "");
        row("a song to be removed, for good", "remove", "b", readers, 0, "in-use");
        row("a song to be flushed, for a moment", "flush", "b", readers, 3, "");
        row("a song to be flushed, for good", "flush", "b", readers, 0, "in-use");
    }
    void fileInUse()
    {
        const auto [operation, held, shared, patience, code] =
            cells<QString, QString, quint32, int, QString>();
        write(path("b"), "old");
        write(path("new"), "new");
        heldFile = CreateFileW(wide(longPath(path(held))), GENERIC_READ, shared, nullptr,
                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        QVERIFY(heldFile != INVALID_HANDLE_VALUE);
        waitsUntilFree = patience;
        QCOMPARE(perform(operation).codeName(), code);
        QCOMPARE(waits, patience > 0 ? patience : 9);
        if (!code.isEmpty())
            QCOMPARE(names(), words("b new"));
        else if (operation == "remove"_s)
            QCOMPARE(names(), words("new"));
        else
            QCOMPARE(read(path("b")), QByteArray(operation == "replace"_s ? "new" : "old"));
    }

    void whatIsMissingIsNotWaitedFor()
    {
        write(path("new"), "new");
        QCOMPARE(Disk::real().replace(path("new"), path("nowhere/b")).codeName(), "not-found"_s);
        QVERIFY(QDir(path()).mkdir("folder"_s));
        QCOMPARE(Disk::real().replace(path("new"), path("folder")).codeName(), "not-a-file"_s);
        QCOMPARE(waits, 0);
    }

    void readOnlyFile_data()
    {
        const Table<QString, bool, QStringList> row;
        row("replaced on FAT", "replace", true, words("b"));
        row("replaced elsewhere", "replace", false, words("b"));
        row("removed", "remove", false, words("new"));
    }
    void readOnlyFile()
    {
        const auto [operation, isFat, left] = cells<QString, bool, QStringList>();
        const QString file = write(path("b"), "old");
        write(path("new"), "new");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        QVERIFY(!QFileInfo(file).isWritable());
        FailingDisk disk;
        disk.isFat = isFat;
        const Outcome outcome = perform(operation, disk);
        QVERIFY2(outcome, qPrintable(outcome.codeName()));
        QCOMPARE(names(), left);
        if (operation == "replace"_s) {
            QCOMPARE(read(file), QByteArray("new"));
            QVERIFY(QFileInfo(file).isWritable());
        }
    }

    void readOnlyFileInUseStaysReadOnly()
    {
        const QString file = write(path("b"), "old");
        write(path("new"), "new");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        heldFile = openShared(longPath(file), GENERIC_READ, OPEN_EXISTING);
        waitsUntilFree = 0;
        QCOMPARE(perform("replace"_s).codeName(), "in-use"_s);
        QVERIFY(!QFileInfo(file).isWritable());
    }

private:
    Outcome perform(const QString &operation, Disk &disk = Disk::real()) const
    {
        if (operation == "replace"_s)
            return disk.replace(path("new"), path("b"));
        return operation == "remove"_s ? disk.remove(path("b")) : disk.syncAll({path("b")});
    }
};

QTEST_GUILESS_MAIN(tst_WindowsFiles)
#include "tst_windowsfiles.moc"
