#include "ui/songtableview.h"

#include <QStandardItemModel>
#include <QTranslator>
#include <QtTest>

using namespace tarvel4;

/** An empty table says how songs get into it, and a filled one does not. */
class tst_SongTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hint_data();
    void hint();
    void hintFollowsTheLanguage();

private:
    /** True when something is drawn in the middle of the empty part of the view. */
    static QImage middle(SongTableView &view)
    {
        const QRect all = view.viewport()->rect();
        return view.viewport()
            ->grab(QRect(0, all.height() / 4, all.width(), all.height() / 2))
            .toImage();
    }
    static bool isBlank(const QImage &image)
    {
        QImage blank(image.size(), image.format());
        blank.fill(image.pixelColor(0, 0));
        blank.setDevicePixelRatio(image.devicePixelRatio());
        return image == blank;
    }
};

void tst_SongTableView::hint_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("no model: no hint") << -1 << false;
    QTest::newRow("an empty table tells where the songs come from") << 0 << true;
    QTest::newRow("a table with a song has no hint") << 1 << false;
}

void tst_SongTableView::hint()
{
    QFETCH(int, rows);
    QFETCH(bool, isShown);
    SongTableView view;
    view.resize(640, 400);
    QStandardItemModel model(qMax(rows, 0), 2);
    if (rows >= 0)
        view.setModel(&model);
    QCOMPARE(!isBlank(middle(view)), isShown);

    if (rows == 0) {
        model.appendRow(new QStandardItem);
        QVERIFY2(isBlank(middle(view)), "the first song takes the hint away");
    }
}

/** Says the same in other letters. */
class Shouter : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "tarvel4::SongTableView") == 0 ? QString::fromUtf8(source).toUpper()
                                                               : QString();
    }
    bool isEmpty() const override { return false; }
};

void tst_SongTableView::hintFollowsTheLanguage()
{
    SongTableView view;
    view.resize(640, 400);
    QStandardItemModel model(0, 2);
    view.setModel(&model);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QImage before = middle(view);
    Shouter shouter;
    QCoreApplication::installTranslator(&shouter);
    QCoreApplication::processEvents();
    QVERIFY(middle(view) != before);
}

QTEST_MAIN(tst_SongTableView)
#include "tst_songtableview.moc"
