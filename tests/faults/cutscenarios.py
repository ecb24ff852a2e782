"""What power_cut cuts: a card, a command on it, and the commands that come after the cut."""
import collections
import pathlib
import shutil
import sqlite3
import subprocess

SAMPLES = pathlib.Path(__file__).resolve().parent.parent.parent / "samples"
LONG = "A title that is a good deal longer than the one before"
FORMATS = {"MIDI": "SANTALUC.mid", "MF3": "FRAMARTI.mf3", "MF4": "DONNAMOB.mf4", "MF5": "GREENSLV.mf5", "MP3": "AULDLANG.mp3"}
EDIT_ANOTHER = "$CLI edit --title Next FUNICULI.mid"
EDIT_ANOTHER_AGAIN = "$CLI edit --title Third FUNICULI.mid"
UNDO = "$CLI undo"
RECOVERY = "recovery"

# fill(cli, card, share) makes what lies on the card; the others are shell text for the guest. setup: before the power can be
# cut; job: what is cut; next: the first command after it; index: asks the index whether it is true; again: the job once more.
Scenario = collections.namedtuple("Scenario", "fill setup job next index again")


def run_quietly(command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def copy_songs(folder, names):
    for name in names:
        shutil.copy(SAMPLES / name, folder)


def enlarge(cli, path):
    """Gives a song some kilobytes of markers, so that it takes many sectors."""
    markers = [word for i in range(1, 1500) for word in ("--add-marker", f"{i}:m{i * 2654435761 % (1 << 24):06x}")]
    run_quietly([cli, "--quiet", "edit", *markers, path])


def one_song(name):
    def fill(cli, card, _share):
        copy_songs(card, [name])
        if not name.endswith(".mp3"):
            enlarge(cli, card / name)
    return fill


def all_formats(cli, card, _share):
    (card / "songs").mkdir()
    for name in FORMATS.values():
        one_song(name)(cli, card / "songs", None)


def thirty_songs(_cli, card, share):
    """Songs whose names only a catalogue of their own knows; as they are, since a synchronisation keeps what was edited."""
    (card / "songs").mkdir()
    catalogue = sqlite3.connect(share / "catalogue")
    catalogue.execute("CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, length integer, bpm "
                      "integer, key varchar, filename varchar primary key, markers varchar, altartist varchar)")
    names = list(FORMATS.values())
    for i in range(30):
        source = SAMPLES / names[i % len(names)]
        target = card / "songs" / f"TUNE{i:02}{source.suffix}"
        shutil.copy(source, target)
        if source.suffix == ".mp3":
            target.write_bytes(source.read_bytes()[:40000])
        catalogue.execute("INSERT INTO Songs VALUES(?,?,'POP','Nobody',99,99,'C',?,'1;Intro;9;Coda;','')",
                          (f"{LONG} {i}", f"Artist {i}", f"TUNE{i:02}"))
    catalogue.commit()
    catalogue.close()


def a_memory(cli, card, share):
    """An old song of each name that will be copied, but for one that is new."""
    (card / "songs").mkdir()
    (share / "collection").mkdir()
    for name in FORMATS.values():
        one_song(name)(cli, share / "collection", None)
        if name != FORMATS["MF4"]:
            copy_songs(card / "songs", [name])
            run_quietly([cli, "--quiet", "edit", "--title", "Old", card / "songs" / name])


def all_scenarios():
    scenarios = {}
    for kind, name in FORMATS.items():
        longer = f'--title "{LONG}"' + ("" if kind == "MP3" else ' --add-marker "2:and a marker"')
        shorter = "--title S" + ("" if kind == "MP3" else ' --key ""')
        for what, options in (("longer", longer), ("shorter", shorter)):
            scenarios[f"edit-{kind}-{what}"] = Scenario(
                one_song(name), ":", f"$CLI edit {options} {name}", EDIT_ANOTHER, ":", ":")
    scenarios["sync"] = Scenario(
        thirty_songs, ":", "$CLI --catalogue $SHARE/catalogue sync --no-backup --unpublished yes --recursive songs",
        EDIT_ANOTHER, ":", ":")
    scenarios["undo"] = Scenario(
        all_formats, f'$CLI edit --title "{LONG}" --key "" songs/*', UNDO, EDIT_ANOTHER, ":", ":")
    scenarios[RECOVERY] = scenarios["edit-MIDI-longer"]
    transfer = "$CLI transfer --overwrite yes --memory $CARD --to $CARD/songs --recursive $SHARE/collection"
    verify = "$CLI index verify $CARD"
    scenarios["transfer"] = Scenario(
        a_memory, "$CLI index rebuild $CARD", transfer, EDIT_ANOTHER, verify,
        f"{transfer} && {verify}")
    return scenarios
