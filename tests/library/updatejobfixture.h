#pragma once

#include "library/backupjob.h"
#include "library/updatejob.h"

#include "tests/library/logcapture.h"
#include "tests/library/testlibrary.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"

namespace tarvel4 {

/** A library with a catalogue of four songs, and its update. */
class UpdateJobFixture
{
protected:
    static constexpr int listed = UserSongsRelTableModel::Listed;
    static constexpr int updated = UserSongsRelTableModel::Updated;
    static constexpr int failed = UserSongsRelTableModel::Failed;

    /** Makes the library anew, without songs. */
    void reset()
    {
        m_library.reset();
        m_library.reset(new TestLibrary({{text("ONE"), text("UNO")},
                                         {text("TWO"), text("DUE")},
                                         {text("THREE"), text("TRE")},
                                         {text("ACCENT"), text("Citt\u00e0")}}));
    }

    /** Updates the table as the window does; the songs go to \a observer too. */
    UpdateSummary update(const UpdateJob::Options &options = {}, Disk &disk = Disk::real(),
                         const SongObserver &observer = {})
    {
        ScriptedHost &host = m_library->host();
        const SongObserver table = SongRows::updated(m_library->model());
        SaveRun saves(disk, nullptr, QStringLiteral("sync"));
        return UpdateJob(m_library->db(), host, host, options, saves)
            .run(
                SongRows::paths(m_library->model()),
                [&](const SongOutcome &song) {
                    if (!options.isDryRun)
                        table(song);
                    if (observer)
                        observer(song);
                },
                [&] { return BackupJob(host, host, host).run(m_library->files()).mayProceed; });
    }

    static QByteArray makersSong(const char *title = "")
    {
        using namespace SongBytes;
        return midi0(meta(2, "K-VARO") + meta(3, title));
    }

    QScopedPointer<TestLibrary> m_library;
};

} // namespace tarvel4
