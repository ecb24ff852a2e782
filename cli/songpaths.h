#pragma once

#include "storage/outcome.h"

#include <QStringList>
#include <QVector>

namespace tarvel4 {

struct Session;

/** A path as the user named it, and as Qt must be told it. */
struct GivenPath
{
    QString given;
    QString file;
};

/** A folder's path without slashes at its end. */
QString withoutSlash(const QString &folder);

/** The songs that the PATHs of a command name. */
class SongPaths
{
public:
    /** Whether the command has the option --recursive. */
    enum class Takes { Files, FilesAndFolders };

    explicit SongPaths(Session &session, Takes takes = Takes::FilesAndFolders)
        : m_session(session)
        , m_takes(takes)
    {}

    /** Looks at every path first; false, having said why (as a record too where records are
     * JSON), when one can't be used. */
    bool collect(const QStringList &paths, bool recursive);

    /** The same for a command that writes: what a power cut left aside is put in order first, so
     * that its songs are among the others. */
    bool recoverAndCollect(const QStringList &paths, bool recursive);

    const QVector<GivenPath> &songs() const { return m_songs; }

    /** The files, each once however often it was named. */
    void removeRepeats();
    QStringList files() const;

    /** True when something of a folder could not be reached. */
    bool hasSkipped() const { return m_hasSkipped; }

private:
    enum class SetAsideFile { DoesNotCount, Counts };
    bool areUsable(const QStringList &paths, bool recursive, SetAsideFile setAside);
    bool isUsable(const QString &path, bool recursive, SetAsideFile setAside);
    bool refuse(const QString &path, Outcome::Code code, const QString &error);
    void recover(const QString &file);
    void walk(const QString &folder);

    Session &m_session;
    Takes m_takes;
    QVector<GivenPath> m_songs;
    bool m_hasSkipped = false;
};

} // namespace tarvel4
