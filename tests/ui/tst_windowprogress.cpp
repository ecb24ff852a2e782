#include "tests/library/texts.h"
#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowfixture.h"

using namespace tarvel4;

/** What a user sees and can do while an import runs. */
class tst_WindowProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void progressIsShown();
    void importCantBeInterrupted();
    void windowCantBeUsedMeanwhile();

private:
    QStringList threeSongs()
    {
        return {m_window->addSong(text("c.mid"), "Uno"), m_window->addSong(text("a.mid"), "Tre"),
                m_window->addSong(text("b.kar"), "Due", false)};
    }

    QScopedPointer<WindowFixture> m_window;
};

void tst_WindowProgress::init()
{
    m_window.reset(new WindowFixture);
    m_window->settings().setValue(text("copyrightAsk"), false);
    m_window->settings().sync();
    m_window->open();
}

void tst_WindowProgress::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowProgress::progressIsShown()
{
    ProgressWatcher watcher;
    Qt::WindowModality modality = Qt::NonModal;
    watcher.onShow = [&](QProgressDialog &dialog) {
        modality = dialog.windowModality();
        QCOMPARE(dialog.parentWidget(), m_window->window.get());
    };
    m_window->import(threeSongs());
    QCOMPARE(watcher.seen, strings({"Lettura file|Importo la libreria...|Interrompi|3"}));
    QCOMPARE(modality, Qt::WindowModal);
    QCOMPARE(watcher.labels, strings({"1 di 3", "2 di 3", "3 di 3"}));
    QVERIFY(!QApplication::activeModalWidget());
}

/** Neither its button nor Escape nor the frame of its progress ends an import. */
void tst_WindowProgress::importCantBeInterrupted()
{
    for (int way = 0; way < 3; ++way) {
        ProgressWatcher watcher;
        watcher.onValue = [way](QProgressDialog &dialog, int value) {
            if (value == 1 && way == 0)
                dialog.findChild<QAbstractButton *>()->click();
            else if (value == 1 && way == 1)
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else if (value == 1)
                dialog.close();
            QVERIFY2(dialog.isVisible(), "the window is not given free");
        };
        m_window->import(threeSongs());
        QCOMPARE(m_window->model()->rowCount(), 3);
    }
}

void tst_WindowProgress::windowCantBeUsedMeanwhile()
{
    m_window->import(threeSongs());
    ProgressWatcher watcher;
    const auto *button = m_window->find<QToolButton>("selectDirToolButton");
    watcher.onValue = [&](QProgressDialog &, int) {
        for (const char *step : {"updateDataToolButton", "transferFilesToolButton"})
            QVERIFY2(!m_window->enabled(step), step);
        // a second file dialog is not expected and fails the test
        const QPoint place = button->mapTo(m_window->window.get(), button->rect().center());
        QTest::mouseClick(m_window->window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
        QVERIFY(!m_window->window->close());
    };
    m_window->import(threeSongs());
    QCOMPARE(watcher.labels.size(), 3);
    QCOMPARE(m_window->model()->rowCount(), 3);
    QVERIFY(m_window->window->isVisible());
    QVERIFY(m_window->window->close());
}

QTEST_MAIN(tst_WindowProgress)
#include "tst_windowprogress.moc"
