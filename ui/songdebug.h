#pragma once

#include <QString>

namespace tarvel4 {

/** The developer panel's trials of the song writer; they write into the working directory. */
namespace SongDebug {

/** Writes the song of a row, unchanged, to "test_save.bin". */
void save(const QString &path, int row);

/** Adds a marker to the song of a row and writes it to "test_addmarker.bin". */
void addMarker(const QString &path, int row, const QString &text, quint16 bar);

} // namespace SongDebug

} // namespace tarvel4
