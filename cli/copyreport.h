#pragma once

#include "cli/command.h"
#include "cli/songpaths.h"
#include "library/songoutcome.h"

namespace tarvel4 {

/** Tells of each song that could not be copied, by its path as it was given. */
class CopyReport
{
public:
    enum class Records { None, Failures }; ///< a line on standard error there is in both cases

    CopyReport(const SongPaths &paths, Session &session, Records records)
        : m_paths(paths)
        , m_session(session)
        , m_records(records)
    {}

    /** Takes the songs of a job, in their order. */
    SongObserver observer();

private:
    void add(const SongOutcome &song);

    const SongPaths &m_paths;
    Session &m_session;
    Records m_records;
    int m_next = 0;
};

} // namespace tarvel4
