#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"

using namespace tarvel4;

/** What a user sees and can do while an import runs. */
class tst_WindowProgress : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void progressIsShown()
    {
        ProgressWatcher watcher;
        Qt::WindowModality modality = Qt::NonModal;
        watcher.onShow = [&](QProgressDialog &dialog) {
            modality = dialog.windowModality();
            QCOMPARE(dialog.parentWidget(), m_window.get());
        };
        import(threeSongs());
        QCOMPARE(watcher.seen, strings({"Lettura file|Importo la libreria...|Interrompi|3"}));
        QCOMPARE(modality, Qt::WindowModal);
        QCOMPARE(watcher.labels, strings({"1 di 3", "2 di 3", "3 di 3"}));
        QVERIFY(!QApplication::activeModalWidget());
    }

    /** Neither its button nor Escape nor the frame of its progress ends an import. */
    void importCantBeInterrupted()
    {
        for (int way = 0; way < 3; ++way) {
            ProgressWatcher watcher;
            watcher.onValue = [way](QProgressDialog &dialog, int value) {
                if (value == 1 && way == 0)
                    ProgressWatcher::cancel(dialog);
                else if (value == 1 && way == 1)
                    QTest::keyClick(&dialog, Qt::Key_Escape);
                else if (value == 1)
                    dialog.close();
                QVERIFY2(dialog.isVisible(), "the window is not given free");
            };
            import(threeSongs());
            QCOMPARE(model()->rowCount(), 3);
        }
    }

    void windowCantBeUsedMeanwhile()
    {
        import(threeSongs());
        ProgressWatcher watcher;
        const auto *button = find<QToolButton>("selectDirToolButton");
        watcher.onValue = [&](QProgressDialog &, int) {
            QVERIFY(!enabledSteps().contains(text("updateData")));
            QVERIFY(!enabledSteps().contains(text("transferFiles")));
            // a second file dialog is not expected and fails the test
            const QPoint place = button->mapTo(m_window.get(), button->rect().center());
            QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
            QVERIFY(!m_window->close());
        };
        import(threeSongs());
        QCOMPARE(watcher.labels.size(), 3);
        QCOMPARE(model()->rowCount(), 3);
        QVERIFY(m_window->isVisible());
        QVERIFY(m_window->close());
    }
};

QTEST_MAIN(tst_WindowProgress)
#include "tst_windowprogress.moc"
