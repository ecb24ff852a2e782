"""Prints, as another reader sees them, the name and the key of each MIDI file: "path<tab>title<tab>key"."""
import sys

import mido

for path in sys.argv[1:]:
    messages = [message for track in mido.MidiFile(path).tracks for message in track]
    title = next((m.name for m in messages if m.type == "track_name"), "")
    key = next((m.key for m in messages if m.type == "key_signature"), "")
    print(path, title.split("\0")[0].strip(), key.replace("m", "-"), sep="\t")
