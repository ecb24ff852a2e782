#include "db/foldedtext.h"
#include "tests/storage/table.h"

#include <QtTest>

using namespace tarvel4;

/** Texts as a search compares them: without case and accents. */
class tst_FoldedText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void folds_data()
    {
        const Table<QString, QString> row;
        row("capitals", "AbC 12", "abc 12");
        row("accents of western Europe", "ÀÈÌÒÙ àèìòù Ñç", "aeiou aeiou nc");
        row("accents that follow their letter", "e\u0301 u\u0308", "e u");
        row("accents of other languages", "Žlutý Ő ǎ", "zluty o a");
        row("letters that become two", "ﬁne Ĳ", "fine ij");
        row("other alphabets", "ΆΒΓ Йод", "αβγ иод");
        row("apostrophes", "l’amore", "l'amore");
    }
    void folds()
    {
        const auto [written, folded] = cells<QString, QString>();
        QCOMPARE(FoldedText::of(written), folded);
    }

    void wordsAreLookedForOnce()
    {
        QCOMPARE(FoldedText::wordsOf(QStringLiteral("  La vita  È la VITA ")),
                 QStringList({"la"_s, "vita"_s, "e"_s}));
        QCOMPARE(FoldedText::wordsOf(QStringLiteral("\u0301 ")), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_FoldedText)
#include "tst_foldedtext.moc"
