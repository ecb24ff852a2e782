#include "tests/ui/windowtest.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>

using namespace tarvel4;

/** Sorting the song table, by its headers and by the menu, and what stays then. */
class tst_WindowSort : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void keepsTheSelectedSongInSight()
    {
        import(manySongs(400));
        table()->selectRow(5);
        const QString name = songNameOf(table()->currentIndex());
        for (const bool byMenu : {false, true}) {
            sortByTitle(byMenu);
            const QModelIndex current = table()->currentIndex();
            QCOMPARE(current.row(), 394);
            QCOMPARE(songNameOf(current), name);
            QVERIFY(table()->selectionModel()->isRowSelected(394, QModelIndex()));
            QVERIFY(table()->viewport()->rect().contains(table()->visualRect(current).center()));
            entry("Nome file")->trigger();
            QCOMPARE(table()->currentIndex().row(), 5);
        }
    }

    void keepsRowsHidden()
    {
        import(manySongs(400));
        find<QLineEdit>("searchLineEdit")->setText(text("s39"));
        const QStringList names = shownNames();
        QCOMPARE(names.size(), 10);
        for (const bool byMenu : {false, true}) {
            sortByTitle(byMenu);
            QCOMPARE(shownNames(), QStringList(names.rbegin(), names.rend()));
            entry("Nome file")->trigger();
            QCOMPARE(shownNames(), names);
        }
    }

    void menuSortsByEachColumn()
    {
        int columns = 0;
        for (QAction *entry : entries()) {
            if (entry->isSeparator())
                break;
            entry->trigger();
            const int column = header()->sortIndicatorSection();
            QCOMPARE(wordsOf(*entry), model()->headerData(column, Qt::Horizontal).toString());
            QVERIFY(!table()->isColumnHidden(column));
            ++columns;
        }
        QCOMPARE(columns, 9);
    }

    void menuAndHeadersTellTheSameOrder()
    {
        import(manySongs(3));
        const QStringList up = column(Name);
        const QStringList down{up.at(2), up.at(1), up.at(0)};
        QCOMPARE(ticked(), QString());
        QVERIFY2(!entry("Decrescente")->isEnabled(), "of which column?");
        entry("Titolo")->trigger();
        QCOMPARE(column(Name), down);
        QCOMPARE(ticked(), text("Titolo Crescente"));
        entry("Decrescente")->trigger();
        QCOMPARE(column(Name), up);
        entry("Titolo")->trigger(); // again: unlike a header it is no switch
        QCOMPARE(ticked(), text("Titolo Decrescente"));
        clickHeader(Name);
        QCOMPARE(ticked(), text("Nome file Crescente"));
        clickHeader(Name);
        QCOMPARE(ticked(), text("Nome file Decrescente"));
        QCOMPARE(column(Name), down);
        trigger("actionEnglish");
        QCOMPARE(ticked(), text("File name Descending"));
        entry("Ascending")->trigger();
        QCOMPARE(column(Name), up);
        QCOMPARE(header()->sortIndicatorOrder(), Qt::AscendingOrder);
    }

private:
    QHeaderView *header() const { return table()->horizontalHeader(); }
    QList<QAction *> entries() const { return find<QMenu>("menuSort")->actions(); }
    static QString wordsOf(const QAction &entry) { return entry.text().remove(QLatin1Char('&')); }
    QAction *entry(const char *words) const
    {
        for (QAction *entry : entries()) {
            if (wordsOf(*entry) == text(words))
                return entry;
        }
        qFatal("no such entry");
    }
    QString ticked() const
    {
        QStringList words;
        for (const QAction *entry : entries()) {
            if (entry->isChecked())
                words += wordsOf(*entry);
        }
        return words.join(QLatin1Char(' '));
    }

    void clickHeader(Column column) const
    {
        const QPoint place(header()->sectionViewportPosition(column) + 20, header()->height() / 2);
        QTest::mouseClick(header()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    void sortByTitle(bool byMenu) const
    {
        if (byMenu)
            entry("Titolo")->trigger();
        else
            clickHeader(Title);
    }
};

QTEST_MAIN(tst_WindowSort)
#include "tst_windowsort.moc"
