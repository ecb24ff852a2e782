#pragma once

#include "library/songedit.h"
#include "library/songupdate.h"

namespace tarvel4 {

/** Saves one song without a journal and without waiting for others; how that ended. */
inline SongOutcome saveAtOnce(SongEdit &song, const SongInfo &edited, Disk &disk = Disk::real())
{
    SongOutcome saved;
    SaveRun saves(disk, nullptr, QStringLiteral("edit"));
    song.save(edited, saves, [&saved](const SongOutcome &outcome) { saved = outcome; });
    saves.commit();
    return saved;
}

inline Outcome saveAtOnce(const SongUpdate &song, Disk &disk = Disk::real())
{
    Outcome saved;
    SaveRun saves(disk, nullptr, QStringLiteral("sync"));
    saves.save(song.prepared(), [&saved](const Outcome &outcome) { saved = outcome; });
    saves.commit();
    return saved;
}

} // namespace tarvel4
