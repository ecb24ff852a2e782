#include "tests/storage/unixfile.h"
#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"

#include <QMimeData>

using namespace tarvel4;
using namespace TestFiles;

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using DataType = QMetaType;
#else
using DataType = QVariant::Type;
#endif

/** Songs that come in otherwise than by the dialog for files: a folder, and what is dropped on the
 * window. */
class tst_SongIntake : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void folderIsImportedWhole()
    {
        openWindow();
        addSong("one/b.mid", "Due");
        addSong("one/deep/a.kar", "Uno");
        addSong("c.mid", "Tre");
        write(path("songs/notes.txt"), "no song");
        answerSummary("noPushButton");
        importFolder(path("songs"));
        QStringList titles = column(Title);
        titles.sort();
        QCOMPARE(titles, strings({"Due", "Tre", "Uno"}));
        QCOMPARE(m_summary,
                 text("Sono stati esaminti 3 files, trovate 3 songs di cui 3 di (c)K-Varo"));
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    void importOfAFolderReplacesTheTable()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        addSong("other/d.mid", "Quattro");
        importFolder(path("songs/other"));
        QCOMPARE(column(Title), strings({"Quattro"}));
        m_driver->answerBox(QMessageBox::Ok);
        transferTo(path("card"));
        QCOMPARE(namesIn(path("card/songs")), strings({"d.mid"}));
    }

    void folderWithoutSongsChangesNothing()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        m_driver->answerBox(QMessageBox::Ok);
        importFolder(path("backups"));
        QCOMPARE(m_driver->boxes, strings({"Information|Lettura cartella|Qui non ci sono song."}));
        QCOMPARE(m_driver->lastBox.addition, path("backups"));
        QCOMPARE(model()->rowCount(), 3);
        m_driver->closeFrame<QFileDialog>();
        trigger("actionImportFolder");
        QCOMPARE(model()->rowCount(), 3);
    }

    void whatCantBeReadIsSaid()
    {
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        openWindowWithoutSummaries();
        threeSongs();
        QVERIFY(QFile::link(path("gone"), path("songs/lost.mid")));
        m_driver->answerBox(QMessageBox::Ok);
        importFolder(path("songs"));
        QCOMPARE(m_driver->boxes,
                 strings({"Warning|Lettura cartella|Alcuni file o cartelle non possono essere "
                          "letti e vengono saltati."}));
        QCOMPARE(m_driver->lastBox.details,
                 path("songs/lost.mid") + text(": non può essere letto"));
        QCOMPARE(model()->rowCount(), 3);
    }

    void aSongThatAPowerCutSetAsideIsAmongThem()
    {
        openWindowWithoutSummaries();
        write(path("songs/gone.mp3.tarvel4.bak"), "old");
        m_driver->answerBox(QMessageBox::Ok);
        importFolder(path("songs"));
        QVERIFY(QFile::exists(path("songs/gone.mp3")));
        QCOMPARE(enabledSteps(), text("selectDir updateData transferFiles"));
    }

    void walkIsCancelled()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        addSong("other/d.mid", "Quattro");
        write(path("songs/other/gone.mp3.tarvel4.bak"), "old"); // would be put in order
        ProgressWatcher watcher;
        watcher.onShow = ProgressWatcher::cancel;
        importFolder(path("songs/other"));
        QCOMPARE(watcher.seen, strings({"Lettura cartella|Cerco le song...|Interrompi|0"}));
        QCOMPARE(model()->rowCount(), 3);
        QVERIFY(!QFile::exists(path("songs/other/gone.mp3")));
    }

    void drops_data()
    {
        const Table<QStringList, Qt::DropActions, bool, QString> row;
        const Qt::DropActions any = Qt::CopyAction | Qt::MoveAction;
        row("a song", strings({"songs/a.mid"}), any, true, "a.mid");
        row("songs, and what is none", strings({"songs/c.mid", "notes.txt", "songs/a.mid"}), any,
            true, "c.mid a.mid");
        row("a folder", strings({"songs"}), any, true, "a.mid b.kar c.mid");
        row("no song", strings({"notes.txt"}), any, false, "");
        row("a song that would be gone", strings({"songs/a.mid"}), Qt::MoveAction, false, "");
        row("nothing", {}, any, false, "");
    }
    void drops()
    {
        const auto [names, actions, isTaken, imported] =
            cells<QStringList, Qt::DropActions, bool, QString>();
        openWindowWithoutSummaries();
        threeSongs();
        write(path("notes.txt"), "no song");
        QCOMPARE(drop(names, actions), isTaken ? Qt::CopyAction : Qt::IgnoreAction);
        if (isTaken)
            QTRY_VERIFY(enabledSteps().contains(text("transferFiles")));
        QCOMPARE(column(Name).join(QLatin1Char(' ')), imported);
    }

    void linksOfTheNetAreNoSongs()
    {
        openWindowWithoutSummaries();
        QMimeData data;
        data.setData(text("text/uri-list"),
                     "https://songs.example/a.mid\r\nhttps://songs.example/%E9.mid\r\n");
        QCOMPARE(drop(data, Qt::CopyAction), Qt::IgnoreAction);
    }

    void namesThatCantBeOpenedAreSaidAfterADrop()
    {
        openWindowWithoutSummaries();
        import(threeSongs());
        QMimeData data;
        data.setData(text("text/uri-list"), "file:///songs/%E9.mid\r\n");
        m_driver->answerBox(QMessageBox::Ok);
        QCOMPARE(drop(data, Qt::CopyAction), Qt::CopyAction);
        QTRY_COMPARE(m_driver->boxes.size(), 1);
        QVERIFY(m_driver->lastBox.details.endsWith(text(".mid: non può essere letto")));
        QCOMPARE(model()->rowCount(), 3);
    }

    void foldersThatGoInACircleEnd()
    {
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        openWindowWithoutSummaries();
        threeSongs();
        QVERIFY(QDir().mkdir(path("songs/deep"))
                && QFile::link(path("songs"), path("songs/deep/up")));
        QCOMPARE(drop(strings({"songs"}), Qt::CopyAction), Qt::CopyAction);
        QTRY_COMPARE(column(Name), strings({"a.mid", "b.kar", "c.mid"}));
    }

    void thousandsAreAskedForOncePerDrag()
    {
        class CountedData : public QMimeData
        {
        public:
            mutable int asked = 0;

        protected:
            QVariant retrieveData(const QString &format, DataType type) const override
            {
                ++asked;
                return QMimeData::retrieveData(format, type);
            }
        } data;
        openWindowWithoutSummaries();
        QList<QUrl> urls;
        for (int i = 0; i < 3000; ++i)
            urls += QUrl::fromLocalFile(path("songs/%1.mid").arg(i));
        data.setUrls(urls);
        QCOMPARE(drop(data, Qt::CopyAction), Qt::CopyAction);
        QCOMPARE(data.asked, 1);
        QTRY_VERIFY(enabledSteps().contains(text("transferFiles")));
    }

    /** Else another job could be begun in the middle of it: no progress is on show. */
    void aLongListIsTakenInOneGo()
    {
        openWindowWithoutSummaries();
        QMimeData data;
        data.setUrls(QVector<QUrl>(60000, QUrl::fromLocalFile(addSong("a.mid", "Uno"))).toList());
        QCOMPARE(drop(data, Qt::CopyAction), Qt::CopyAction);
        bool isReached = false;
        bool isCovered = false;
        QTimer::singleShot(0, this, [&] {
            isReached = true;
            isCovered = QApplication::activeModalWidget() != nullptr || model()->rowCount() > 0;
        });
        QTRY_VERIFY(enabledSteps().contains(text("transferFiles")));
        QTRY_VERIFY(isReached);
        QVERIFY(isCovered);
    }

    void widgetsLeaveDropsToTheWindow()
    {
        openWindowWithoutSummaries();
        QVERIFY(m_window->acceptDrops());
        QVERIFY(!table()->acceptDrops() && !table()->viewport()->acceptDrops());
        for (const char *name : {"selectDirToolButton", "updateDataToolButton", "label_2"})
            QVERIFY(!find<QWidget>(name)->acceptDrops());
    }

    void nothingIsDroppedWhileAJobRuns()
    {
        openWindowWithoutSummaries();
        const QStringList songs = threeSongs();
        ProgressWatcher watcher;
        int tried = 0;
        watcher.onValue = [&](QProgressDialog &, int) {
            ++tried;
            QCOMPARE(drop(strings({"songs/a.mid"}), Qt::CopyAction), Qt::IgnoreAction);
        };
        import(songs);
        QCOMPARE(tried, 3);
        m_driver->expect<QFileDialog>([this](QFileDialog &dialog) {
            QCOMPARE(drop(strings({"songs/a.mid"}), Qt::CopyAction), Qt::IgnoreAction);
            dialog.reject();
        });
        press("selectDirToolButton");
        QCOMPARE(model()->rowCount(), 3);
    }

    void namesThatCantBeOpenedAreSaid()
    {
        settings().setValue(text("copyrightAsk"), false);
        const QString song = threeSongs().constFirst();
        m_driver->answerBox(QMessageBox::Ok);
        m_window = std::make_unique<MainWindow>(
            nullptr, std::make_unique<FakeVolume>(path("card"), m_isSystemDisk));
        m_window->importWhenShown({song}, {text("x?.mid")});
        m_window->show();
        QTRY_COMPARE(model()->rowCount(), 1);
        QCOMPARE(m_driver->lastBox.details, text("x?.mid: non può essere letto"));
    }

private:
    /** Chooses a folder in the dialog of the action; the driver's other steps follow. */
    void importFolder(const QString &folder)
    {
        m_driver->expect<QFileDialog>([folder](QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), text("Scegli la cartella da importare"));
            auto *edit = child<QLineEdit>(dialog, "fileNameEdit");
            const QSignalBlocker noCompletion(edit);
            edit->setText(folder);
            static_cast<QDialog &>(dialog).accept();
        });
        m_driver->lastGoesFirst();
        trigger("actionImportFolder");
    }

    /** Drags over the window and drops there; the action that the window takes. */
    Qt::DropAction drop(const QMimeData &data, Qt::DropActions actions) const
    {
        const QPoint place = m_window->rect().center();
        QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(m_window.get(), &enter);
        QDragMoveEvent move(place, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(m_window.get(), &move);
        QDropEvent drop(place, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(m_window.get(), &drop);
        if (enter.isAccepted() != drop.isAccepted() || move.isAccepted() != drop.isAccepted())
            qWarning("the events of one drag are not answered alike");
        return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
    }
    Qt::DropAction drop(const QStringList &names, Qt::DropActions actions) const
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &name : names)
            urls += QUrl::fromLocalFile(path(name));
        data.setUrls(urls);
        return drop(data, actions);
    }
};

QTEST_MAIN(tst_SongIntake)
#include "tst_songintake.moc"
