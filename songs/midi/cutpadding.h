#pragma once

#include <QByteArray>

namespace tarvel4 {

/**
 * What stands behind the new bytes of a MIDI or MFx file that becomes shorter, until it is cut: a
 * chunk that every reader of MIDI files skips. So a song is whole also when the power fails
 * in between; docs/formats.md, Song formats.
 */
namespace CutPadding {

/** The padding of that many bytes; of fewer than a chunk's header takes, the header's first ones.
 */
QByteArray ofSize(int size);

/** Removes the padding that a save which was cut short left behind the last chunk. */
void removeFrom(QByteArray &midi);

} // namespace CutPadding

} // namespace tarvel4
