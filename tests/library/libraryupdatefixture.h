#pragma once

#include "library/backupjob.h"
#include "library/libraryupdate.h"

#include "tests/library/logcapture.h"
#include "tests/library/testlibrary.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"

namespace tarvel4 {

/** A library with a catalogue of four songs, and its update. */
class LibraryUpdateFixture
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

    bool update(LibraryUpdate::UnpublishedPolicy unpublished = {true, true},
                Disk &disk = Disk::real())
    {
        LibraryUpdate update(m_library->db(), m_library->model(), m_library->host(), unpublished,
                             disk);
        return update.updateUserLibrary([this] { return backup().mayProceed; });
    }

    BackupSummary backup()
    {
        ScriptedHost &host = m_library->host();
        return BackupJob(host, host, host).run(m_library->files());
    }

    static QByteArray makersSong(const char *title = "")
    {
        using namespace SongBytes;
        return midi0(meta(2, "K-VARO") + meta(3, title));
    }

    QScopedPointer<TestLibrary> m_library;
};

} // namespace tarvel4
