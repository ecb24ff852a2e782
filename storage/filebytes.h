#pragma once

#include <QByteArray>

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

namespace tarvel4 {

/** Reads that are complete or have failed. */
namespace FileBytes {

/** No song is larger, and what an array of bytes can hold is little more. */
constexpr qint64 maxSize = 2'000'000'000;

/** Makes \a bytes \a size bytes long; false where that is more than maxSize or than there is memory
 * for. */
bool grow(QByteArray &bytes, qint64 size);

/** Reads on from the file's position until \a bytes, which may hold its first ones already, has
 * \a size of them. False: fewer could be read, or they do not fit into memory. */
bool readUpTo(QFileDevice &file, qint64 size, QByteArray &bytes);

/** Reads on to the end of the file. */
bool readAll(QFileDevice &file, QByteArray &bytes);

} // namespace FileBytes

} // namespace tarvel4
