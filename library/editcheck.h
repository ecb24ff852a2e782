#pragma once

#include "library/editjob.h"
#include "library/songedit.h"

#include <QCoreApplication>
#include <QSet>

#include <map>

namespace tarvel4 {

/** Tells beforehand what one edit of many songs would do to their texts. Reads one song of each
 * format, once: it is the format that limits a text. */
class EditCheck
{
    Q_DECLARE_TR_FUNCTIONS(EditCheck)

public:
    struct Song
    {
        QString format; ///< MetaSong::formatName()
        QString path;
    };

    /** At most one note for each field that is to be written, with its gravest first; where there
     * are several songs it tells how many each is about. How many characters still fit is not told
     * of a field of which there is more to say. */
    QVector<FieldNote> notes(const QVector<Song> &songs, const ApplyToAll &fields,
                             const SongInfo &edited);

private:
    const SongEdit *sampleOf(const Song &song);

    std::map<QString, SongEdit> m_samples; ///< by format
    QSet<QString> m_unread; ///< paths
};

} // namespace tarvel4
