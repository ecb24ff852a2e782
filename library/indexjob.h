#pragma once

#include "storage/disk.h"

#include <QStringList>

#include <functional>

namespace tarvel4 {

class Index;
class Messages;
class Progress;
struct ProgressTexts;

/** How a build of a memory's index ended. */
struct IndexSummary
{
    int found = 0; ///< songs that the index counted on the memory
    bool isChanged = false; ///< files were written
    bool isPrepared = false; ///< the memory, afterwards
    bool isDone = false; ///< prepared, and all is on the medium
    bool hasFailed = false; ///< the old index could not be read or the new one not be written
    Outcome cause; ///< of the failure
    QStringList errors; ///< what the index could not take in

    /** One line for each thing that went wrong. */
    QStringList details() const;
};

/** Brings a memory's index up to date, or builds it anew. */
class IndexJob
{
public:
    enum class Kind { Update, Rebuild };

    explicit IndexJob(Progress &progress, Messages &messages, Disk &disk = Disk::real());

    /** As Index::setStopWhen(). */
    void setStopWhen(std::function<bool()> stopWhen) { m_stopWhen = std::move(stopWhen); }

    /** Told what Index::currentPathChanged() tells. */
    void setOnPath(std::function<void(const QString &path)> onPath)
    {
        m_onPath = std::move(onPath);
    }

    /** Shows a progress of its own, whose maximum is \a maximum until the songs are counted. */
    IndexSummary run(Kind kind, const QString &root, const ProgressTexts &texts, int maximum);

    /** The same for whoever follows the signals of \a index itself. */
    static IndexSummary run(Kind kind, const QString &root, Index &index);

private:
    Progress &m_progress;
    Messages &m_messages;
    Disk &m_disk;
    std::function<bool()> m_stopWhen;
    std::function<void(const QString &)> m_onPath;
};

} // namespace tarvel4
