#pragma once

#include "library/filecopier.h"
#include "library/indexjob.h"
#include "library/volume.h"

#include <QCoreApplication>
#include <QStringList>

namespace tarvel4 {

/** How a transfer ended. */
struct TransferSummary
{
    enum class Result { Done, Refused, Failed };

    Result result = Result::Refused;
    CopySummary songs;
    IndexSummary index; ///< of the memory, which is left alone where a song failed
};

/** Step 3: copies the chosen songs to the player's memory and brings its index up to date. */
class TransferJob
{
    Q_DECLARE_TR_FUNCTIONS(TransferJob)

public:
    TransferJob(Progress &progress, Questions &questions, Messages &messages, const Volume &volume,
                Disk &disk = Disk::real());

    void setObserver(SongObserver observer) { m_observer = std::move(observer); }

    /** Checks \a dir, copies, indexes, and tells how it ended. An empty \a dir ends it silently. */
    TransferSummary run(const QStringList &paths, const QString &dir);

private:
    QString destinationFor(const QString &dir);
    CopySummary copySongs(const QStringList &paths, const QString &destination);
    IndexSummary updateIndex(const QString &root);
    QString refuse(const QString &text);

    Progress &m_progress;
    Questions &m_questions;
    Messages &m_messages;
    const Volume &m_volume;
    Disk &m_disk;
    SongObserver m_observer;
    bool m_hasMadeFolder = false; ///< the destination
};

} // namespace tarvel4
