"""Prints, as one JSON line a file, what mido reads in MIDI songs."""
import hashlib
import json
import sys

import mido

OURS = {"track_name", "key_signature"}
SONG_INFO = 0x4B


def is_metadata(message):
    if message.type == "unknown_meta":
        return message.type_byte == SONG_INFO
    return message.type in OURS


def first(song, kind, attribute):
    for track in song.tracks:
        for message in track:
            if message.type == kind:
                return getattr(message, attribute)
    return ""


for path in sys.argv[1:]:
    song = mido.MidiFile(path)
    music = hashlib.sha256(repr((song.type, song.ticks_per_beat)).encode())
    for number, track in enumerate(song.tracks):
        now = 0
        for message in track:
            now += message.time
            if number > 0 or not is_metadata(message):
                music.update(b"%d %d %s;" % (number, now, bytes(message.bytes())))
    fields = [
        bytes(message.data).decode("latin-1")
        for message in song.tracks[0]
        if message.type == "unknown_meta" and message.type_byte == SONG_INFO
    ]
    print(json.dumps({
        "title": first(song, "track_name", "name"),
        "key": first(song, "key_signature", "key"),
        "fields": fields,
        "music": music.hexdigest(),
    }))
