#include "tests/songs/songbytes.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/ui/preparedmemory.h"
#include "tests/ui/windowfixture.h"

#include "ui/dataeditdialog.h"
#include "ui/indexdialog.h"
#include "ui/proceeddialog.h"
#include "ui/songslistdialog.h"

#include <QPlainTextEdit>
#include <QPushButton>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel4;

Q_DECLARE_METATYPE(std::function<void(const QString &)>)

/** The window tells why something failed, beside the texts that say that it did. */
class tst_Causes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDamagedIndex_data();
    void aDamagedIndex();
    void aSongThatIsNotRead_data();
    void aSongThatIsNotRead();
    void anEditThatIsNotSaved_data();
    void anEditThatIsNotSaved();

private:
    static void importOnce(WindowFixture &window, const QString &song);
};

namespace {

/** The line that names a file and the cause of a code, up to the cause's detail. */
QString lineOf(const QString &file, Outcome::Code code)
{
    // how much room is missing is known only where songs are copied
    const QString detail = code == Outcome::Code::NoRoom ? QString() : QStringLiteral("@");
    const QString sentence = Outcome{code, {}, detail, {}}.sentence();
    return file + QStringLiteral(": ") + sentence.section(QLatin1Char('@'), 0, 0);
}

void cutTo(const QString &path, qint64 size)
{
    QVERIFY(QFile::resize(path, size));
}

} // namespace

void tst_Causes::aDamagedIndex_data()
{
    QTest::addColumn<bool>("isList");
    QTest::newRow("when the memory is optimised") << false;
    QTest::newRow("when its list is saved") << true;
}

void tst_Causes::aDamagedIndex()
{
    QFETCH(bool, isList);
    const QTemporaryDir folder;
    const QString root = folder.filePath(QStringLiteral("card"));
    PreparedMemory::write(root);
    TestFiles::write(root + QStringLiteral("/index.id3"), "xyz");
    DialogDriver driver;
    QString details;
    driver.expect<QMessageBox>([&details](QMessageBox &box) {
        details = box.detailedText();
        box.button(QMessageBox::Ok)->click();
    });
    QScopedPointer<QDialog> dialog;
    if (isList)
        dialog.reset(new SongsListDialog);
    else
        dialog.reset(new IndexDialog);
    dialog->show();
    const auto fillIn = [&](const char *name, const QString &text) {
        dialog->findChild<QLineEdit *>(QLatin1String(name))->setText(text);
    };
    fillIn(isList ? "sourceLineEdit" : "pathLineEdit", root);
    if (isList)
        fillIn("targetLineEdit", folder.filePath(QStringLiteral("list.csv")));
    driver.clickIn(*dialog,
                   isList ? QStringLiteral("savePushButton") : QStringLiteral("startPushButton"));
    QCOMPARE(driver.problems(), QString());
    QVERIFY2(details.startsWith(root + QStringLiteral("/index.id3: l'indice è danneggiato (")),
             qPrintable(details));
}

void tst_Causes::importOnce(WindowFixture &window, const QString &song)
{
    window.driver.click<ProceedDialog>(QStringLiteral("noPushButton"));
    window.import({song});
    QCOMPARE(window.model()->rowCount(), 1);
}

void tst_Causes::aSongThatIsNotRead_data()
{
    using Code = Outcome::Code;
    using Change = std::function<void(const QString &)>;
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("code");
    const auto row = [](const char *sentence, Code code, const Change &change) {
        QTest::newRow(sentence) << change << static_cast<int>(code);
    };
    row("it is gone", Code::NotFound, [](const QString &path) { QFile::remove(path); });
    row("a folder has its name", Code::NotAFile, [](const QString &path) {
        QFile::remove(path);
        QDir().mkdir(path);
    });
#ifdef Q_OS_UNIX
    row("a FIFO has its name", Code::NotAFile, [](const QString &path) {
        QFile::remove(path);
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    });
#endif
    row("it is a text", Code::NotASong,
        [](const QString &path) { WindowFixture::write(path, "text"); });
    row("it is cut off", Code::DamagedSong, [](const QString &path) { cutTo(path, 11); });
    row("it is larger than any song", Code::TooLarge,
        [](const QString &path) { cutTo(path, 2'100'000'000); });
}

/** The summary of the import that follows lists it, for a file chosen before is read again. */
void tst_Causes::aSongThatIsNotRead()
{
    QFETCH(std::function<void(const QString &)>, change);
    QFETCH(int, code);
    WindowFixture window;
    window.open();
    const QString song = window.addSong(QStringLiteral("a.mid"), "Volare");
    importOnce(window, song);

    change(song);
    QString list;
    window.driver.expect<ProceedDialog>([&](ProceedDialog &dialog) {
        list = dialog.findChild<QPlainTextEdit *>()->toPlainText();
        window.driver.clickIn(dialog, QStringLiteral("noPushButton"));
    });
    window.find<QAbstractButton>("dbgImportPushButton")->click();
    QCOMPARE(window.driver.problems(), QString());
    const QString line = lineOf(QStringLiteral("a.mid"), static_cast<Outcome::Code>(code));
    QVERIFY2(list.startsWith(line), qPrintable(list));
}

void tst_Causes::anEditThatIsNotSaved_data()
{
    using Code = Outcome::Code;
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("code");
    const QString longTitle(2000, QLatin1Char('x'));
    const QByteArray song = SongBytes::midi0(SongBytes::meta(3, "Volare"));
    const QByteArray page = song + QByteArray(4096 - song.size(), '\0');
    const auto row = [](const char *sentence, const char *name, const QByteArray &bytes,
                        const QString &title, Code code) {
        QTest::newRow(sentence) << QString::fromLatin1(name) << bytes << title
                                << static_cast<int>(code);
    };
    row("a letter that an MFx header has no place for", "a.mf3",
        SongBytes::mfx(3, {"Old", "", "", "", "", 0, 0}, song), QStringLiteral("Citt\u00e0"),
        Code::LetterNotStorable);
    row("a title that an MP3 tag can't take", "a.mp3",
        SongBytes::tag(SongBytes::frame("PRIV", QByteArray(999'000, '\0'))) + SongBytes::audio(),
        longTitle, Code::TextTooLong);
    row("a card that is full", "full/a.mid", page, longTitle.left(90), Code::NoRoom);
    row("a card that is write-protected", "protected/a.mid", song, QStringLiteral("New"),
        Code::ReadOnlyVolume);
    row("somebody else changes it meanwhile", "a.mid", song, QStringLiteral("New"),
        Code::ChangedMeanwhile);
}

/** The box that names the songs that were not saved has the causes in its details. */
void tst_Causes::anEditThatIsNotSaved()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, title);
    QFETCH(int, code);
    WindowFixture window;
    const QString song = QDir(window.path("songs")).filePath(name);
    QScopedPointer<TmpfsMount> card;
    if (name.contains(QLatin1Char('/'))) {
        card.reset(new TmpfsMount(QFileInfo(song).path(), "size=8k"));
        if (!card->isMounted())
            QSKIP("no volume can be mounted here");
    }
    WindowFixture::write(song, bytes);
    window.open();
    importOnce(window, song);

    if (code == static_cast<int>(Outcome::Code::NoRoom))
        WindowFixture::write(song + QStringLiteral(".fill"), QByteArray(4096, 'x'));
    if (code == static_cast<int>(Outcome::Code::ReadOnlyVolume))
        QVERIFY(card->makeReadOnly());
    window.driver.expect<DataEditDialog>([&](DataEditDialog &dialog) {
        dialog.findChild<QLineEdit *>(QStringLiteral("titleLineEdit"))->setText(title);
        if (code == static_cast<int>(Outcome::Code::ChangedMeanwhile))
            WindowFixture::write(song, bytes + "more");
        window.driver.clickIn(dialog, QStringLiteral("savePushButton"));
    });
    window.driver.answerBox(QMessageBox::Ok);
    window.doubleClick(0, WindowFixture::Title);
    QCOMPARE(window.driver.problems(), QString());
    const QString line = lineOf(QFileInfo(song).fileName(), static_cast<Outcome::Code>(code));
    QVERIFY2(window.driver.lastBox.details.startsWith(line),
             qPrintable(window.driver.lastBox.details));
    QVERIFY(window.model()
                ->index(0, WindowFixture::Type)
                .data(Qt::AccessibleDescriptionRole)
                .toString()
                .contains(line.section(QStringLiteral(": "), 1)));
}

QTEST_MAIN(tst_Causes)
#include "tst_causes.moc"
