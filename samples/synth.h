#pragma once

#include "samples/arrangement.h"

#include <QByteArray>

namespace tarvel4 {

/** A small synthesiser, so that the MP3 among the samples is made from nothing but this tree. */
namespace Synth {

constexpr int sampleRate = 44100;

/** The song as a mono WAV file of 16 bits, with a second for the last chord to fade. */
QByteArray renderWav(const Arrangement &song, int bpm);

} // namespace Synth

} // namespace tarvel4
