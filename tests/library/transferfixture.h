#pragma once

#include "library/transferjob.h"

#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"

#include <QTemporaryDir>

namespace tarvel4 {

/** What the tests of a transfer work with: a folder "card" for a memory, songs in a folder "from".
 */
class TransferFixture
{
protected:
    using Result = TransferSummary::Result;

    /** Makes them anew. */
    void reset()
    {
        m_dir.reset(new QTemporaryDir);
        if (!QDir(m_dir->path()).mkdir(text("card")))
            qFatal("no temporary folder");
        m_host = ScriptedHost();
    }

    QString path(const char *below) const { return m_dir->filePath(text(below)); }
    QString card(const char *below = "") const { return path("card") + text(below); }
    QString song(const char *name)
    {
        return TestFiles::write(path("from/") + text(name), SongBytes::midi0());
    }

    TransferSummary transfer(const QStringList &files, const QString &dir,
                             Disk &disk = Disk::real())
    {
        const FolderVolume volume(card());
        return TransferJob(m_host, m_host, m_host, volume, disk).run(files, dir);
    }

    static constexpr char done[] =
        "information Trasferimento|Tutti i file sono stati copiati correttamente|"
        "Tutto è scritto: ora si può togliere la memoria.";
    static constexpr char failed[] =
        "critical Trasferimento|Non è stato possibile copiare uno o più file";
    static constexpr char copying[] = "begin Trasferimento|Trasferimento file...|Interrompi|%1";
    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
};

} // namespace tarvel4
