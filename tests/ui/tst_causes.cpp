#include "tests/indexer/memoryfixture.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/ui/windowtest.h"

#include "ui/dataeditdialog.h"
#include "ui/indexdialog.h"
#include "ui/songslistdialog.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel4;
using namespace TestFiles;

using Code = Outcome::Code;
using Change = std::function<void(const QString &)>;
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Code)

namespace {

/** The line that names a file and the cause of a code, up to the cause's detail. */
QString lineOf(const QString &file, Code code)
{
    // how much room is missing is known only where songs are copied
    const QString detail = code == Code::NoRoom ? QString() : text("@");
    const QString sentence = Outcome{code, {}, detail, {}}.sentence();
    return file + text(": ") + sentence.section(QLatin1Char('@'), 0, 0);
}

Change cutTo(qint64 size)
{
    return [size](const QString &path) { QVERIFY(QFile::resize(path, size)); };
}

} // namespace

/** The window tells why something failed, beside the texts that say that it did. */
class tst_Causes : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { closeWindow(); }

    void aDamagedIndex_data()
    {
        const Table<QString, QString> row;
        row("when the memory is optimised", "pathLineEdit", "startPushButton");
        row("when its list is saved", "sourceLineEdit", "savePushButton");
    }
    void aDamagedIndex()
    {
        const auto [sourceField, button] = cells<QString, QString>();
        PreparedMemory memory;
        write(memory.path(text("/index.id3")), "xyz");
        std::unique_ptr<QDialog> dialog = std::make_unique<IndexDialog>();
        if (button == text("savePushButton")) {
            dialog = std::make_unique<SongsListDialog>();
            child<QLineEdit>(*dialog, "targetLineEdit")->setText(path("list.csv"));
        }
        dialog->show();
        child<QLineEdit>(*dialog, qPrintable(sourceField))->setText(memory.root());
        m_driver->answerBox(QMessageBox::Ok);
        click(*dialog, qPrintable(button));
        const QString details = m_driver->lastBox.details;
        QVERIFY2(details.startsWith(memory.path(text("/index.id3: l'indice è danneggiato ("))),
                 qPrintable(details));
    }

    void aSongThatIsNotRead_data()
    {
        const Table<Code, Change> row;
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
        row("it is a text", Code::NotASong, [](const QString &path) { write(path, "text"); });
        row("it is cut off", Code::DamagedSong, cutTo(11));
        row("it is larger than any song", Code::TooLarge, cutTo(2'100'000'000));
    }
    /** The summary of the import that follows lists it, for a file chosen before is read again. */
    void aSongThatIsNotRead()
    {
        const auto [code, change] = cells<Code, Change>();
        openWindow();
        const QString song = addSong("a.mid", "Volare");
        importOnly({song});
        QCOMPARE(model()->rowCount(), 1);

        change(song);
        answerSummary("noPushButton");
        pressHidden("dbgImportPushButton");
        QVERIFY2(m_unread.startsWith(lineOf(text("a.mid"), code)), qPrintable(m_unread));
    }

    void anEditThatIsNotSaved_data()
    {
        const Table<Code, QString, QByteArray, QString> row;
        using namespace SongBytes;
        const QString longTitle(2000, QLatin1Char('x'));
        const QByteArray song = midi0(meta(3, "Volare"));
        const QByteArray page = song + QByteArray(4096 - song.size(), '\0');
        row("a letter that an MFx header has no place for", Code::LetterNotStorable, "a.mf3",
            mfx(3, {"Old", "", "", "", "", 0, 0}, song), "Città");
        row("a title that an MP3 tag can't take", Code::TextTooLong, "a.mp3",
            tag(frame("PRIV", QByteArray(999'000, '\0'))) + audio(), longTitle);
        row("a card that is full", Code::NoRoom, "full/a.mid", page, longTitle.left(90));
        row("a card that is write-protected", Code::ReadOnlyVolume, "protected/a.mid", song, "New");
        row("somebody else changes it meanwhile", Code::ChangedMeanwhile, "a.mid", song, "New");
        row("somebody else removes it meanwhile", Code::NotFound, "a.mid", song, "New");
    }
    /** The box that names the songs that were not saved has the causes in its details, and so has
     * the row, which counts as edited. What was typed is offered again. */
    void anEditThatIsNotSaved()
    {
        const auto [code, name, bytes, title] = cells<Code, QString, QByteArray, QString>();
        const QString song = path(text("songs/") + name);
        std::optional<TmpfsMount> card;
        if (name.contains(QLatin1Char('/'))) {
            card.emplace(QFileInfo(song).path(), "size=8k");
            if (!card->isMounted())
                QSKIP("no volume can be mounted here");
        }
        write(song, bytes);
        openWindow();
        importOnly({song});
        QCOMPARE(model()->rowCount(), 1);

        if (code == Code::NoRoom)
            write(song + text(".fill"), QByteArray(4096, 'x'));
        if (code == Code::ReadOnlyVolume)
            QVERIFY(card->makeReadOnly());
        m_driver->expect<DataEditDialog>(
            [&, code = code, &bytes = bytes, &title = title](DataEditDialog &dialog) {
                child<QLineEdit>(dialog, "titleLineEdit")->setText(title);
                if (code == Code::ChangedMeanwhile)
                    write(song, bytes + "more");
                if (code == Code::NotFound)
                    QFile::remove(song);
                click(dialog, "savePushButton");
            });
        m_driver->answerBox(QMessageBox::Ok);
        QString offered;
        m_driver->expect<DataEditDialog>([&offered](DataEditDialog &dialog) {
            offered = child<QLineEdit>(dialog, "titleLineEdit")->text();
            dialog.reject();
        });
        doubleClick(0);
        QCOMPARE(offered, title);
        const QString file = QFileInfo(song).fileName();
        const QString line = lineOf(file, code);
        const QString details = m_driver->lastBox.details;
        QVERIFY2(details.startsWith(line), qPrintable(details));
        QVERIFY(m_driver->boxes.at(0).contains(file));
        QCOMPARE(m_driver->lastBox.format, Qt::PlainText);
        QCOMPARE(statuses(), text("2")); // all the same
        const QString cause = line.section(text(": "), 1);
        const QModelIndex cell = model()->index(0, Type);
        QVERIFY(cell.data(Qt::AccessibleTextRole)
                    .toString()
                    .startsWith(cell.data().toString() + text(", Non salvata: ") + cause));
    }

    void aMarkTellsItsReasonWithoutAMouse_data()
    {
        const Table<bool> row;
        row("by the key", true);
        row("by the menu of the row", false);
    }
    void aMarkTellsItsReasonWithoutAMouse()
    {
        const auto [byKey] = cells<bool>();
        openWindowWithoutSummaries();
        import({addSong("new.mid", "A"), addSong("done.mid", "B"), addSong("gone.mid", "C")});
        m_driver->click<DataEditDialog>("savePushButton");
        doubleClick(1);
        QFile::remove(path("songs/gone.mid"));
        doubleClick(2);
        const auto ask = [this, byKey = byKey](int row) {
            QVERIFY(activate(*m_window)); // where no window manager gives it the focus back
            table()->setFocus();
            table()->selectRow(row);
            if (byKey)
                QTest::keyClick(table(), Qt::Key_I, Qt::ControlModifier);
            else
                Q_EMIT table()->customContextMenuRequested(centreOf(row, Title));
        };
        if (!byKey)
            m_driver->chooseEntry(-1);
        ask(0); // which has no mark: a box that is not expected fails the row
        QVERIFY(!m_driver->menuTexts.contains(text("&Perché questo segno?")));
        const QStringList names{text("done.mid"), text("gone.mid")};
        const QStringList reasons{text("Modificata a mano"),
                                  text("Non letta: ")
                                      + Outcome{Code::NotFound, {}, {}, {}}.sentence()};
        for (const int i : {0, 1}) {
            m_driver->menuTexts.clear();
            if (!byKey)
                m_driver->chooseEntry(5);
            m_driver->answerBox(QMessageBox::Ok);
            ask(1 + i);
            QCOMPARE(m_driver->menuTexts.value(5), text(byKey ? "" : "&Perché questo segno?"));
            QCOMPARE(m_driver->boxes.value(i),
                     text("Information|Segno della song|") + reasons.at(i));
            QCOMPARE(m_driver->lastBox.addition, names.at(i));
            QCOMPARE(m_driver->lastBox.format, Qt::PlainText);
        }
    }

    void aMarkOfALongNameFitsOnASmallScreen()
    {
        openWindowWithoutSummaries();
        import({addSong(QByteArray(100, 'x') + ".mid", "A")});
        markFailed(0);
        int width = 0;
        m_driver->expect<QMessageBox>([&width](QMessageBox &box) {
            width = box.minimumSizeHint().width();
            box.close();
        });
        QVERIFY(activate(*m_window));
        table()->setFocus();
        table()->selectRow(0);
        QTest::keyClick(table(), Qt::Key_I, Qt::ControlModifier);
        QVERIFY2(width > 0 && width <= 512, QByteArray::number(width)); // 1024 at 200 %
    }
};

QTEST_MAIN(tst_Causes)
#include "tst_causes.moc"
