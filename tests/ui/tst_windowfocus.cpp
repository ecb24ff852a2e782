#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"

#include "ui/windowhost.h"

#include <QAccessible>
#include <QProgressBar>

using namespace tarvel4;

/** Where the focus goes when what had it is disabled or gone, and what a screen reader is told. */
class tst_WindowFocus : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void stepsTellTheirShortcuts_data()
    {
        const Table<QString> row;
        row("actionItalian", "Sincronizza song con il database K-Varo (Ctrl+U)");
        row("actionEnglish", "Synchronise songs with the K-Varo database (Ctrl+U)");
    }
    void stepsTellTheirShortcuts()
    {
        const auto [sync] = cells<QString>();
        openWindow();
        trigger(QTest::currentDataTag());
        QCOMPARE(find<QWidget>("updateDataToolButton")->toolTip(), sync);
        QVERIFY(
            find<QWidget>("selectDirToolButton")->toolTip().endsWith(QLatin1String(" (Ctrl+O)")));
        QVERIFY(find<QWidget>("transferFilesToolButton")
                    ->toolTip()
                    .endsWith(QLatin1String(" (Ctrl+T)")));
    }

    /** In the menu bar, where an entry shows it, or in a tool tip. */
    void everyShortcutOfTheWindowIsShown()
    {
        openWindow();
        QStringList shown;
        for (const QMenu *menu : m_window->findChildren<QMenu *>()) {
            for (const QAction *action : menu->actions())
                shown.append(action->shortcut().toString());
        }
        int count = 0;
        for (const QAction *action : m_window->findChildren<QAction *>()) {
            if (action->shortcut().isEmpty())
                continue;
            ++count;
            QVERIFY2(shown.contains(action->shortcut().toString()),
                     qPrintable(action->objectName()));
        }
        for (const QAbstractButton *button : m_window->findChildren<QAbstractButton *>()) {
            const QKeySequence key = button->shortcut();
            if (key.isEmpty() || key == QKeySequence::mnemonic(button->text()))
                continue;
            ++count;
            QVERIFY2(button->toolTip().contains(key.toString(QKeySequence::NativeText)),
                     qPrintable(button->objectName()));
        }
        QVERIFY(count >= 9);
    }

    void stepThatIsPressedKeepsTheFocusOrGivesItToTheNext_data()
    {
        const Table<QString, QString> row;
        row("updateDataToolButton, cancelled", "abortPushButton", "updateDataToolButton");
        row("updateDataToolButton, done", "exitPushButton", "transferFilesToolButton");
        row("transferFilesToolButton, cancelled", "", "transferFilesToolButton");
        row("transferFilesToolButton, done", "copied", "transferFilesToolButton");
    }
    void stepThatIsPressedKeepsTheFocusOrGivesItToTheNext()
    {
        const auto [answer, expected] = cells<QString, QString>();
        const QString step = QString::fromLatin1(QTest::currentDataTag()).section(u',', 0, 0);
        openWindowWithoutSummaries();
        import(threeSongs());
        activate(*m_window);
        auto *button = find<QWidget>(qPrintable(step));
        button->setFocus();
        if (step == text("updateDataToolButton")) {
            m_driver->click<BackupDialog>(answer);
        } else if (answer.isEmpty()) {
            m_driver->closeFrame<QFileDialog>();
        } else {
            QDir().mkpath(path("card/music"));
            m_driver->chooseFiles({path("card/music")});
            m_driver->answerBox(QMessageBox::Ok);
        }
        QTest::keyClick(button, Qt::Key_Space);
        QCOMPARE(m_window->focusWidget()->objectName(), expected);
        QVERIFY(m_window->focusWidget()->isEnabled());
    }

    void songStaysTheCurrentOneWhenTheTableIsReadAgain()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        table()->sortByColumn(Title, Qt::AscendingOrder);
        const int row = static_cast<int>(column(Name).indexOf(text("a.mid")));
        table()->setCurrentIndex(model()->index(row, Title));
        table()->setFocus();
        m_driver->click<BackupDialog>("exitPushButton");
        find<QAbstractButton>("updateDataToolButton")->click();
        const QModelIndex current = table()->currentIndex();
        QCOMPARE(current.sibling(current.row(), Name).data().toString(), text("a.mid"));
        QCOMPARE(m_window->focusWidget(), table());
    }

    void rowsAreRemovedOneAfterAnotherByTheKeyboardAlone()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        activate(*m_window);
        table()->setFocus();
        QTest::keyClick(table(), Qt::Key_Down);
        for (int left = 2; left >= 0; --left) {
            m_driver->expect<QMenu>([](QMenu &menu) {
                QTest::keyClick(&menu, Qt::Key_Down);
                QTest::keyClick(&menu, Qt::Key_Return);
            });
            pressMenuKey(*table());
            QCOMPARE(model()->rowCount(), left);
            QCOMPARE(m_window->focusWidget(), table());
            QCOMPARE(table()->currentIndex().isValid(), left > 0);
        }
    }

    void endOfAJobIsTold()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        auto *notification = find<QWidget>("announcement");
        const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(notification);
        QCOMPARE(reader->role(), QAccessible::Notification);
        QCOMPARE(reader->text(QAccessible::Name), text("Importazione: 3 importate"));
        QVERIFY(!reader->state().invisible);
    }

    void cancelledJobIsTold()
    {
        WindowHost host(nullptr);
        QWidget window;
        window.show();
        host.over(window, [&host, &window] {
            host.beginProgress({text("x"), text("y"), text("z")}, 3);
            const auto *notification = child<QWidget>(window, "announcement");
            QCOMPARE(notification->accessibleName(), text("y"));
            ProgressWatcher::cancel(
                *qobject_cast<QProgressDialog *>(QApplication::activeModalWidget()));
            host.endProgress();
            QCOMPARE(notification->accessibleName(), text("Lavoro interrotto"));
        });
    }

    void progressIsExactWhereNobodyListens()
    {
        WindowHost host(nullptr);
        QWidget window;
        window.show();
        host.over(window, [&host] {
            host.beginProgress({text("x"), text("y"), text("z")}, 3000);
            const auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            for (int song = 1; song <= 50; ++song) {
                host.setProgress(song);
                QCOMPARE(dialog->value(), song);
            }
            host.endProgress();
        });
    }

private:
    /** Shift+F10, of which Windows tells a window only that its menu is wanted. */
    static void pressMenuKey(QWidget &widget)
    {
#ifdef Q_OS_WIN
        const QPoint place = widget.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, place, widget.mapToGlobal(place));
        QApplication::sendEvent(&widget, &event);
#else
        QTest::keyClick(&widget, Qt::Key_F10, Qt::ShiftModifier);
#endif
    }
};

QTEST_MAIN(tst_WindowFocus)
#include "tst_windowfocus.moc"
