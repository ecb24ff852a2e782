#pragma once

#include "library/filecopier.h"

#include "tests/library/logcapture.h"
#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"

#include <QTemporaryDir>

namespace tarvel4 {

/** What the tests of the copies work with: a folder "from" and a folder "to". */
class CopyFixture
{
protected:
    /** Makes both anew. */
    void reset()
    {
        m_dir.reset(new QTemporaryDir);
        if (!QDir(m_dir->path()).mkdir(text("to")) || !QDir(m_dir->path()).mkdir(text("from")))
            qFatal("no temporary folder");
        m_host = ScriptedHost();
        m_told.clear();
    }

    /** Copies into "to". */
    CopySummary copy(const QStringList &files, Disk &disk = Disk::real())
    {
        const auto observer = [this](const SongOutcome &song) {
            m_told.append(lineOf(QFileInfo(song.path).fileName(), song));
        };
        return FileCopier(m_host, m_host, m_host, disk, observer).copy(files, targetFolder());
    }

    /** What a song came to: "a.mid copied", "a.mid kept" or "a.mid no-room". */
    static QString lineOf(const QString &name, const SongOutcome &song)
    {
        if (song.isFailure())
            return name + text(" ") + song.cause.codeName();
        return name + text(song.result == SongResult::Kept ? " kept" : " copied");
    }

    QString source(const QString &name) const { return m_dir->filePath(text("from/") + name); }
    QString target(const QString &name) const { return m_dir->filePath(text("to/") + name); }
    QString targetFolder() const { return m_dir->filePath(text("to")); }
    QStringList targetNames() const { return TestFiles::namesIn(targetFolder()); }

    /** Writes new songs of these names, and old ones where they are to be copied. */
    QStringList newOverOld(const QStringList &names) const
    {
        QStringList files;
        for (const QString &name : names) {
            files.append(TestFiles::write(source(name), newBytes));
            TestFiles::write(target(name), oldBytes);
        }
        return files;
    }

    const QByteArray oldBytes = SongBytes::midi0(SongBytes::meta(3, "old"));
    const QByteArray newBytes = SongBytes::midi0(SongBytes::meta(3, "new"));
    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
    QStringList m_told; ///< by the observer, as lineOf()
};

} // namespace tarvel4
