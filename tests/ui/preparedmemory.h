#pragma once

#include "tests/library/testfiles.h"

namespace tarvel4 {

/** The index files of a small memory, byte by byte. */
namespace PreparedMemory {

inline QByteArray padded(const QByteArray &text, int size)
{
    return text.leftJustified(size, '\0');
}

inline QByteArray number(int value)
{
    return QByteArray(3, '\0') + static_cast<char>(value);
}

inline QByteArray pathRecord(int index, const QByteArray &path)
{
    return number(index) + padded(path, 252) + "20090305" + "070809";
}

inline QByteArray titleRecord(int index, const QByteArray &title)
{
    return number(index) + padded(title, 58) + static_cast<char>(120) + '\0';
}

inline QByteArray artistRecord(int before, int songs, const QByteArray &artist)
{
    return QByteArray(1, '\0') + static_cast<char>(before) + '\0' + static_cast<char>(songs)
        + padded(artist, 58) + '\0' + '\xff';
}

/** A memory of three songs, two of one artist who is written in two ways. */
inline void write(const QString &root)
{
    const QByteArray waterloo = titleRecord(0, "WATERLOO");
    const QByteArray azzurro = titleRecord(1, "AZZURRO; LIVE");
    const QByteArray chiquitita = titleRecord(2, "CHIQUITITA");
    TestFiles::write(root + QStringLiteral("/index.id3"),
                     pathRecord(0, "/a/w.mid") + pathRecord(1, "/a/z.mid")
                         + pathRecord(2, "/b.mp3"));
    TestFiles::write(root + QStringLiteral("/ordfile.id3"), QByteArray("\0\0\1\0\2\0", 6));
    TestFiles::write(root + QStringLiteral("/title.id3"), azzurro + chiquitita + waterloo);
    TestFiles::write(root + QStringLiteral("/artist.id3"),
                     artistRecord(0, 2, "ABBA") + chiquitita + waterloo
                         + artistRecord(2, 1, "CELENTANO") + azzurro);
    TestFiles::write(root + QStringLiteral("/atitle.id3"), QByteArray(256, '\xff'));
    TestFiles::write(root + QStringLiteral("/aartist.id3"), QByteArray(256, '\xff'));
    TestFiles::write(root + QStringLiteral("/fsinfos.id3"),
                     QByteArray("\3\0\2\0\0\0\0\0\0\0\0\0", 12));
}

} // namespace PreparedMemory

} // namespace tarvel4
