#pragma once

#include "songs/midi/rawmidifile.h"
#include "tests/songs/songbytes.h"

#include <QtTest>

namespace tarvel4 {

/** What the tests of RawMidiFile share. */
namespace MidiFixture {

inline RawMidiFile loaded(const QByteArray &bytes)
{
    RawMidiFile midi;
    if (!midi.load(bytes))
        qFatal("the fixture is no MIDI file");
    return midi;
}

inline QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

} // namespace MidiFixture

} // namespace tarvel4
