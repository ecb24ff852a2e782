#include "tests/ui/progresswatcher.h"
#include "tests/ui/windowtest.h"
#include "ui/dataeditdialog.h"

#include <QComboBox>

using namespace tarvel4;

/** What changed songs last is shown, and taken back byte for byte where that is wanted. */
class tst_WindowUndo : public WindowTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        openWindowWithoutSummaries();
    }
    void cleanup() { closeWindow(); }

    void everyByteComesBack_data()
    {
        columns<QString, QString, bool>("change", "kind", "inANewWindow");
        for (const bool isNew : {false, true}) {
            const auto row = [isNew](const char *sentence, const char *change, const char *kind) {
                QTest::addRow("%s%s", sentence, isNew ? ", by the next program" : "")
                    << text(change) << text(kind) << isNew;
            };
            row("an edit is taken back", "edit", "correzione dei dati");
            row("an edit that was applied to all is taken back", "edit all", "correzione dei dati");
            row("a synchronisation is taken back", "sync",
                "sincronizzazione con il database K-Varo");
        }
    }
    void everyByteComesBack()
    {
        QFETCH(QString, change);
        QFETCH(QString, kind);
        QFETCH(bool, inANewWindow);
        const QStringList songs = everyFormat();
        const QVector<QByteArray> before = bytesOf(songs);
        import(songs);
        make(change);
        const QVector<QByteArray> after = bytesOf(songs);
        const int changed = change == text("edit") ? 1 : songs.size();
        for (int i = 0; i < songs.size(); ++i)
            QCOMPARE(after.at(i) != before.at(i), i < changed);
        if (inANewWindow) {
            m_window.reset();
            openWindow();
        }

        QString question;
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(question.contains(text("Ultima modifica: ") + kind), qPrintable(question));
        QCOMPARE(
            m_driver->boxes,
            QStringList(
                text("Annulla l'ultima modifica|Song tornate com'erano: %1 di %1").arg(changed)));
        QCOMPARE(bytesOf(songs), before);

        m_driver->boxes.clear();
        answerQuestion(QMessageBox::Yes, &question);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        QVERIFY2(question.contains(text("Ultima modifica: annullamento di una modifica")),
                 qPrintable(question));
        QCOMPARE(bytesOf(songs), after);
    }

private:
    /** A song of each format that is written, all of them known to the catalogue. */
    QStringList everyFormat() const
    {
        using namespace SongBytes;
        const QByteArray midi = midi0(meta(3, "Old") + meta(2, "(c) K-VARO"));
        const MfxFields fields{"Old", "Old", "Old", "Old", "VOLARE"};
        QStringList songs;
        const auto add = [&](const char *name, const QByteArray &bytes) {
            songs += TestFiles::write(path(name), bytes);
        };
        add("songs/volare.mid", midi);
        add("songs/volare.kar", midi);
        add("songs/volare.mf3", mfx(3, fields, midi));
        add("songs/volare.mf4", mfx(4, fields, withFiller(midi)));
        add("songs/volare.mf5", mfx(5, fields, midi));
        add("songs/volare.mp3", tag(frame("TIT2", "Old")) + audio());
        return songs;
    }

    static QVector<QByteArray> bytesOf(const QStringList &songs)
    {
        QVector<QByteArray> bytes;
        for (const QString &song : songs)
            bytes += TestFiles::read(song);
        return bytes;
    }

    /** Has every song, or with "edit" the first one, changed by the window. */
    void make(const QString &change)
    {
        if (change == text("sync")) {
            m_driver->click<BackupDialog>("exitPushButton");
            press("updateDataToolButton");
            return;
        }
        const bool isToAll = change == text("edit all");
        m_driver->expect<DataEditDialog>([isToAll](DataEditDialog &dialog) {
            child<QComboBox>(dialog, "artistComboBox")->setEditText(text("A NEW ARTIST"));
            if (isToAll)
                click(dialog, "checkBoxToAllArtist");
            click(dialog, "savePushButton");
        });
        if (isToAll)
            m_driver->answerBox(QMessageBox::Yes);
        doubleClick(0);
        m_driver->boxes.clear();
    }

    void answerQuestion(QMessageBox::StandardButton button, QString *question)
    {
        m_driver->expect<QMessageBox>([button, question](QMessageBox &box) {
            *question = box.text();
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }
};

QTEST_MAIN(tst_WindowUndo)
#include "tst_windowundo.moc"
