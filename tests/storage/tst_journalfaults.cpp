#include "tests/storage/savefixture.h"
#include "tests/storage/tmpfsmount.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

using namespace tarvel4;
using namespace SongBytes;

/** A journal that can't be used stops no save, and the user is told once. */
class tst_JournalFaults : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void anUnusableJournalIsSetAside_data()
    {
        const Table<QString, bool, int> row; // runs: afterwards
        row("of text", "text", true, 1);
        row("of zeros", "zeros", true, 1);
        row("cut to its half", "half", true, 1);
        row("cut to its first page", "page", true, 1);
        row("whose pages hold garbage", "garbage", true, 1);
        row("of a newer version", "newer", true, 1);
        row("of another program", "foreign", true, 1);
        row("but an empty file is only filled", "empty", false, 1);
        row("but a whole one is not", "whole", false, 2);
        row("but one that was deleted is made anew", "deleted", false, 1);
    }
    void anUnusableJournalIsSetAside()
    {
        const auto [state, isSetAside, runs] = cells<QString, bool, int>();
        spoil(state);
        const QByteArray spoilt = read(journalPath());
        QStringList said;
        Journal journal(journalFolder(), [&](const QString &sentence) { said += sentence; });
        const QString file = write(path("a.mid"), "old");
        QVERIFY(save(journal, file, "new"));
        QCOMPARE(read(file), QByteArray("new"));
        QCOMPARE(journal.runs()->size(), runs);
        QCOMPARE(journal.songsOf(journal.runs()->first().id).first().path, file);

        const QStringList aside = QDir(journalFolder()).entryList({"journal-*.db"_s});
        QCOMPARE(aside.size(), isSetAside ? 1 : 0);
        QCOMPARE(said.size(), isSetAside ? 1 : 0);
        if (isSetAside) {
            QCOMPARE(read(journalFolder() + QLatin1Char('/') + aside.first()), spoilt);
            QVERIFY2(said.first().contains(aside.first()), qPrintable(said.first()));
            QCOMPARE(said.first().contains("versione"_s), state == "newer"_s);
        }
        QVERIFY(save(journal, file, "newer"));
        QCOMPARE(said.size(), isSetAside ? 1 : 0);
    }

    void aJournalThatCantBeWrittenIsGoneWithout_data()
    {
        const Table<QString> row;
        row("a folder in its place", "folder");
        row("a file in its folder's place", "file");
        row("a volume that is read-only", "read-only");
        row("a volume that is full", "full");
        row("a volume without room for its first tables", "tiny");
        row("another program that keeps it locked", "locked");
    }
    void aJournalThatCantBeWrittenIsGoneWithout()
    {
        const auto [fault] = cells<QString>();
        std::unique_ptr<TmpfsMount> volume;
        if (fault == "read-only"_s || fault == "full"_s || fault == "tiny"_s) {
            volume = std::make_unique<TmpfsMount>(journalFolder(),
                                                  fault == "tiny"_s ? "size=8k" : "size=1m");
            if (!volume->isMounted())
                QSKIP("A volume can't be mounted here");
        }
        QVERIFY(makeUnwritable(fault, volume.get()));
        QStringList said;
        Journal journal(journalFolder(), [&](const QString &sentence) { said += sentence; });
        const QString file = write(path("a.mid"), "old");
        const QString other = write(path("b.mid"), "old");
        {
            Journal::Run run(journal, "edit"_s);
            SaveBatch batch(Disk::real(), &run);
            for (const QString &song : {file, other}) {
                Outcome outcome;
                add(batch, song, Way::InPlace, QByteArray(60'000, 'n'), &outcome);
                batch.commit();
                QVERIFY(outcome);
                QCOMPARE(read(song), QByteArray(60'000, 'n'));
            }
        }
        QVERIFY2(said.size() == 1, qPrintable(said.join(QLatin1Char('|'))));
        QVERIFY(said.first().contains(journalPath()));
        QVERIFY(QDir(journalFolder()).entryList({"journal-*.db"_s}).isEmpty());
        if (fault != "locked"_s)
            return;
        letGo();
        QVERIFY(save(journal, file, "newer"));
        QCOMPARE(journal.runs()->size(), 1);
    }

    void aJournalThatBreaksDuringARun_data()
    {
        const Table<QString> row;
        row("deleted between two batches: the save goes on", "deleted");
        row("overwritten by garbage: the next run finds that", "garbage");
        row("full: the rest is saved without it", "full");
    }
    void aJournalThatBreaksDuringARun()
    {
        const auto [fault] = cells<QString>();
        const TmpfsMount volume(journalFolder(), "size=2m");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        QStringList said;
        Journal journal(journalFolder(), [&](const QString &sentence) { said += sentence; });
        const QByteArrayList bytes{"1", QByteArray(60'000, '2'), QByteArray(60'000, '3')};
        {
            Journal::Run run(journal, "edit"_s);
            SaveBatch batch(Disk::real(), &run);
            for (int i = 0; i < bytes.size(); ++i) {
                const QString file = write(path(QString::number(i)), QByteArray(60'000, 'o'));
                Outcome outcome;
                add(batch, file, Way::InPlace, bytes.at(i), &outcome);
                batch.commit();
                QVERIFY(outcome);
                QCOMPARE(read(file), bytes.at(i));
                if (i == 0)
                    QVERIFY(breakOpenOne(fault));
            }
        }
        QVERIFY(save(journal, path("0"), "next"));
        QCOMPARE(said.size(), fault == "deleted"_s ? 0 : 1);
        if (fault != "full"_s)
            QCOMPARE(journal.runs()->size(), 1);
    }

private:
    /** A journal with one run, or what is left of it. */
    void spoil(const QString &state)
    {
        QDir().mkpath(journalFolder());
        {
            Journal journal(journalFolder());
            if (!save(journal, write(path("earlier"), QByteArray(100'000, 'e')), "new"))
                qFatal("not saved");
        }
        const QByteArray whole = read(journalPath());
        constexpr int pageSize = 16384;
        if (state == "text"_s)
            write(journalPath(), "my notes");
        else if (state == "zeros"_s)
            write(journalPath(), QByteArray(whole.size(), '\0'));
        else if (state == "half"_s)
            write(journalPath(), whole.left(whole.size() / 2));
        else if (state == "page"_s)
            write(journalPath(), whole.left(pageSize));
        else if (state == "garbage"_s)
            write(journalPath(),
                  whole.left(pageSize) + QByteArray(whole.size() - pageSize, '\x5A'));
        else if (state == "empty"_s)
            write(journalPath(), "");
        else if (state == "newer"_s)
            execute(journalPath(), {"PRAGMA user_version=99"});
        else if (state == "deleted"_s)
            QFile::remove(journalPath());
        else if (state == "foreign"_s && QFile::remove(journalPath()))
            execute(journalPath(), {"CREATE TABLE theirs (x)"});
    }

    bool makeUnwritable(const QString &fault, TmpfsMount *volume)
    {
        if (fault == "folder"_s)
            return QDir().mkpath(journalPath());
        if (fault == "file"_s)
            return !write(journalFolder(), "somebody's").isEmpty();
        if (fault == "read-only"_s)
            return volume->makeReadOnly();
        if (fault == "full"_s)
            return fill();
        if (fault == "tiny"_s)
            return true;
        QDir().mkpath(journalFolder());
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE"_s, "lock"_s);
        db.setDatabaseName(journalPath());
        return db.open() && QSqlQuery(db).exec("BEGIN EXCLUSIVE"_s);
    }
    static void letGo()
    {
        QSqlDatabase::database("lock"_s).close();
        QSqlDatabase::removeDatabase("lock"_s);
    }

    bool breakOpenOne(const QString &fault) const
    {
        if (fault == "full"_s)
            return fill();
        bool isDone = true;
        for (const char *suffix : {"", "-wal", "-shm"}) {
            QFile file(journalPath() + QLatin1String(suffix));
            if (fault == "deleted"_s)
                isDone = file.remove() && isDone;
            else if (QLatin1String(suffix) != "-shm"_s)
                isDone = file.open(QIODevice::ReadWrite)
                    && file.write(QByteArray(static_cast<int>(file.size()), '\x5A')) >= 0 && isDone;
        }
        return isDone;
    }

    bool fill() const
    {
        QFile filler(journalFolder() + "/filler"_s);
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return false;
        const QByteArray block(4096, 'x');
        while (filler.write(block) == block.size()) {}
        return true;
    }

    static void execute(const QString &file, const QByteArrayList &statements)
    {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE"_s, "spoil"_s);
            db.setDatabaseName(file);
            if (!db.open())
                qFatal("can't open %s", qPrintable(file));
            for (const QByteArray &statement : statements) {
                if (!QSqlQuery(db).exec(QString::fromLatin1(statement)))
                    qFatal("can't execute %s", statement.constData());
            }
            db.close();
        }
        QSqlDatabase::removeDatabase("spoil"_s);
    }
};

QTEST_GUILESS_MAIN(tst_JournalFaults)
#include "tst_journalfaults.moc"
