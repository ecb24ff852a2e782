#pragma once

#include "samples/arrangement.h"

#include <QByteArray>

namespace tarvel4 {

/** Writes an arrangement as a Standard MIDI File. */
namespace MidiWriter {

/** \a format 0: one track; 1: a track for the whole song's data, then one a part. Notes, tempo,
 * time signature, lyrics and copyright are written; the song's record is not. */
QByteArray write(const Tune &tune, const Arrangement &song, int format);

} // namespace MidiWriter

} // namespace tarvel4
