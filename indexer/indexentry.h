#pragma once

#include <QString>

namespace tarvel4 {

/** One indexed song file. */
struct IndexEntry
{
    QString title; ///< upper case, never empty once read
    QString artist; ///< upper case, "<UNKNOWN>" when the song has none
    QString genre; ///< as artist
    qint32 number = -1; ///< record in "index.id3"; -1: the file no longer exists
    quint8 kind = 0; ///< 0 MIDI or unreadable, 1 MP3, 2 MF3, 3 MF4, 4 MF5
    quint8 tempo = 0; ///< beats per minute, cut to 8 bits
    quint8 reserved = 0;
    quint8 markers = 0; ///< 1 when the song carries markers
    QString absolutePath;
    QString relativePath; ///< below the root, begins with "/"
    qint32 order = 0; ///< position of the record in "index.id3"; equal to number after a build
    quint32 date = 0; ///< last modification, yyyy x 10000 + mm x 100 + dd
    quint32 time = 0; ///< hh x 10000 + mi x 100 + ss
};

} // namespace tarvel4
