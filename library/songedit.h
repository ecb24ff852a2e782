#pragma once

#include "library/workflowhost.h"
#include "songs/metasong.h"

class UserSongsRelTableModel;

/** The fields of an edited song that are to be written into every song of the table. */
struct ApplyToAll
{
    bool author = false;
    bool artist = false;
    bool genre = false;
    bool title = false; ///< each song's own file name without its extension, not the edited title

    bool any() const { return author || artist || genre || title; }
};

/** The user's own correction of a song: the window's manual edit and the command line's edit. */
class SongEdit
{
public:
    explicit SongEdit(Disk &disk = Disk::real());

    /** Reads the song. False: unreadable. */
    bool load(const QString &path);

    const SongInfo &info() const { return m_info; }

    /** Puts a marker ahead of those present; false for a song that takes none. Reads the record
     * again. */
    bool addMarker(const QString &text, quint16 bar);

    /** Writes the edited record with the manual rules; false: the file holds its old bytes. Reads
     * the record again. */
    bool save(const SongInfo &edited);

    /** The file name of a path without its folder and the text after its last point. */
    static QString titleFromPath(const QString &path);

private:
    Disk &m_disk;
    MetaSong m_song;
    QString m_path;
    SongInfo m_info;
};

/** The manual edit of rows of the table. */
class RowEditor
{
public:
    RowEditor(UserSongsRelTableModel &model, WorkflowHost &host, Disk &disk = Disk::real());

    /** Writes an edited record into the row's file and refreshes the row. */
    bool saveRow(SongEdit &song, const SongInfo &info, int row);

    /** Writes the chosen fields of \a edited into every other row's song. */
    void applyToOthers(const SongInfo &edited, const ApplyToAll &fields, int editedRow);

private:
    UserSongsRelTableModel &m_model;
    WorkflowHost &m_host;
    Disk &m_disk;
};
