"""Prints, as one JSON line a file, what mutagen reads in MP3 songs.

With --tag FILE it first gives the file a tag with a picture, UTF-16 texts and padding.
"""
import json
import sys

import mutagen.id3
import mutagen.mp3

if sys.argv[1] == "--tag":
    tag = mutagen.id3.ID3()
    tag.add(mutagen.id3.TIT2(encoding=1, text="Perché no"))
    tag.add(mutagen.id3.TALB(encoding=1, text="Album"))
    tag.add(mutagen.id3.APIC(encoding=0, mime="image/png", type=3, desc="", data=bytes(range(256)) * 300))
    tag.save(sys.argv[2], v2_version=3, padding=lambda info: 2000)
    sys.exit()

for path in sys.argv[1:]:
    song = mutagen.mp3.MP3(path)
    tags = song.tags or {}
    facts = {name: str(tags[name]) for name in tags if name.startswith("T")}
    facts["pictures"] = [len(frame.data) for frame in tags.values() if frame.FrameID == "APIC"]
    facts["seconds"] = round(song.info.length, 3)
    print(json.dumps(facts))
