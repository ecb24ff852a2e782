#include "tests/storage/unixfile.h"
#include "tests/ui/progresswatcher.h"
#include "tests/ui/undotest.h"
#include "ui/appearance.h"
#include "ui/previewdialog.h"

#include <QAccessible>
#include <QPushButton>

using namespace tarvel4;
using namespace TestFiles;

namespace {

QTableView *listOf(const PreviewDialog &dialog)
{
    return child<QTableView>(dialog, "previewTableView");
}

/** "NAME|OUTCOME|FIELD|NOW|AFTERWARDS" of each row. */
QStringList rowsOf(const PreviewDialog &dialog)
{
    const QAbstractItemModel *model = listOf(dialog)->model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells += model->index(row, column).data().toString();
        rows += cells.join(QLatin1Char('|'));
    }
    return rows;
}

QString headingOf(const PreviewDialog &dialog)
{
    return child<QLabel>(dialog, "previewHeadingLabel")->text();
}

} // namespace

/** What a synchronisation would change can be seen before it is begun, and before its backup. */
class tst_SyncPreview : public UndoTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindow();
    }
    void cleanup() { closeWindow(); }

    void songsAreShownFieldByField()
    {
        importOnly(
            {addSong("nobody.mid", "N"), addSong("volare.mid", "VOL"),
             write(path("songs/azzurro.kar"), SongBytes::midi0(SongBytes::meta(3, "Mine")))});
        previewFromMenu([](PreviewDialog &dialog) {
            QCOMPARE(headingOf(dialog),
                     text("Anteprima della sincronizzazione: 1 da confermare, 1 da aggiornare, "
                          "1 non nel catalogo"));
            QCOMPARE(
                rowsOf(dialog),
                strings({"azzurro.kar|da confermare|Interprete||A. Celentano", "||Genere||ROCK",
                         "||Autore||Conte", "volare.mid|da aggiornare|Titolo|VOL|Volare",
                         "||Interprete||D. Modugno", "||Genere||POP", "||Autore||Migliacci",
                         "||Durata|00:00|03:20", "||Tempo (BPM)|0|100", "||Tonalità||C",
                         "nobody.mid|non nel catalogo|||non trovata né per nome né per "
                         "titolo"}));
        });
    }

    void nameThatLooksLikeHtmlIsToldAsItIs()
    {
        SKIP_WITHOUT_UNIX(true, "such names");
        const QString song = addSong("<i>nobody.mid", "N");
        importOnly({song});
        previewFromMenu([song](PreviewDialog &dialog) {
            QCOMPARE(listOf(dialog)->model()->index(0, 0).data(Qt::ToolTipRole).toString(),
                     text("<p>%1</p>").arg(QDir::toNativeSeparators(song).toHtmlEscaped()));
        });
    }

    void nothingIsWritten_data()
    {
        const Table<bool> row;
        row("from the menu", true);
        row("from the question about the backup", false);
    }
    void nothingIsWritten()
    {
        const auto [fromMenu] = cells<bool>();
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        importOnly(songs);
        make(text("edit")); // so that there is a journal
        const QVector<QByteArray> now = bytesOf(songs);
        QVERIFY(now != before);
        const QByteArray journal = read(journalPath());
        const QStringList names = namesIn(path("songs"));
        const QString rows = statuses();
        if (fromMenu)
            previewFromMenu([](PreviewDialog &dialog) { QVERIFY(rowsOf(dialog).size() > 6); });
        else
            previewFromQuestion([](PreviewDialog &dialog) { QVERIFY(rowsOf(dialog).size() > 6); },
                                "abortPushButton");
        QCOMPARE(bytesOf(songs), now);
        QVERIFY(read(journalPath()) == journal);
        QCOMPARE(namesIn(path("songs")), names);
        QCOMPARE(statuses(), rows);
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    /** The plan is the one that the synchronisation carries out. */
    void synchronisationDoesWhatThePreviewSaid()
    {
        importOnly({addSong("volare.mid", "VOL"), addSong("nobody.mid", "N")});
        QStringList planned;
        previewFromQuestion([&planned](PreviewDialog &dialog) { planned = rowsOf(dialog); },
                            "exitPushButton");
        QCOMPARE(statuses(), text("1 3"));
        QCOMPARE(column(Title), strings({"Volare", "N"}));
        QVERIFY(planned.contains(text("volare.mid|da aggiornare|Titolo|VOL|Volare")));
        QVERIFY(planned.constLast().startsWith(text("nobody.mid|non nel catalogo|")));
    }

    void menuFollowsTheButton()
    {
        const auto *action = find<QAction>("actionPreview");
        QVERIFY(!action->isEnabled());
        importOnly({addSong("volare.mid", "VOL")});
        QVERIFY(action->isEnabled());
        make(text("sync"));
        QVERIFY(!find<QWidget>("updateDataToolButton")->isEnabled());
        QVERIFY(!action->isEnabled());
    }

    void goAheadSynchronises_data()
    {
        const Table<QString, QString> row;
        row("the go-ahead begins the synchronisation", "previewGoPushButton", "1");
        row("closing begins nothing", "previewClosePushButton", "0");
        row("closing by the frame begins nothing", "", "0");
    }
    void goAheadSynchronises()
    {
        const auto [button, status] = cells<QString, QString>();
        importOnly({addSong("volare.mid", "VOL")});
        if (button.isEmpty())
            m_driver->closeFrame<PreviewDialog>();
        else
            m_driver->click<PreviewDialog>(button);
        if (status == text("1"))
            m_driver->click<BackupDialog>("exitPushButton");
        trigger("actionPreview");
        QCOMPARE(statuses(), status);
    }

    void questionStaysAsItWas()
    {
        importOnly({addSong("volare.mid", "VOL")});
        m_driver->click<BackupDialog>("browsePushButton");
        m_driver->chooseFiles({path("backups")});
        m_driver->click<BackupDialog>("previewPushButton");
        m_driver->expect<PreviewDialog>([](PreviewDialog &dialog) {
            QVERIFY(qobject_cast<BackupDialog *>(dialog.parentWidget()));
            QVERIFY(!child(dialog, "previewClosePushButton")->isVisible());
            QCOMPARE(child<QPushButton>(dialog, "previewGoPushButton")->text(),
                     text("Torna alla domanda"));
            click(dialog, "previewGoPushButton");
        });
        m_driver->expect<BackupDialog>([this](BackupDialog &dialog) {
            QCOMPARE(dialog.backupDir(), path("backups"));
            click(dialog, "doBackupPushButton");
        });
        m_driver->answerBox(QMessageBox::Ok);
        press("updateDataToolButton");
        QCOMPARE(statuses(), text("1"));
        QCOMPARE(namesIn(path("backups")).size(), 1);
    }

    void cancelShowsNothing_data()
    {
        const Table<bool> row;
        row("from the menu", true);
        row("from the question about the backup: that waits on", false);
    }
    void cancelShowsNothing()
    {
        const auto [fromMenu] = cells<bool>();
        importOnly({addSong("one/volare.mid", "a"), addSong("azzurro.mid", "b"),
                    addSong("two/volare.mid", "c")});
        QWidget *parent = nullptr;
        ProgressWatcher watcher;
        watcher.onValue = [&parent](QProgressDialog &dialog, int value) {
            parent = dialog.parentWidget();
            if (value == 1)
                ProgressWatcher::cancel(dialog);
        };
        if (fromMenu) {
            trigger("actionPreview"); // a dialog that opens is not expected and fails the row
            QCOMPARE(parent, m_window.get());
        } else {
            m_driver->click<BackupDialog>("previewPushButton");
            m_driver->click<BackupDialog>("abortPushButton");
            press("updateDataToolButton");
            QVERIFY(parent != m_window.get());
        }
        QCOMPARE(watcher.seen, strings({"Anteprima|Cerco che cosa cambierebbe...|Interrompi|3"}));
        QCOMPARE(watcher.labels, strings({"1 di 3"}));
        QCOMPARE(statuses(), text("0 0 0"));
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    void quitEndsThePreview()
    {
        importOnly({addSong("one/volare.mid", "a"), addSong("azzurro.mid", "b")});
        ProgressWatcher watcher;
        watcher.onValue = [this](QProgressDialog &, int) { m_window->quit(); };
        m_driver->click<BackupDialog>("previewPushButton");
        QTimer::singleShot(0, this, [this] { press("updateDataToolButton"); });
        QCOMPARE(QApplication::exec(), 0);
        QCOMPARE(watcher.labels, strings({"1 di 2"}));
        QCOMPARE(statuses(), text("0 0"));
    }

    void filterListsOneOutcome()
    {
        importOnly({addSong("nobody.mid", "N"), addSong("volare.mid", "VOL")});
        previewFromMenu([](PreviewDialog &dialog) {
            auto *filter = child<QComboBox>(dialog, "previewFilterComboBox");
            QCOMPARE(filter->itemText(0), text("Tutte (2)"));
            QCOMPARE(filter->itemText(2), text("Non nel catalogo (1)"));
            filter->setCurrentIndex(1);
            QCOMPARE(rowsOf(dialog).size(), 7);
            filter->setCurrentIndex(2);
            QCOMPARE(rowsOf(dialog).size(), 1);
            QVERIFY(rowsOf(dialog).constFirst().startsWith(text("nobody.mid|non nel catalogo|")));
        });
    }

    void everyRowIsSpokenWithItsSong()
    {
        importOnly({addSong("volare.mid", "VOL", false)});
        previewFromMenu([](PreviewDialog &dialog) {
            QAccessibleInterface *list = QAccessible::queryAccessibleInterface(listOf(dialog));
            QCOMPARE(list->text(QAccessible::Name), text("Che cosa cambierebbe"));
            const auto spoken = [list](int row, int column) {
                return list->tableInterface()->cellAt(row, column)->text(QAccessible::Name);
            };
            QCOMPARE(spoken(1, 0), text("volare.mid"));
            QCOMPARE(spoken(1, 1), text("da confermare"));
            QCOMPARE(list->tableInterface()->cellAt(1, 1)->text(QAccessible::Description),
                     text("non pubblicata da K-Varo: prima di cambiarla ti viene chiesto"));
            QCOMPARE(spoken(1, 4), text("D. Modugno"));
            QVERIFY2(listOf(dialog)->hasFocus(), "ready for the arrow keys");
        });
    }

    void dialogsAreComplete_data()
    {
        const Table<QString> row;
        row("in Italian", "it");
        row("in English", "en");
    }
    /** On a screen of 1280x800 at 200 %, below a window's title. */
    void dialogsAreComplete()
    {
        const auto [language] = cells<QString>();
        const QSize room(640, 372);
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        const auto plain = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        QTranslator translator;
        Appearance::installLanguage(translator, language);
        BackupDialog question;
        question.setPreview([] {});
        PreviewDialog preview(JobReport(JobReport::Job::Preview), PreviewDialog::Next::Question);
        for (QDialog *dialog :
             {static_cast<QDialog *>(&question), static_cast<QDialog *>(&preview)}) {
            dialog->show();
            QVERIFY(QTest::qWaitForWindowExposed(dialog));
            dialog->resize(dialog->size().boundedTo(room));
            QCoreApplication::processEvents();
            QVERIFY2(dialog->width() <= room.width(), qPrintable(QString::number(dialog->width())));
            QVERIFY(dialog->height() <= room.height());
            for (const QPushButton *button : dialog->findChildren<QPushButton *>())
                QVERIFY2(
                    !button->isVisible() || button->width() >= button->sizeHint().width(),
                    qPrintable(
                        button->text()
                        + text(" %1 < %2").arg(button->width()).arg(button->sizeHint().width())));
            dialog->hide();
        }
        QCOMPARE(preview.windowTitle(),
                 text(language == text("it") ? "Anteprima della sincronizzazione"
                                             : "Preview of the synchronisation"));
    }

    void questionOffersNoPreviewWhereThereIsNone()
    {
        BackupDialog dialog;
        dialog.show();
        QVERIFY(!child(dialog, "previewPushButton")->isVisible());
    }

    void tenThousandSongsAreShown()
    {
        JobReport plan(JobReport::Job::Preview);
        SongOutcome song;
        for (int i = 0; i < 10000; ++i) {
            song.path = path("songs/") + QString::number(i) + text(".mid");
            song.result = SongResult::Updated;
            song.changes = QVector<FieldChange>(8, {text("title"), text("a"), text("b")});
            plan.add(song);
        }
        plan.finish({});
        PreviewDialog dialog(plan, PreviewDialog::Next::Synchronise);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        listOf(dialog)->scrollToBottom();
        QCoreApplication::processEvents();
        QCOMPARE(listOf(dialog)->model()->rowCount(), 80000);
    }

private:
    using Look = std::function<void(PreviewDialog &)>;

    void previewFromMenu(const Look &look)
    {
        m_driver->expect<PreviewDialog>([look](PreviewDialog &dialog) {
            look(dialog);
            click(dialog, "previewClosePushButton");
        });
        trigger("actionPreview");
    }
    /** \a then: the button of the question that is pressed afterwards. */
    void previewFromQuestion(const Look &look, const char *then)
    {
        m_driver->click<BackupDialog>("previewPushButton");
        m_driver->expect<PreviewDialog>([look](PreviewDialog &dialog) {
            look(dialog);
            click(dialog, "previewGoPushButton");
        });
        m_driver->click<BackupDialog>(then);
        press("updateDataToolButton");
    }
};

QTEST_MAIN(tst_SyncPreview)
#include "tst_syncpreview.moc"
