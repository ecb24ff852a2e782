#include "storage/contenthash.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;
using namespace SongBytes;

/** The hash by which a file is known again, against values of another program (xxhsum -H2). */
class tst_ContentHash : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void hash_data()
    {
        const Table<QByteArray, QByteArray> row;
        row("of nothing", {}, QByteArray("99aa06d3014798d86001c324468d497f"));
        row("of a title", QByteArray("Nel blu dipinto di blu"),
            QByteArray("54330b315c9082261b530f1043b2b4de"));
        row("of a song of several blocks, whose last one is not full", longText(),
            QByteArray("fa69b0fe764131a5631d9e1c5110ba67"));
    }
    void hash()
    {
        const auto [bytes, expected] = cells<QByteArray, QByteArray>();
        ContentHash whole;
        whole.add(bytes);
        QCOMPARE(whole.result().toHex(), expected);
        QCOMPARE(whole.result().size(), ContentHash::size);

        ContentHash inParts;
        constexpr int part = 999'983;
        for (int i = 0; i < bytes.size(); i += part)
            inParts.add(bytes.mid(i, part));
        QCOMPARE(inParts.result().toHex(), expected);

        Outcome outcome;
        QCOMPARE(ContentHash::ofFile(write(path("a.mid"), bytes), outcome).toHex(), expected);
        QVERIFY(outcome);
    }

    void whatCantBeReadHasNoHash_data()
    {
        const Table<QString, QString> row;
        row("a file that is gone", "", "not-found");
        row("a folder", "folder", "not-a-file");
        row("a FIFO, for which nobody waits", "fifo", "not-a-file");
    }
    void whatCantBeReadHasNoHash()
    {
        const auto [what, code] = cells<QString, QString>();
        SKIP_WITHOUT_UNIX(what == "fifo"_s, "FIFO");
        const QString file = path("a.mid");
        if (what == "folder"_s)
            QVERIFY(QDir().mkdir(file));
        if (what == "fifo"_s)
            QVERIFY(UnixFile::makeFifo(file));
        Outcome outcome;
        QVERIFY(ContentHash::ofFile(file, outcome).isEmpty());
        QCOMPARE(outcome.codeName(), code);
    }

private:
    static QByteArray longText()
    {
        QByteArray bytes(3'000'000, '\0');
        for (int i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>((i * 7 + 3) & 0xFF);
        return bytes;
    }
};

QTEST_GUILESS_MAIN(tst_ContentHash)
#include "tst_contenthash.moc"
