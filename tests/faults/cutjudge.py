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


class Aftermath:
    """What the second guest found and said about one card."""

    def __init__(self, folder, has_again):
        self.is_mounted = (folder / "status").exists()
        self.sums = sums(folder / "sums")
        self.sums_again = sums(folder / "sums.again")
        self.has_again = has_again
        self.status, self.index, self.again = (
            int((folder / name).read_text()) if self.is_mounted else -1 for name in ("status", "index.status", "again.status"))
        self.said, self.problems, self.said_again = (
            (folder / name).read_text(errors="replace").splitlines() if self.is_mounted else []
            for name in ("err", "index", "again"))
        self.left_by_fsck = fsck(folder / "card.img")
        self.sums_repaired = repaired_sums(folder / "card.img") if self.left_by_fsck else self.sums


def is_song(name):
    return name.lower().endswith(SONG_SUFFIXES) and not os.path.basename(name).startswith(".")


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

    def judge(self, cut, fsck_before, after):
        faults = []
        if not after.is_mounted:
            faults.append("the card can't be mounted")
        states = [self.state(name, after.sums) for name in self.songs()]
        if "torn" in states and fsck_before:
            states = [self.state(name, after.sums_repaired) for name in self.songs()]
            self.count["unreadable"] += 1
        self.count.update(states)
        self.count["cuts"] += 1
        if "torn" in states:
            faults.append("a song is torn or gone" + " on a hurt file system" * bool(fsck_before))
        if "aside" in states and not after.has_again:
            faults.append("a song is still set aside")
        if cut.has_ended and set(states) != {"new"}:
            faults.append("a song is not the new one although the command had ended well")
        faults += self.others(fsck_before, after)
        # A card whose tables the cut itself hurt is write-protected by the system until it is repaired.
        wants_repair = bool(fsck_before) and any("repair the card" in line for line in after.said + after.said_again)
        self.count["hurt"] += wants_repair
        if after.status != 0 and not wants_repair:
            faults.append(f"the next command ends with {after.status}" + (" on a hurt file system" if fsck_before else ""))
        if after.left_by_fsck - fsck_before:
            faults.append("fsck.vfat: " + "; ".join(sorted(after.left_by_fsck - fsck_before)))
        faults += self.index_faults(after, bool(fsck_before))
        for line in after.said + after.said_again:
            self.said[line] += 1
        self.faults.update(faults)
        if faults and not self.first:
            self.first = f"write {cut.write}" + (f" ({len(cut.part)} bytes of it)" if cut.part else "")

    def state(self, name, sums_now):
        found = sums_now.get(name)
        if found == self.old.get(name):
            return "old"
        if found == self.new.get(name):
            return "new"
        return "aside" if not found and sums_now.get(name + ".tarvel4.bak") == self.old[name] else "torn"

    def others(self, fsck_before, after):
        """Files that nobody knows, and songs that are not concerned and yet changed."""
        known = set(self.old) | set(self.new) | set(self.next)
        concerned = set(self.songs())
        found = set(after.sums_again if after.has_again else after.sums)
        left = sorted(found - known)
        if fsck_before: # nothing can be removed there, or would take a song's clusters with it
            ours = [name for name in left if re.search(r"\.tarvel4\.(bak|part)$|\.tmp$", name)]
            self.count["left"] += len(ours)
            left = [name for name in left if name not in ours]
        for name in left:
            yield "left: " + re.sub(r"\d+", "n", name)
        for name in sorted(set(self.next) - concerned):
            if after.status == 0 and is_song(name) and after.sums.get(name) != self.next[name]:
                yield f"not concerned and yet changed: {name}"

    def index_faults(self, after, is_hurt):
        """Prepared and true, but for songs copied and not yet taken in, or not prepared; good after one more run."""
        changed = [name for name in self.next if self.old.get(name) != self.next[name]]
        concerned = [os.path.basename(name) for name in changed]
        if after.index == 1 and [line for line in after.problems if not any(name in line for name in concerned)]:
            yield "the index is not true"
        if after.index not in (0, 1, 3):
            yield f"index verify ends with {after.index}"
        if after.again != 0 and not is_hurt:
            yield f"the same command once more ends with {after.again}"
        if after.sums_again and [name for name in self.songs() if after.sums_again.get(name) != self.new.get(name)]:
            yield "a song is not the new one after the same command once more"

    def line(self, name, seconds):
        count = self.count
        verdict = f"first bad cut at {self.first}" if self.first else "all good"
        return (f"{name}: {count['cuts']} cuts, {len(self.songs())} songs: {count['old']} old, {count['new']} new, "
                f"{count['aside']} set aside, {count['torn']} TORN, "
                f"{count['hurt']} times to be repaired, {count['unreadable']} times before songs can be read, "
                f"{count['left']} files left on such cards; {verdict} ({seconds:.0f} s)")
