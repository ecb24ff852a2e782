#include "tests/ui/windowtest.h"

#include "ui/appearance.h"

#include <QHeaderView>
#include <QScopeGuard>

using namespace tarvel4;

namespace {

/** Of the sorting arrow, for which Qt 6 keeps a place behind a header's text. */
constexpr int arrowWidth = QT_VERSION_MAJOR < 6 ? 0 : 12;

} // namespace

/** How the song table looks: what its columns get, and the row that the mouse is over. */
class tst_WindowColumns : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void numbersAreAlignedToTheRight()
    {
        import({addSong("a.mid", "Uno")});
        for (const int column : {6, 7}) {
            const QVariant alignment =
                model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
            QVERIFY(alignment.toInt() & Qt::AlignRight);
            table()->setColumnWidth(column, 300);
            table()->scrollTo(model()->index(0, column));
            const QImage cell = table()->viewport()->grab(cellOf(0, column)).toImage();
            QVERIFY2(isBlank(cell.copy(0, 0, 200, cell.height())), "the text is at the right end");
            QVERIFY(!isBlank(cell.copy(200, 0, 100, cell.height())));
        }
        QVERIFY(!model()->headerData(Title, Qt::Horizontal, Qt::TextAlignmentRole).isValid());
    }

    void headersStandOverTheTextsOfTheirColumns_data()
    {
        const Table<int> row;
        row("text, to the left", Title);
        row("the first column, with its mark", Type);
        row("time, to the right", 6);
        row("number, to the right", 7);
    }
    void headersStandOverTheTextsOfTheirColumns()
    {
        const auto [column] = cells<int>();
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        qApp->setStyleSheet(qApp->styleSheet()
                            + text("QHeaderView::section { font-weight: normal; }"));
        import({addSong("VOLARE.mid", "Hotel")});
        m_driver->click<BackupDialog>("exitPushButton");
        press("updateDataToolButton");
        const QModelIndex index = model()->index(0, column);
        model()->setHeaderData(column, Qt::Horizontal, index.data());
        table()->setColumnWidth(column, 200);
        table()->scrollTo(index);
        const QRect cell = cellOf(0, column);
        QHeaderView *header = table()->horizontalHeader();
        const QRect section(header->sectionViewportPosition(column), 0, 200, header->height());
        const Ends above = inkOf(*header->viewport(), section);
        const Ends below = inkOf(*table()->viewport(), cell);
        if (column >= 6)
            QCOMPARE(above.last + arrowWidth, below.last);
        else if (column == Type) // where its mark begins, which leaves a seventh of its square free
            QVERIFY2(qAbs(above.first - below.first) <= 2, "the mark");
        else
            QCOMPARE(above.first, below.first);
    }

    void columnsShareTheTable()
    {
        m_window->resize(1200, 700);
        import({addSong("a.mid", QByteArray(300, 'W'))});
        const int all = table()->viewport()->width();
        QCOMPARE(table()->columnWidth(Title), all / 3);
        const QHeaderView *header = table()->horizontalHeader();
        QVERIFY2(header->length() >= all, "the last column takes what is left");
        const int before = table()->columnWidth(Name);
        m_window->resize(1700, 700);
        QTRY_VERIFY(table()->columnWidth(Name) > before);
        QTRY_VERIFY(header->length() == table()->viewport()->width());
        table()->setColumnWidth(Title, 100);
        QCOMPARE(header->length(), table()->viewport()->width());
        table()->setColumnWidth(Title, 3000);
        QVERIFY2(table()->columnWidth(Name) >= header->sectionSizeHint(Name), "never squeezed");
    }

    void noHeaderIsCut()
    {
        for (const char *language : {"actionEnglish", "actionItalian", "actionEnglish"}) {
            for (int column = 0; column < model()->columnCount(); ++column)
                table()->setColumnWidth(column, 40);
            trigger(language);
            const QHeaderView *header = table()->horizontalHeader();
            for (int column = 0; column < model()->columnCount(); ++column)
                QVERIFY(header->isSectionHidden(column)
                        || header->sectionSize(column) >= header->sectionSizeHint(column));
        }
    }

    void mouseMarksTheWholeRow()
    {
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        import({addSong("a.mid", "Uno"), addSong("b.mid", "Due")});
        const auto colour = [this](int row, int column) {
            const QRect cell = cellOf(row, column);
            return table()->viewport()->grab(cell).toImage().pixelColor(cell.width() - 3, 3);
        };
        const QColor before = colour(0, Title);
        hover(centreOf(0, Title));
        for (const int column : {int{Type}, int{Title}, int{Artist}}) {
            QVERIFY(colour(0, column) != before);
            QCOMPARE(colour(1, column), before);
        }
        hover(centreOf(1, Title));
        QCOMPARE(colour(0, Artist), before);
        QVERIFY(colour(1, Artist) != before);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(table()->viewport(), &leave);
        QCOMPARE(colour(1, Artist), before);
    }

private:
    QRect cellOf(int row, int column) const
    {
        return table()->visualRect(model()->index(row, column));
    }
    struct Ends
    {
        int first = -1;
        int last = -1;
    };
    /** Where a text begins and ends, in points of the table, above the border and beside the next
     * column. */
    Ends inkOf(QWidget &viewport, const QRect &place) const
    {
        const QImage image = viewport.grab(place).toImage();
        const auto ratio = static_cast<int>(image.devicePixelRatio());
        const QImage part = image.copy(0, 0, image.width() - 2 * ratio, image.height() - 4 * ratio);
        Ends ends;
        for (int x = 0; x < part.width(); ++x) {
            const QImage line = part.copy(x, 0, 1, part.height());
            if (isBlank(line))
                continue;
            ends.first = ends.first < 0 ? x : ends.first;
            ends.last = x;
        }
        const int left = viewport.mapTo(table(), place.topLeft()).x();
        return {left + ends.first / ratio, left + ends.last / ratio};
    }
    static bool isBlank(const QImage &image)
    {
        QImage blank(image.size(), image.format());
        blank.fill(image.pixelColor(0, 0));
        blank.setDevicePixelRatio(image.devicePixelRatio());
        return image == blank;
    }
    void hover(QPoint place) const
    {
        QHoverEvent event(QEvent::HoverMove, place, place);
        QApplication::sendEvent(table()->viewport(), &event);
    }
};

QTEST_MAIN(tst_WindowColumns)
#include "tst_windowcolumns.moc"
