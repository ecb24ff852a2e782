#include "songs/songinfo.h"

#include "storage/debuglog.h"

#include <QDebug>

namespace tarvel4 {

void SongInfo::clear()
{
    *this = SongInfo();
}

void dumpSongInfo(const SongInfo &info)
{
    if (!debugLog().isDebugEnabled())
        return;
    qDebug() << "Dump Info song ----------------------------------------------";
    qDebug() << "Format     :" << info.format;
    qDebug() << "Filename   :" << info.filename;
    qDebug() << "Shortname  :" << info.shortname;
    qDebug() << "Is K-Varo  :" << (info.isPublisher ? "true" : "false");
    qDebug() << "Title      :" << info.title;
    qDebug() << "Artist     :" << info.artist;
    qDebug() << "AltArtist  :" << info.altArtist;
    qDebug() << "Genre      :" << info.genre;
    qDebug() << "Author     :" << info.author;
    qDebug() << "Length     :" << info.length;
    qDebug() << "userBpm    :" << info.bpm;
    qDebug() << "Key        :" << info.key;
    if (info.markers.isEmpty())
        qDebug() << "NO Markers";
    else
        qDebug() << "Markers:";
    for (const Marker &marker : info.markers) {
        qDebug() << "  bar:" << marker.bar;
        qDebug() << "  text:" << marker.text;
    }
    qDebug() << "MfxLongName:" << info.mfxLongName;
    qDebug() << "MfxFlags   :" << QStringLiteral("0x%1").arg(info.mfxFlags, 0, 16);
    qDebug() << "Dump END ----------------------------------------------------";
}

} // namespace tarvel4
