#include "storage/splice.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;

/** The one stretch in which two texts differ, and both of them again from it. */
class tst_Splice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void between_data()
    {
        const Table<QByteArray, QByteArray, int, int, QByteArray, QByteArray> row;
        row("two empty texts have nothing in common and nothing apart", "", "", 0, 0, "", "");
        row("equal texts are all prefix", "same", "same", 4, 0, "", "");
        row("a text that comes out of nothing is all new", "", "new", 0, 0, "", "new");
        row("a text that goes is all old", "old", "", 0, 0, "old", "");
        row("texts without a common end are exchanged whole", "abc", "xyz", 0, 0, "abc", "xyz");
        row("a change in the middle is all that is kept", "a title b", "a tune b", 3, 3, "itl",
            "un");
        row("a change at the start has no prefix", "Xabc", "YYabc", 0, 3, "X", "YY");
        row("a change at the end has no suffix", "abcX", "abcYY", 3, 0, "X", "YY");
        row("a byte that stands in both prefix and suffix counts once as a text grows", "aa", "aaa",
            2, 0, "", "a");
        row("a byte that stands in both prefix and suffix counts once as a text shrinks", "aaa",
            "aa", 2, 0, "a", "");
        row("a repeated stretch is not taken twice", "abcabc", "abcabcabc", 6, 0, "", "abc");
        row("nor where one of it goes", "xabab", "xab", 3, 0, "ab", "");
    }
    void between()
    {
        const auto [oldBytes, newBytes, prefix, suffix, oldMiddle, newMiddle] =
            cells<QByteArray, QByteArray, int, int, QByteArray, QByteArray>();
        const Splice splice = Splice::between(oldBytes, newBytes);
        QCOMPARE(static_cast<int>(splice.prefix), prefix);
        QCOMPARE(static_cast<int>(splice.suffix), suffix);
        QCOMPARE(splice.oldMiddle, oldMiddle);
        QCOMPARE(splice.newMiddle, newMiddle);
        QCOMPARE(splice.newOf(oldBytes), newBytes);
        QCOMPARE(splice.oldOf(newBytes), oldBytes);
    }

    void theRestBelongsToTheSuffix()
    {
        const QByteArray rest = "the audio behind the tag";
        const Splice splice = Splice::between("tag one.", "tag three.", rest.size());
        QCOMPARE(static_cast<int>(splice.suffix), 2 + rest.size());
        QCOMPARE(splice.newOf("tag one." + rest), "tag three." + rest);
        QCOMPARE(splice.oldOf("tag three." + rest), "tag one." + rest);
    }

    /** They are compared by the block. */
    void aByteThatDiffersIsFoundWhereverItStands()
    {
        QByteArray oldBytes(700, 'a');
        for (int i = 0; i < oldBytes.size(); ++i)
            oldBytes[i] = static_cast<char>(i * i + i / 7);
        for (int at = 0; at < oldBytes.size(); ++at) {
            QByteArray newBytes = oldBytes;
            newBytes[at] = static_cast<char>(newBytes.at(at) ^ 1);
            const Splice splice = Splice::between(oldBytes, newBytes);
            QCOMPARE(static_cast<int>(splice.prefix), at);
            QCOMPARE(static_cast<int>(splice.suffix), oldBytes.size() - at - 1);
        }
    }

    void everyPairOfShortTextsComesBack()
    {
        const QByteArrayList texts = allTexts(5);
        for (const QByteArray &oldBytes : texts) {
            for (const QByteArray &newBytes : texts) {
                const Splice splice = Splice::between(oldBytes, newBytes);
                QVERIFY(splice.newOf(oldBytes) == newBytes && splice.oldOf(newBytes) == oldBytes);
                QCOMPARE(splice.prefix + splice.suffix + splice.oldMiddle.size(),
                         static_cast<qint64>(oldBytes.size()));
            }
        }
    }

private:
    /** Every text of up to \a longest letters, each of them "a" or "b". */
    static QByteArrayList allTexts(int longest)
    {
        QByteArrayList texts{""};
        for (int i = 0; i < texts.size(); ++i) {
            if (texts.at(i).size() < longest)
                texts << texts.at(i) + 'a' << texts.at(i) + 'b';
        }
        return texts;
    }
};

QTEST_GUILESS_MAIN(tst_Splice)
#include "tst_splice.moc"
