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
    void importCantBeInterrupted_data();
    void importCantBeInterrupted();
    void nextStepsAreDisabledMeanwhile();
    void windowCantBeUsedMeanwhile();
    void windowCantBeClosedMeanwhile();

private:
    QStringList threeSongs()
    {
        return {m_window->addSong(QStringLiteral("c.mid"), "Uno"),
                m_window->addSong(QStringLiteral("a.mid"), "Tre"),
                m_window->addSong(QStringLiteral("b.kar"), "Due", false)};
    }

    QScopedPointer<WindowFixture> m_window;
};

void tst_WindowProgress::init()
{
    m_window.reset(new WindowFixture);
    m_window->settings().setValue(QStringLiteral("copyrightAsk"), false);
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
    QCOMPARE(watcher.seen,
             QStringList({QStringLiteral("Lettura file|Importo la libreria...|Interrompi|3")}));
    QCOMPARE(modality, Qt::WindowModal);
    QCOMPARE(watcher.labels,
             QStringList(
                 {QStringLiteral("1 di 3"), QStringLiteral("2 di 3"), QStringLiteral("3 di 3")}));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WindowProgress::importCantBeInterrupted_data()
{
    QTest::addColumn<int>("road");
    QTest::newRow("by its button") << 0;
    QTest::newRow("by Escape") << 1;
    QTest::newRow("by the frame of its progress") << 2;
}

void tst_WindowProgress::importCantBeInterrupted()
{
    QFETCH(int, road);
    ProgressWatcher watcher;
    watcher.onValue = [road](QProgressDialog &dialog, int value) {
        if (value == 1 && road == 0)
            dialog.findChild<QAbstractButton *>()->click();
        else if (value == 1 && road == 1)
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else if (value == 1)
            dialog.close();
        QVERIFY2(dialog.isVisible(), "the window is not given free");
    };
    m_window->import(threeSongs());
    QCOMPARE(m_window->model()->rowCount(), 3);
}

void tst_WindowProgress::nextStepsAreDisabledMeanwhile()
{
    m_window->import(threeSongs());
    ProgressWatcher watcher;
    int enabled = 0;
    watcher.onValue = [&](QProgressDialog &dialog, int value) {
        Q_UNUSED(dialog)
        Q_UNUSED(value)
        for (const char *step : {"updateDataToolButton", "transferFilesToolButton"})
            enabled += m_window->enabled(step) ? 1 : 0;
    };
    m_window->import(threeSongs());
    QCOMPARE(watcher.labels.size(), 3);
    QCOMPARE(enabled, 0);
}

void tst_WindowProgress::windowCantBeUsedMeanwhile()
{
    ProgressWatcher watcher;
    const auto *button = m_window->find<QToolButton>("selectDirToolButton");
    watcher.onValue = [this, button](QProgressDialog &dialog, int value) {
        Q_UNUSED(dialog)
        Q_UNUSED(value)
        const QPoint place = button->mapTo(m_window->window.get(), button->rect().center());
        QTest::mouseClick(m_window->window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    };
    m_window->import(threeSongs()); // a second file dialog is not expected and fails the row
    QCOMPARE(watcher.labels.size(), 3);
    QCOMPARE(m_window->model()->rowCount(), 3);
}

void tst_WindowProgress::windowCantBeClosedMeanwhile()
{
    ProgressWatcher watcher;
    watcher.onValue = [this](QProgressDialog &dialog, int value) {
        Q_UNUSED(dialog)
        Q_UNUSED(value)
        QVERIFY(!m_window->window->close());
    };
    m_window->import(threeSongs());
    QVERIFY(m_window->window->isVisible());
    QVERIFY(m_window->window->close());
}

QTEST_MAIN(tst_WindowProgress)
#include "tst_windowprogress.moc"
