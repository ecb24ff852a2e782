#include "tests/ui/windowtest.h"
#include "ui/windowplace.h"

#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QStandardItemModel>

#include <cstdio>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel4;
using namespace TestFiles;

namespace {

/** A window with a table of three columns, the last one hidden, above a second part. */
class SmallWindow : public QWidget
{
public:
    SmallWindow()
        : model(1, 3)
        , table(new QTableView)
        , splitter(new QSplitter(Qt::Vertical, this))
    {
        table->setModel(&model);
        table->setColumnHidden(2, true);
        splitter->addWidget(table);
        splitter->addWidget(new QWidget);
        splitter->resize(300, 400);
        resize(320, 420);
    }
    QString widths() const
    {
        return text("%1 %2 %3")
            .arg(table->columnWidth(0))
            .arg(table->columnWidth(1))
            .arg(table->isColumnHidden(2) ? text("hidden") : text("shown"));
    }

    QStandardItemModel model;
    QTableView *table;
    QSplitter *splitter;
};

/** Drags the handle between the two parts of a splitter. */
void moveHandle(const QSplitter &splitter, int down)
{
    QWidget *handle = splitter.handle(1);
    const QPoint from = handle->rect().center();
    const QPoint to = from + QPoint(0, down);
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, handle->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, to);
}

} // namespace

/** Where the window stands, its columns and its splitter, from one run to the next. */
class tst_WindowPlace : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void placeSurvivesARestart_data()
    {
        const Table<bool> row;
        row("of a window that is closed", true);
        row("of one that a signal ends", false);
    }
    void placeSurvivesARestart()
    {
        const auto [isClosed] = cells<bool>();
        QRect place;
        QList<int> parts;
        {
            SmallWindow window;
            WindowPlace state(window, *window.table->horizontalHeader(), *window.splitter);
            state.restore();
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            window.setGeometry(110, 120, 360, 470);
            window.table->setColumnWidth(0, 57);
            window.table->setColumnWidth(1, 133);
            QTRY_COMPARE(window.size(), QSize(360, 470));
            moveHandle(*window.splitter, -70);
            place = window.geometry();
            parts = window.splitter->sizes();
            window.splitter->widget(1)->hide(); // as the user left it
            if (isClosed)
                QVERIFY(window.close());
        }
        QVERIFY2(!settings().contains(text("window/geometry")), "the settings stay five");
        SmallWindow window;
        WindowPlace state(window, *window.table->horizontalHeader(), *window.splitter);
        state.restore();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_COMPARE(window.geometry(), place);
        QCOMPARE(window.widths(), text("57 133 hidden"));
        state.shareRoom();
        QCOMPARE(window.splitter->sizes(), parts);
    }

    void panelHasTheHeightThatTheUserGaveIt()
    {
        settings().setValue(text("copyrightAsk"), false);
        const QString song = addSong("a.mid", "Uno");
        const auto openReport = [this, &song] {
            openWindow();
            m_window->resize(1024, 700);
            import({song});
            trigger("actionReport");
        };
        const auto *close = "reportClosePushButton";
        openReport();
        auto *splitter = find<QSplitter>("songsSplitter");
        const QList<int> first = splitter->sizes();
        QVERIFY2(first.at(0) > first.at(1), "at first the table has more");
        moveHandle(*splitter, -40);
        const QList<int> parts = splitter->sizes();
        QVERIFY(parts.at(1) > first.at(1) + 20);
        press(close);
        trigger("actionReport");
        QCOMPARE(splitter->sizes(), parts);
        press(close);
        m_window->close();
        m_window.reset();
        openReport();
        QCOMPARE(find<QSplitter>("songsSplitter")->sizes(), parts);
    }

    void stateThatIsNoneOfOursIsIgnored_data()
    {
        const Table<QByteArray> row;
        row("none", QByteArray());
        row("rubbish", QByteArray("\0\xff[[[=\n%%", 9));
        row("values of another program",
            QByteArray("[window]\ngeometry=640x480\ncolumns=wide narrow x\nsplitter=0 0\n"));
        row("too few and too many", QByteArray("[window]\ncolumns=90 91\nsplitter=1 2 3\n"));
        row("out of all bounds",
            QByteArray("[window]\ncolumns=-5 999999999 80\nsplitter=-100 -100\n"));
        row("numbers that are none", QByteArray("[window]\ncolumns=9999999999999 80 80\n"));
        row("types of Qt's own", QByteArray("[window]\ngeometry=@Variant(\\0\\0\\0\\x7f)\n"));
        row("too large", "[window]\ncolumns=90 91 80\n" + QByteArray(2 << 20, ';'));
    }
    void stateThatIsNoneOfOursIsIgnored()
    {
        const auto [bytes] = cells<QByteArray>();
        SmallWindow fresh;
        const QString widths = fresh.widths();
        const QSize size = fresh.size();
        if (!bytes.isEmpty())
            write(StateFile::path(), bytes);
        SmallWindow window;
        WindowPlace state(window, *window.table->horizontalHeader(), *window.splitter);
        state.restore();
        QCOMPARE(window.widths(), widths);
        QCOMPARE(window.size(), size);
        state.shareRoom();
        const QList<int> parts = window.splitter->sizes();
        QVERIFY2(qAbs(2 * parts.at(0) - 3 * parts.at(1)) <= 3, "three parts to two");
    }

    void stateThatIsNoFileIsLeftAlone_data()
    {
        const Table<bool> row;
        row("a folder", false);
#ifdef Q_OS_UNIX
        row("a pipe that nobody writes into", true);
#endif
    }
    void stateThatIsNoFileIsLeftAlone()
    {
        const auto [isPipe] = cells<bool>();
        QVERIFY(QDir().mkpath(QFileInfo(StateFile::path()).path()));
        const QByteArray name = QFile::encodeName(StateFile::path());
#ifdef Q_OS_UNIX
        if (isPipe)
            QCOMPARE(mkfifo(name.constData(), 0600), 0);
#endif
        if (!isPipe)
            QVERIFY(QDir().mkdir(StateFile::path()));
        SmallWindow window;
        {
            WindowPlace state(window, *window.table->horizontalHeader(), *window.splitter);
            state.restore();
            window.show();
        }
        QVERIFY(isPipe ? std::remove(name.constData()) == 0 : QDir().rmdir(StateFile::path()));
    }

    void framesFitTheScreen_data()
    {
        const Table<QRect, QRect> row;
        row("one that lies there", QRect(10, 20, 800, 600), QRect(10, 20, 800, 600));
        row("one as large as the screen", QRect(0, 0, 1024, 700), QRect(0, 0, 1024, 700));
        row("one that is too large", QRect(0, 0, 1034, 738), QRect(0, 0, 1024, 700));
        row("one that hangs over", QRect(500, 300, 800, 600), QRect(224, 100, 800, 600));
        row("one that begins before the screen", QRect(-50, -20, 800, 600), QRect(0, 0, 800, 600));
        row("one that is gone", QRect(5000, 5000, 800, 600), QRect(224, 100, 800, 600));
    }
    void framesFitTheScreen()
    {
        const auto [frame, place] = cells<QRect, QRect>();
        QCOMPARE(WindowPlace::fitted(frame, QRect(0, 0, 1024, 700)), place);
        QCOMPARE(WindowPlace::fitted(frame.translated(1920, 24), QRect(1920, 24, 1024, 700)),
                 place.translated(1920, 24));
    }

    void windowThatLiesOffTheScreenComesBack()
    {
        openWindowWithoutSummaries();
        const QRect screen = m_window->screen()->availableGeometry();
        m_window->close();
        m_window = std::make_unique<MainWindow>();
        m_window->move(screen.bottomRight() - QPoint(40, 40));
        m_window->show();
        QTRY_VERIFY(screen.contains(m_window->frameGeometry()));
    }

    void windowRemembersItsColumns()
    {
        openWindowWithoutSummaries();
        table()->setColumnWidth(Title, 211);
        m_window.reset();
        openWindow();
        QCOMPARE(table()->columnWidth(Title), 211);
        import(threeSongs());
        QVERIFY2(table()->columnWidth(Title) != 211, "an import fits them to their contents");
    }
};

QTEST_MAIN(tst_WindowPlace)
#include "tst_windowplace.moc"
