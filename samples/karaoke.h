#pragma once

#include "samples/arrangement.h"

#include <QByteArray>

namespace tarvel4 {

/** The karaoke graphics of a song: its title, then its words, each turning gold as it is sung. */
QByteArray drawKaraoke(const Tune &tune, const Arrangement &song);

} // namespace tarvel4
