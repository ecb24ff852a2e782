#pragma once

#include <QByteArray>
#include <QString>

namespace tarvel4 {

/** Songs and catalogues made by hand, byte by byte. */
namespace Fixtures {

/** A meta event at delta-time 0. */
QByteArray meta(int type, const QByteArray &payload);

/** The private event that carries a field of the song's record. */
QByteArray songInfo(int subType, const QByteArray &payload);

/** A format 0 file of the events and one long note. */
QByteArray midi(const QByteArray &events = QByteArray());

/** A song with every field, published by the maker. */
QByteArray wholeSong();
/** Its record, from "name" to "markers", for a file of that name. */
QByteArray wholeRecord(const QByteArray &name);

bool write(const QString &path, const QByteArray &bytes);
QByteArray read(const QString &path);

/** A catalogue of three songs, two of which share a title. */
bool writeCatalogue(const QString &path);

} // namespace Fixtures

} // namespace tarvel4
