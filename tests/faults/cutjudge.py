"""Looks at each card after a cut and the commands that followed it (for power_cut)."""
import collections
import hashlib
import os
import pathlib
import re
import subprocess
import tempfile

from cutguest import copy_sparse

SONG_SUFFIXES = (".mid", ".kar", ".mp3", ".mf3", ".mf4", ".mf5")
OURS = re.compile(r"\.tarvel4\.(bak|part)$|\.tarvel4soft-[\d-]+\.part$|~\d\.(BAK|PAR|TMP)$|\.tmp$")

# The count of free clusters is a hint; it stays behind where the system write-protects a hurt card amid a removal.
ONLY_COUNTED = {"Free cluster summary wrong (n vs. really n)", "Auto-correcting."}

# What fsck.vfat finds, and the files once it repaired that; none where it finds nothing.
Look = collections.namedtuple("Look", "problems sums")


def look(image):
    problems = fsck(image)
    return Look(problems, repaired_sums(image) if problems else {})


def fsck(image):
    """What is wrong with the card besides that it was not unmounted; numbers left out."""
    said = subprocess.run(["fsck.vfat", "-n", image], capture_output=True, text=True, check=False).stdout
    lines = [line.strip() for line in said.splitlines()[1:-1]]
    plain = ("Dirty bit", "Automatically removing dirty", "There are differences between boot sector", "This is mostly",
             "65:", "Not automatically", "Leaving filesystem", "Performing changes")
    return {re.sub(r"\d+", "n", line) for line in lines if line and not line.startswith(plain)}


def repaired_sums(image):
    """The files of the card once its tables are repaired."""
    with tempfile.TemporaryDirectory() as folder:
        card, files = pathlib.Path(folder, "card.img"), pathlib.Path(folder, "files")
        copy_sparse(image, card)
        files.mkdir()
        subprocess.run(["fsck.vfat", "-a", card], stdout=subprocess.DEVNULL, check=False)
        subprocess.run(["mcopy", "-s", "-n", "-i", card, "::", files], check=False, capture_output=True)
        return {str(path.relative_to(files)): hashlib.sha256(path.read_bytes()).hexdigest()
                for path in files.rglob("*") if path.is_file()}


def sums(path):
    if not path.exists():
        return {}
    lines = path.read_text(errors="replace").splitlines()
    return {line[66:]: line[:64] for line in lines}


def is_song(name):
    return name.lower().endswith(SONG_SUFFIXES) and not os.path.basename(name).startswith(".")


class Aftermath:
    """What the second guest found and said about one card: after the next command, after the cut one came again, and,
    where that failed, after it came a third time, on the repaired card."""

    def __init__(self, folder, has_again):
        def lines(name):
            return (folder / name).read_text(errors="replace").splitlines() if (folder / name).exists() else []

        def status(name):
            return int((lines(name) or ["-1"])[0])

        self.is_mounted = (folder / "status").exists()
        self.has_again = has_again
        self.sums, self.sums_again, self.sums_third = (sums(folder / name) for name in ("sums", "sums.again", "sums.third"))
        self.status, self.index, self.again, self.index_again, self.third = (
            status(name) for name in ("status", "index.status", "again.status", "index.again.status", "third.status"))
        self.said, self.problems, self.said_again, self.problems_again, self.said_third = (
            lines(name) for name in ("err", "index", "again", "index.again", "third"))
        self.card = look(folder / "card.img")


class Tally:
    """Judges each card, and counts."""

    def __init__(self, share):
        self.old, self.new, self.next = (sums(share / name) for name in ("old", "new", "next"))
        self.count = collections.Counter()
        self.first, self.faults, self.said = None, collections.Counter(), collections.Counter()

    def songs(self):
        """Those that the job changes."""
        names = sorted(set(self.old) | set(self.new))
        return [name for name in names if is_song(name) and self.old.get(name) != self.new.get(name)]

    def judge(self, cut, before, after):
        is_hurt = bool(before.problems)
        on_hurt = " on a hurt file system" * is_hurt
        faults = [] if after.is_mounted else ["the card can't be mounted"]
        states = self.states(after.sums)
        if "torn" in states and is_hurt:
            at_first = zip(states, self.states(before.sums))
            states = self.states(after.card.sums or after.sums)
            self.count["unreadable"] += 1
            self.count["gone"] += sum(pair == ("torn", "torn") for pair in at_first)
        self.count.update(states)
        self.count["cuts"] += 1
        if "torn" in states:
            faults.append("a song is torn or gone" + on_hurt)
        if "aside" in states and not after.has_again:
            faults.append("a song is still set aside")
        if cut.has_ended and set(states) != {"new"}:
            faults.append("a song is not the new one although the command had ended well")
        faults += self.others(is_hurt, after)
        # A card whose tables the cut itself hurt is write-protected by the system until it is repaired.
        wants_repair = is_hurt and any("repair the card" in line for line in after.said + after.said_again)
        self.count["hurt"] += wants_repair
        if after.status != 0 and not wants_repair:
            faults.append(f"the next command ends with {after.status}" + on_hurt)
        found_since = after.card.problems - before.problems - (ONLY_COUNTED if is_hurt else set())
        if found_since:
            faults.append("fsck.vfat: " + "; ".join(sorted(found_since)))
        faults += self.index_faults(after.index, after.problems)
        if after.has_again:
            faults += self.again_faults(is_hurt, after)
        self.said.update(after.said + after.said_again)
        self.faults.update(faults)
        if faults and not self.first:
            self.first = f"write {cut.write}" + (f" ({len(cut.part)} bytes of it)" if cut.part else "")

    def states(self, sums_now):
        return [self.state(name, sums_now) for name in self.songs()]

    def state(self, name, sums_now):
        found = sums_now.get(name)
        if found == self.old.get(name):
            return "old"
        if found == self.new.get(name):
            return "new"
        return "aside" if not found and sums_now.get(name + ".tarvel4.bak") == self.old[name] else "torn"

    def others(self, is_hurt, after):
        """Files that nobody knows, and songs that are not concerned and yet changed."""
        known = set(self.old) | set(self.new) | set(self.next)
        concerned = set(self.songs())
        found = set(after.sums_again if after.has_again else after.sums)
        left = sorted(found - known)
        if is_hurt:  # nothing can be removed there, or would take a song's clusters with it
            ours = [name for name in left if OURS.search(name)]
            self.count["left"] += len(ours)
            left = [name for name in left if name not in ours]
        for name in left:
            yield "left: " + re.sub(r"\d+", "n", name)
        for name in sorted(set(self.next) - concerned):
            if after.status == 0 and is_song(name) and after.sums.get(name) != self.next[name]:
                yield f"not concerned and yet changed: {name}"

    def index_faults(self, status, problems):
        """Prepared and true, but for songs copied and not yet taken in, or not prepared."""
        changed = [os.path.basename(name) for name in self.next if is_song(name) and self.old.get(name) != self.next[name]]
        if status == 1 and [line for line in problems if not any(name in line for name in changed)]:
            yield "the index is not true"
        if status not in (0, 1, 3):
            yield f"index verify ends with {status}"

    def again_faults(self, is_hurt, after):
        """The job once more makes every song new; it may fail on a hurt card, but harms no song then."""
        if after.again == 0:
            if self.not_new(after.sums_again):
                yield "a song is not the new one after the same command once more"
            return
        self.count["refused"] += 1
        if not is_hurt:
            yield f"the same command once more ends with {after.again}"
        for name in self.songs():
            # What the cut itself took is as it was.
            if self.state(name, after.sums_again) == "torn" and after.sums_again.get(name) != after.sums.get(name):
                yield "a song is torn or gone after the same command once more failed"
        for fault in self.index_faults(after.index_again, after.problems_again):
            yield fault + " after the same command once more failed"
        if after.third != 0 or self.not_new(after.sums_third):
            yield "a song is not the new one, or the index not true, after a repair and the same command once more"

    def not_new(self, sums_now):
        return [name for name in self.songs() if sums_now.get(name) != self.new.get(name)]

    def line(self, name, seconds):
        count = self.count
        verdict = f"first bad cut at {self.first}" if self.first else "all good"
        return (f"{name}: {count['cuts']} cuts, {len(self.songs())} songs: {count['old']} old, {count['new']} new, "
                f"{count['aside']} set aside, {count['torn']} TORN, {count['hurt']} times to be repaired, "
                f"{count['unreadable']} times before songs can be read ({count['gone']} songs gone meanwhile), "
                f"{count['refused']} times before the same command once more, {count['left']} files left on such cards; "
                f"{verdict} ({seconds:.0f} s)")
