#pragma once

#include "library/usersettings.h"
#include "storage/contenthash.h"
#include "storage/journal.h"
#include "tests/ui/windowtest.h"
#include "ui/dataeditdialog.h"

#include <QComboBox>

namespace tarvel4 {

/** A test of the window's undo: changes songs, by the window or in the journal alone. */
class UndoTest : public WindowTest
{
protected:
    static QDateTime runTime() { return {QDate(2026, 12, 24), QTime(18, 5)}; }
    static QString journalPath() { return UserSettings::dataFolder() + text("/journal.db"); }

    /** Writes songs as one run, at a time of its own; \a torn: what a cut leaves of each. */
    static void noteRun(const QString &what, const QStringList &songs,
                        const QByteArray &torn = QByteArray())
    {
        Journal journal(UserSettings::dataFolder());
        {
            Journal::Run run(journal, what);
            QVector<JournalEntry> entries;
            for (const QString &song : songs) {
                const QByteArray old = TestFiles::read(song);
                entries += JournalEntry::of(
                    song, {FileChange::Way::InPlace, old, old + ", new", 0, nullptr}, old.size());
            }
            QVERIFY(run.add(entries));
            QVector<Journal::Settled> settled;
            for (const JournalEntry &entry : qAsConst(entries)) {
                ContentHash hash;
                hash.add(entry.oldBytes + ", new");
                settled.append({entry.id, hash.result()});
                TestFiles::write(entry.path, torn.isEmpty() ? entry.oldBytes + ", new" : torn);
            }
            if (torn.isEmpty())
                run.settle(settled);
        }
        JournalFile file(UserSettings::dataFolder(), {});
        QVERIFY(file.open(JournalFile::Access::Write));
        QSqlQuery query = file.prepare("UPDATE run SET time = ?");
        query.addBindValue(runTime().toMSecsSinceEpoch());
        QVERIFY(file.exec(query));
    }

    /** Says yes to taking the last change back; what is told in the end. */
    QString undo()
    {
        m_driver->boxes.clear();
        m_driver->answerBox(QMessageBox::Yes);
        m_driver->answerBox(QMessageBox::Ok);
        trigger("actionUndo");
        return m_driver->boxes.value(1);
    }

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
};

} // namespace tarvel4
