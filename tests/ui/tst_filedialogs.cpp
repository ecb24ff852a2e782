#include "tests/library/mediummount.h"
#include "tests/library/testfiles.h"
#include "tests/storage/table.h"
#include "tests/ui/dialogdriver.h"
#include "ui/appearance.h"
#include "ui/folderchooser.h"
#include "ui/showinfolder.h"
#include "ui/songchooser.h"
#include "ui/statefile.h"
#include "ui/targetchooser.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QStyledItemDelegate>
#include <QTreeView>

#include <optional>

using namespace tarvel4;
using namespace TestFiles;

namespace {

/** What a delegate will write for an entry. */
class ShownText : public QStyledItemDelegate
{
public:
    static QString of(const QModelIndex &index, const QAbstractItemDelegate *delegate)
    {
        QStyleOptionViewItem option;
        (static_cast<const QStyledItemDelegate *>(delegate)->*(&ShownText::initStyleOption))(
            &option, index);
        return option.text;
    }
};

QStringList sidebarTexts(const QFileDialog &dialog)
{
    const auto *sidebar = child<QListView>(dialog, "sidebar");
    QStringList texts;
    for (int row = 0; row < sidebar->model()->rowCount(); ++row)
        texts += ShownText::of(sidebar->model()->index(row, 0), sidebar->itemDelegate());
    return texts;
}

QString fileManager()
{
#ifdef Q_OS_WIN
    return explorerProgram();
#else
    return {};
#endif
}

} // namespace

/** The dialogs that ask for songs and folders: how much they take, where they begin, and which
 * media they show. */
class tst_FileDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QFile::remove(StateFile::path());
        QSettings(QSettings::UserScope, text("QtProject")).clear(); // Qt's own sidebar
        m_folder.emplace();
    }

    void thousandsOfSongsAreTaken()
    {
        constexpr int songs = 3000;
        constexpr int oldLimit = 32767; // of the characters in the field for the names
        QStringList expected;
        for (int song = 0; song < songs; ++song)
            expected += write(m_folder->filePath(text("a longer name %1.mid").arg(song)), "");
        expected.sort();
        StateFile::setValue(text("folders/songs"), m_folder->path());
        DialogDriver driver;
        driver.expect<QFileDialog>([&](QFileDialog &dialog) {
            auto *list = child<QAbstractItemView>(dialog, "listView");
            if (!list->isVisible())
                list = child<QAbstractItemView>(dialog, "treeView");
            const auto *names = child<QLineEdit>(dialog, "fileNameEdit");
            QTRY_COMPARE_WITH_TIMEOUT(list->model()->rowCount(list->rootIndex()), songs, 20000);
            list->setFocus();
            QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
            QTRY_VERIFY(names->text().size() > oldLimit);
            QTest::mouseClick(
                child<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Open),
                Qt::LeftButton);
        });
        QStringList chosen = chooseSongs(nullptr, text("Songs"));
        chosen.sort();
        QCOMPARE(chosen.size(), songs);
        QCOMPARE(chosen, expected);
    }

    void columnsHaveRoom_data()
    {
        const Table<bool> row;
        row("of songs to be read", false);
        row("of a file to be written", true);
    }
    void columnsHaveRoom()
    {
        const auto [isTarget] = cells<bool>();
        Appearance::applyStyleSheet(text(":/style/default.qss"));
        write(m_folder->filePath(text("a.mid")), QByteArray(700 * 1024, 'x'));
        StateFile::setValue(text("folders/songs"), m_folder->path());
        DialogDriver driver;
        driver.expect<QFileDialog>([](QFileDialog &dialog) {
            const auto *files = child<QTreeView>(dialog, "treeView");
            const QModelIndex folder = files->rootIndex();
            QTRY_COMPARE(files->model()->rowCount(folder), 1);
            for (int column = 0; column < files->header()->count(); ++column) {
                const int width = files->columnWidth(column);
                QVERIFY(width >= files->header()->sectionSizeHint(column));
                const QString words = files->model()->index(0, column, folder).data().toString();
                QVERIFY2(width > files->fontMetrics().horizontalAdvance(words), qPrintable(words));
            }
            const int room = dialog.screen()->availableSize().width();
            QVERIFY(dialog.width() <= room);
            QVERIFY2(dialog.width() == room
                         || files->header()->length() <= files->viewport()->width(),
                     "a column is out of sight");
            dialog.reject();
        });
        if (isTarget)
            chooseTarget(nullptr, text("List"), m_folder->filePath(text("b.mid")), text("(*.mid)"));
        else
            chooseSongs(nullptr, text("Songs"));
        qApp->setStyleSheet(QString());
    }

    void songDialogBeginsWhereTheLastOneEnded()
    {
        const QString song = write(m_folder->filePath(text("one/a.mid")), "");
        const QString first =
            QFileInfo(text("/")).absoluteFilePath(); // of the current drive, where there are any
        QCOMPARE(startOfSongs({song}), first);
        QCOMPARE(startOfSongs({}), QFileInfo(song).path()); // cancelled: nothing changes
        QCOMPARE(startOfSongs({}), QFileInfo(song).path());
        QFile::remove(song);
        QVERIFY(QDir().rmdir(QFileInfo(song).path()));
        QCOMPARE(startOfSongs({}), first);
    }

    void eachKindOfFolderHasItsOwn()
    {
        const QString backups = m_folder->path() + text("/backups");
        const QString card = m_folder->path() + text("/card");
        for (const QString &folder : {backups, card})
            QVERIFY(QDir().mkdir(folder));
        const QFileInfo homes(text("/home"));
        const QString home = homes.isDir() ? homes.absoluteFilePath() : QDir::homePath();
        QCOMPARE(startOfFolder(FolderKind::Backup, backups), home);
        QCOMPARE(startOfFolder(FolderKind::Memory, card), home);
        QCOMPARE(startOfFolder(FolderKind::Songs), home);
        QCOMPARE(startOfFolder(FolderKind::Backup), backups);
        QCOMPARE(startOfFolder(FolderKind::Memory), card);
    }

    void transferBeginsAtTheMountedMedia()
    {
        const MediumMount medium(text("CARD"));
        if (!medium.isMounted())
            QSKIP("Nothing can be mounted here.");
        QDir().mkdir(medium.root() + text("/songs"));
        QCOMPARE(startOfFolder(FolderKind::Transfer), medium.root());
        QCOMPARE(startOfFolder(FolderKind::Transfer, medium.root() + text("/songs")),
                 medium.root());
        QCOMPARE(startOfFolder(FolderKind::Transfer), medium.root() + text("/songs"));
    }

    void sidebarShowsMediaAndTheirRoom()
    {
        QStringList before;
        {
            DialogDriver driver;
            driver.expect<QFileDialog>([&before](QFileDialog &dialog) {
                before = sidebarTexts(dialog);
                dialog.reject();
            });
            chooseSongs(nullptr, text("Songs"));
        }
        const MediumMount medium(text("CARD"));
        if (!medium.isMounted())
            QSKIP("Nothing can be mounted here.");
        for (const bool isFolder : {false, true}) {
            DialogDriver driver;
            QStringList texts;
            driver.expect<QFileDialog>([&](QFileDialog &dialog) {
                texts = sidebarTexts(dialog);
                QVERIFY(dialog.sidebarUrls().contains(QUrl::fromLocalFile(medium.root())));
                dialog.reject();
            });
            if (isFolder)
                chooseFolder(nullptr, text("Folder"), FolderKind::Backup);
            else
                chooseSongs(nullptr, text("Songs"));
            QCOMPARE(texts.size(), before.size() + 1);
            QVERIFY2(texts.constLast().endsWith(text(" liberi")), qPrintable(texts.constLast()));
        }
        QVERIFY2(!QFileDialog().sidebarUrls().contains(QUrl::fromLocalFile(medium.root())),
                 "other dialogs of Qt are left as they were");
    }

    void fileManagerIsTheSystemsOwn()
    {
        const QFileInfo program(fileManager());
        if (program.filePath().isEmpty())
            QSKIP("Elsewhere the desktop is asked for it");
        QVERIFY2(program.isAbsolute() && program.isFile(), qPrintable(program.filePath()));
    }

private:
    /** Where the dialog begins; it chooses \a files, or is cancelled. */
    static QString startOfSongs(const QStringList &files)
    {
        DialogDriver driver;
        QString start;
        driver.expect<QFileDialog>([&](QFileDialog &dialog) { choose(dialog, files, start); });
        const QStringList chosen = chooseSongs(nullptr, text("Songs"));
        if (chosen != files)
            qWarning() << "chosen:" << chosen;
        return start;
    }

    static QString startOfFolder(FolderKind kind, const QString &chosen = {})
    {
        DialogDriver driver;
        QString start;
        driver.expect<QFileDialog>([&](QFileDialog &dialog) {
            choose(dialog, chosen.isEmpty() ? QStringList() : QStringList(chosen), start);
        });
        if (chooseFolder(nullptr, text("Folder"), kind) != chosen)
            qWarning() << "not chosen:" << chosen;
        return start;
    }

    static void choose(QFileDialog &dialog, const QStringList &paths, QString &start)
    {
        start = dialog.directory().absolutePath();
        if (paths.isEmpty()) {
            dialog.reject();
            return;
        }
        auto *names = child<QLineEdit>(dialog, "fileNameEdit");
        const QSignalBlocker noCompletion(names);
        names->setText(paths.constFirst());
        static_cast<QDialog &>(dialog).accept();
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_MAIN(tst_FileDialogs)
#include "tst_filedialogs.moc"
