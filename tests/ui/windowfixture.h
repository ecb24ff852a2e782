#pragma once

#include "library/volume.h"
#include "tests/ui/dialogdriver.h"
#include "ui/mainwindow.h"

#include <QSettings>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>
#include <QToolButton>

namespace tarvel4 {

/** A volume whose tests a test decides. */
class FakeVolume : public Volume
{
public:
    explicit FakeVolume(const QString &root, bool isSystem = false)
        : m_root(root)
        , m_isSystem(isSystem)
    {}

    QString rootOf(const QString &path) const override
    {
        Q_UNUSED(path)
        return m_root;
    }
    bool isRootFolder(const QString &path) const override { return path == m_root; }
    bool isSystemDisk(const QString &path) const override
    {
        Q_UNUSED(path)
        return m_isSystem;
    }

private:
    QString m_root;
    bool m_isSystem;
};

/** The window in a folder of its own, with fresh settings, a small catalogue and a memory that is
 * a folder. */
class WindowFixture
{
public:
    WindowFixture()
        : m_home(QDir::currentPath())
    {
        QDir::setCurrent(m_dir.path());
        QDir().mkpath(path("songs"));
        QDir().mkpath(path("card"));
        QDir().mkpath(path("backups"));
        settings().clear();
        writeCatalogue();
    }
    ~WindowFixture()
    {
        window.reset();
        QDir::setCurrent(m_home);
    }
    Q_DISABLE_COPY(WindowFixture)

    static QSettings &settings()
    {
        static QSettings store(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft"));
        store.sync();
        return store;
    }

    QString path(const char *name) const { return m_dir.filePath(QString::fromUtf8(name)); }

    void open(bool onSystemDisk = false)
    {
        window = std::make_unique<MainWindow>(
            nullptr, std::make_unique<FakeVolume>(path("card"), onSystemDisk));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    template <class Widget> Widget *find(const char *name) const
    {
        return window->findChild<Widget *>(QString::fromLatin1(name));
    }

    QTableView *table() const { return find<QTableView>("userLibraryTableView"); }
    QAbstractItemModel *model() const { return table()->model(); }

    void click(const char *button) const
    {
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }
    void trigger(const char *action) const
    {
        find<QAction>(action)->trigger();
        QCoreApplication::processEvents(); // a change of language is posted to the widgets
    }
    bool enabled(const char *widget) const { return find<QWidget>(widget)->isEnabled(); }

    QPoint centreOf(int row, int column) const
    {
        return table()->visualRect(model()->index(row, column)).center();
    }
    void doubleClick(int row, int column) const
    {
        QWidget *viewport = table()->viewport();
        const QPoint place = centreOf(row, column);
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, place);
    }

    /** The texts of a column, top to bottom. */
    QStringList column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < model()->rowCount(); ++row)
            texts.append(model()->index(row, column).data().toString());
        return texts;
    }

    /** Presses the import button and chooses the files; the driver's other steps follow. */
    void import(const QStringList &files) { chooseWith("selectDirToolButton", files); }

    /** Presses the transfer button and chooses a folder; the driver's other steps follow. */
    void transferTo(const QString &folder) { chooseWith("transferFilesToolButton", {folder}); }

    /** Writes a MIDI song into songs/, with the copyright notice of its maker. */
    QString addSong(const QString &name, const QByteArray &title, bool published = true) const
    {
        return write(m_dir.filePath(QStringLiteral("songs/") + name),
                     midiSong(title, published ? "(c) K-VARO" : "(c) someone"));
    }

    static QString write(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("can't write %s", qPrintable(path));
        return path;
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    /** A one-track song of one note, at 120 beats a minute. */
    static QByteArray midiSong(const QByteArray &title, const QByteArray &copyright)
    {
        const QByteArray events = meta(0x03, title) + meta(0x02, copyright)
            + meta(0x51, QByteArray::fromHex("07a120")) + QByteArray::fromHex("00903c4060803c40")
            + meta(0x2f, QByteArray());
        return QByteArray::fromHex("4d546864000000060000000100604d54726b000000")
            + static_cast<char>(events.size()) + events;
    }

    std::unique_ptr<MainWindow> window;
    DialogDriver driver;

    // columns of the table
    enum { Type = 1, Title = 2, Artist = 3, Genre = 4, Author = 5, Name = 10, Status = 11 };

private:
    void chooseWith(const char *button, const QStringList &paths)
    {
        driver.chooseFiles(paths);
        driver.lastGoesFirst();
        click(button);
    }

    static QByteArray meta(char type, const QByteArray &bytes)
    {
        return QByteArray::fromHex("00ff") + type + static_cast<char>(bytes.size()) + bytes;
    }

    void writeCatalogue() const
    {
        const QString name = QStringLiteral("test_catalogue");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(path("songsdb_debug"));
            if (!db.open())
                qFatal("no catalogue");
            QSqlQuery query(db);
            query.exec(QStringLiteral("PRAGMA synchronous=OFF"));
            query.exec(QStringLiteral(
                "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, "
                "length integer, bpm integer, key varchar, filename varchar primary key, markers "
                "varchar, altartist varchar)"));
            for (const char *row : {"'Volare','Modugno','POP','Migliacci',200,100,'C','VOLARE',"
                                    "'1 Intro','D. Modugno'",
                                    "'Azzurro','Celentano','ROCK','Conte',210,110,'D','AZZURRO',"
                                    "'','A. Celentano'"})
                query.exec(
                    QStringLiteral("INSERT INTO Songs VALUES(%1)").arg(QString::fromLatin1(row)));
        }
        QSqlDatabase::removeDatabase(name);
    }

    QString m_home;
    QTemporaryDir m_dir;
};

} // namespace tarvel4
