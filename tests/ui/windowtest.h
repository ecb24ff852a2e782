#pragma once

#include "db/usersongsreltablemodel.h"
#include "library/usersettings.h"
#include "library/volume.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/table.h"
#include "tests/ui/dialogdriver.h"
#include "tests/ui/forms.h"
#include "ui/backupdialog.h"
#include "ui/mainwindow.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/statefile.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>

#include <memory>
#include <optional>

namespace tarvel4 {

/** A volume whose tests a test decides. */
class FakeVolume : public Volume
{
public:
    FakeVolume(const QString &root, const bool &isSystem)
        : m_root(root)
        , m_isSystem(isSystem)
    {}

    QString rootOf(const QString &) const override { return m_root; }
    bool isRootFolder(const QString &path) const override { return path == m_root; }
    bool isSystemDisk(const QString &) const override { return m_isSystem; }

private:
    const QString m_root;
    const bool &m_isSystem;
};

/** A test of the window in a folder of its own, with fresh settings, a small catalogue and a memory
 * that is a folder: new for each row by makeFolder(), and gone after closeWindow(). */
class WindowTest : public QObject
{
protected:
    enum Column { Number, Type, Title, Artist, Genre, Author, Name = 10, Status = 11 };

    void makeFolder()
    {
        m_folder.emplace();
        m_driver.emplace();
        QDir::setCurrent(m_folder->path());
        qputenv("XDG_DATA_HOME", QFile::encodeName(path("data"))); // the journal's
        if (QStandardPaths::isTestModeEnabled()) // where the system has no such choice
            QVERIFY(QDir(UserSettings::dataFolder()).removeRecursively());
        for (const char *folder : {"songs", "card", "backups"})
            QDir().mkdir(path(folder));
        settings().clear();
        QFile::remove(StateFile::path());
        m_asked.clear();
        m_isSystemDisk = false;
        writeCatalogue();
    }

    void openWindow()
    {
        m_window = std::make_unique<MainWindow>(
            nullptr, std::make_unique<FakeVolume>(path("card"), m_isSystemDisk), makePlayers(),
            makeDrives());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void openWindowWithoutSummaries()
    {
        settings().setValue(text("copyrightAsk"), false);
        openWindow();
    }

    /** Fails the row whose dialogs came otherwise than expected. */
    void closeWindow()
    {
        m_window.reset();
        m_driver.reset();
        QDir::setCurrent(m_home);
        m_folder.reset();
    }

    /** What songs can be listened to with: nothing, on whatever machine the test runs. */
    virtual std::unique_ptr<SongPlayers> makePlayers() { return nullptr; }

    /** What can be ejected: nothing, on whatever machine the test runs. */
    virtual std::unique_ptr<RemovableDrives> makeDrives() { return nullptr; }

    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString path(const char *name) const { return path(text(name)); }

    template <class Widget> Widget *find(const char *name) const
    {
        return child<Widget>(*m_window, name);
    }
    QTableView *table() const { return find<QTableView>("userLibraryTableView"); }
    QAbstractItemModel *model() const { return table()->model(); }
    /** The names of the steps whose buttons are enabled. */
    QString enabledSteps() const
    {
        QStringList steps;
        for (const char *step : {"selectDir", "updateData", "transferFiles"}) {
            if (find<QWidget>((step + QByteArray("ToolButton")).constData())->isEnabled())
                steps.append(text(step));
        }
        return steps.join(QLatin1Char(' '));
    }

    void press(const char *button) const
    {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    /** The buttons for developers are in a panel that is not shown. */
    void pressHidden(const char *button) const { find<QAbstractButton>(button)->click(); }
    void trigger(const char *action) const
    {
        find<QAction>(action)->trigger();
        QCoreApplication::processEvents(); // a change of language is posted to the widgets
    }

    QPoint centreOf(int row, int column) const
    {
        return table()->visualRect(model()->index(row, column)).center();
    }
    void doubleClick(int row, int column = Title) const
    {
        QWidget *viewport = table()->viewport();
        const QPoint place = centreOf(row, column);
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
    }

    /** As an operation on the song would that failed without a reason. */
    void markFailed(int row) const
    {
        static_cast<UserSongsRelTableModel *>(model())->setMark(
            row, UserSongsRelTableModel::MarkedFailed);
    }
    /** The texts of a column, top to bottom. */
    QStringList column(Column column) const
    {
        QStringList texts;
        for (int row = 0; row < model()->rowCount(); ++row)
            texts.append(model()->index(row, column).data().toString());
        return texts;
    }
    /** "1 3" of two songs: one written, one not. */
    QString statuses() const { return column(Status).join(QLatin1Char(' ')); }
    static QString songNameOf(const QModelIndex &index)
    {
        return index.sibling(index.row(), Name).data().toString();
    }
    /** The names of the songs that are not hidden, top to bottom. */
    QStringList shownNames() const
    {
        QStringList names;
        for (int row = 0; row < model()->rowCount(); ++row) {
            if (!table()->isRowHidden(row))
                names.append(songNameOf(model()->index(row, 0)));
        }
        return names;
    }

    /** Presses the import button and chooses the files; the driver's other steps follow. */
    void import(const QStringList &files) { chooseWith("selectDirToolButton", files); }

    /** Presses a button in the summary of the next import, and keeps what the summary tells. */
    void answerSummary(const char *button)
    {
        m_driver->expect<ProceedDialog>([this, button](ProceedDialog &dialog) {
            m_summary = child<QLabel>(dialog, "msgLabel")->text();
            m_unread = child<QPlainTextEdit>(dialog, "problemsTextEdit")->toPlainText();
            click(dialog, button);
        });
    }
    void importOnly(const QStringList &files)
    {
        answerSummary("noPushButton");
        import(files);
    }

    /** Presses the transfer button and chooses a folder; the driver's other steps follow. */
    void transferTo(const QString &folder) { chooseWith("transferFilesToolButton", {folder}); }

    /** Has the backup made that will be asked about. */
    void chooseBackup(const QString &folder)
    {
        m_driver->click<BackupDialog>("browsePushButton");
        m_driver->chooseFiles({folder});
        m_driver->click<BackupDialog>("doBackupPushButton");
        m_driver->answerBox(QMessageBox::Ok);
    }

    /** Answers "yes", "yesAll", "no", "noAll" or, by the "frame", nothing to the questions to come;
     * keeps which files they name, and what the last one asks. */
    void answerQuestions(const QString &answers)
    {
        for (const QString &answer : answers.split(QLatin1Char(' ')))
            m_driver->expect<NoCopyrightDialog>([this, answer](NoCopyrightDialog &dialog) {
                m_asked.append(child<QLabel>(dialog, "fileNameLabel")->text());
                m_question = child<QLabel>(dialog, "messageLabel")->text();
                if (answer == text("frame"))
                    dialog.close();
                else
                    click(dialog, qPrintable(answer + text("PushButton")));
            });
    }

    /** Writes a MIDI song into songs/, with the copyright notice of its maker. */
    QString addSong(const QByteArray &name, const QByteArray &title, bool isPublished = true) const
    {
        using namespace SongBytes;
        return TestFiles::write(
            path(("songs/" + name).constData()),
            midi0(meta(3, title) + meta(2, isPublished ? "(c) K-VARO" : "(c) someone")));
    }
    QStringList threeSongs() const
    {
        return {addSong("c.mid", "Uno"), addSong("a.mid", "Tre"), addSong("b.kar", "Due", false)};
    }
    /** Their names go up while their titles go down. */
    QStringList manySongs(int songs) const
    {
        QStringList paths;
        for (int i = 0; i < songs; ++i)
            paths.append(addSong('s' + QByteArray::number(1000 + i).mid(1) + ".mid",
                                 "T " + QByteArray::number(999 - i)));
        return paths;
    }

    std::optional<DialogDriver> m_driver;
    QStringList m_asked; ///< by answerQuestions()
    QString m_question;
    QString m_summary; ///< by answerSummary()
    QString m_unread;
    bool m_isSystemDisk = false;
    std::unique_ptr<MainWindow> m_window;

private:
    void chooseWith(const char *button, const QStringList &paths)
    {
        m_driver->chooseFiles(paths);
        m_driver->lastGoesFirst();
        press(button);
    }

    void writeCatalogue() const
    {
        const QString name = text("test_catalogue");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(text("QSQLITE"), name);
            db.setDatabaseName(path("songsdb_debug"));
            if (!db.open())
                qFatal("no catalogue");
            for (const char *statement :
                 {"PRAGMA synchronous=OFF",
                  "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author "
                  "varchar, "
                  "length integer, bpm integer, key varchar, filename varchar primary key, markers "
                  "varchar, altartist varchar)",
                  "INSERT INTO Songs VALUES('Volare','Modugno','POP','Migliacci',200,100,'C',"
                  "'VOLARE','1 Intro','D. Modugno')",
                  "INSERT INTO Songs VALUES('Azzurro','Celentano','ROCK','Conte',210,110,'D',"
                  "'AZZURRO','','A. Celentano')"})
                QSqlQuery(db).exec(text(statement));
        }
        QSqlDatabase::removeDatabase(name);
    }

    const QString m_home = QDir::currentPath();
    std::optional<QTemporaryDir> m_folder;
};

} // namespace tarvel4
