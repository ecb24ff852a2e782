// Loads any bytes as a MIDI file, reads every field and writes it.
#include "fuzz/fuzzing.h"
#include "songs/midi/rawmidifile.h"

using namespace tarvel4;

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Fuzzing::silenceLog();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray input = Fuzzing::bytes(data, size);
    RawMidiFile midi;
    if (!midi.load(input))
        return 0;
    Fuzzing::require(midi.data() == input);

    const QVector<Marker> markers = midi.markers();
    midi.setGenre(midi.genre() + midi.artist());
    midi.setArtist(midi.artist());
    midi.setAuthor(midi.author());
    midi.setTrackName(midi.trackName());
    midi.setKey(midi.key());
    midi.setLength(midi.length());
    midi.setBpm(midi.isPublisher() ? 1 : midi.bpm());
    midi.setMarkers(markers);
    midi.addMarker({1, midi.trackName()});
    Fuzzing::require(midi.hasTrackName() && midi.hasLength() && midi.hasMarkers());

    RawMidiFile again;
    Fuzzing::require(again.load(midi.data()));
    Fuzzing::require(again.length() == midi.length() && again.markers() == midi.markers());
    return 0;
}
