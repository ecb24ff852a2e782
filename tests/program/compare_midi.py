"""compare_midi.py OLD... -- NEW...: fails unless both lists hold the same music, song by song."""
import sys

import mido

METADATA = {"track_name", "key_signature"}
PRIVATE = 0x4B


def music(path):
    """The events of each track at their absolute times, less those that are a song's metadata."""
    tracks = []
    for number, track in enumerate(mido.MidiFile(path).tracks):
        time = 0
        events = []
        for message in track:
            time += message.time
            is_metadata = message.type in METADATA or getattr(message, "type_byte", None) == PRIVATE
            if number > 0 or not is_metadata:
                events.append((time, message.copy(time=0)))
        tracks.append(events)
    return tracks


split = sys.argv.index("--")
old, new = sys.argv[1:split], sys.argv[split + 1:]
if len(old) != len(new) or not old:
    sys.exit("the lists differ in length")
different = [path for path, other in zip(old, new) if music(path) != music(other)]
if different:
    sys.exit("different: " + " ".join(different))
print(len(old), "songs hold the same music")
