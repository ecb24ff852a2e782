"""A guest of user-mode-linux with a memory card, and the writes that reach it (for power_cut)."""
import collections
import os
import pathlib
import re
import select
import shutil
import signal
import socket
import struct
import subprocess
import sys
import time

SECTOR = 512
PATIENCE = 900  # seconds for a guest

Write = collections.namedtuple("Write", "offset bytes flushed whole has_ended")

INIT = """#!/bin/bash
export PATH=/usr/sbin:/usr/bin:/sbin:/bin W={work} LC_ALL=C.UTF-8 CLI="{cli} --quiet"
export TMPDIR=$W/mnt SHARE=$W/mnt/share CARD=$W/mnt/card HOME=$W/mnt/share/home
mount -t proc proc /proc; mount -t sysfs sys /sys; mount -t tmpfs tmpfs $W/mnt; mkdir $CARD $SHARE
for m in fs/nls/nls_cp437 fs/nls/nls_iso8859-1 fs/nls/nls_utf8 fs/fat/fat fs/fat/vfat drivers/block/loop; do
  insmod /usr/lib/uml/modules/$(uname -r)/kernel/$m.ko
done
mount -t hostfs -o $W/share none $SHARE
shopt -s globstar dotglob nullglob
sums() {{ cd $CARD; sha256sum -- ** >$1 2>/dev/null || :; }} # folders are none of its files
{functions}
cd $SHARE; . ./task >$SHARE/task.out 2>&1
cd /; : >$SHARE/ended; echo o >/proc/sysrq-trigger; sleep 9
"""


def signature(folder):
    return sorted((str(path), path.lstat().st_size, path.lstat().st_mtime_ns) for path in folder.rglob("*"))


class HomeKeeper:
    """Keeps HOME as it was at a moment, once as long as it does not change."""

    def __init__(self, home, store):
        self.home, self.store, self.last, self.count = home, store, None, 0

    def keep(self):
        now = signature(self.home)
        if now != self.last:
            self.last, self.count = now, self.count + 1
            shutil.copytree(self.home, self.store / str(self.count), symlinks=True)
        return self.store / str(self.count)


class Recorder:
    """Answers cutdisk.so: puts down each write from the moment at which the guest says that the job begins."""

    def __init__(self, share, image, work):
        self.share, self.image, self.base = share, image, work / "base.img"
        self.homes = HomeKeeper(share / "home", work / "homes")
        shutil.rmtree(work / "homes", ignore_errors=True)
        (work / "homes").mkdir()
        self.writes, self.flushed = [], None

    def told(self, stream, guest):
        head = read_all(stream, 24)
        if not head:
            return False
        kind, size, offset = struct.unpack("qqq", head)
        data = read_all(stream, size)
        if (self.share / "armed").exists() and not (self.share / "over").exists():
            if self.flushed is None:
                copy_sparse(self.image, self.base)
                self.flushed = self.homes.keep()
            if kind == 1:
                self.put_down(offset, data, guest)
            else:
                self.flushed = self.homes.keep()
        stream.send(b"!")
        return True

    def put_down(self, offset, data, guest):
        stop(guest)
        self.writes.append(Write(offset, data, self.flushed, self.homes.keep(), (self.share / "exited").exists()))
        os.kill(guest, signal.SIGCONT)


def stop(pid):
    """The guest goes on while its disk is being written: it must not change HOME while that is copied."""
    os.kill(pid, signal.SIGSTOP)
    while not re.search(r"^State:\s+[Tt]", pathlib.Path(f"/proc/{pid}/status").read_text(), re.M):
        time.sleep(0.0005)


def read_all(stream, size):
    data = b""
    while len(data) < size:
        piece = stream.recv(size - len(data))
        if not piece:
            return b""
        data += piece
    return data


def copy_sparse(source, target):
    subprocess.run(["cp", "--sparse=always", source, target], check=True)


def parts(size, most):
    """Up to so many sizes, evenly spread and of whole sectors, that are less than the size."""
    sectors = size // SECTOR
    return sorted({sectors * i // (most + 1) * SECTOR for i in range(1, most + 1)} - {0})


def put(image, offset, data):
    with open(image, "r+b") as file:
        file.seek(offset)
        file.write(data)


class Guest:
    """What the guest has in WORK: card.img is its card, share/ what it sees of the computer's disk, share/home its HOME."""

    def __init__(self, work, cli, functions):
        self.work, self.cli, self.functions = work, cli, functions
        self.share, self.image = work / "share", work / "card.img"
        for folder in (work / "mnt", self.share / "home"):
            folder.mkdir(parents=True)
        self.library = work / "cutdisk.so"
        source = pathlib.Path(__file__).resolve().parent / "cutdisk.c"
        subprocess.run(["gcc", "-O1", "-shared", "-fPIC", "-o", self.library, source, "-ldl"], check=True)

    def run(self, task, recorder=None):
        """Starts the guest, which runs the shell text TASK, and waits for its end."""
        init = self.work / "init"
        init.write_text(INIT.format(work=self.work, cli=self.cli, functions=self.functions))
        init.chmod(0o755)
        (self.share / "task").write_text(task)
        (self.share / "ended").unlink(missing_ok=True)
        ours, theirs = socket.socketpair()
        environment = dict(os.environ, LD_PRELOAD=str(self.library))
        if recorder:
            environment.update(CUT_FD=str(theirs.fileno()), CUT_INODE=str(self.image.stat().st_ino))
        guest = subprocess.Popen(
            ["linux.uml", f"umid=cut{os.getpid()}", "mem=256M", "rootfstype=hostfs", "rootflags=/", "ro", f"ubd0={self.image}",
             f"init={init}", "con=null", "con0=null", "quiet"],
            env=environment, pass_fds=[theirs.fileno()], start_new_session=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        theirs.close()
        try:
            self.serve(guest, ours, recorder)
        finally:
            os.killpg(guest.pid, signal.SIGKILL)
            guest.wait()

    def serve(self, guest, ours, recorder):
        deadline = time.monotonic() + PATIENCE
        while not (self.share / "ended").exists() and guest.poll() is None:
            if time.monotonic() > deadline:
                sys.exit("the guest does not come to its end")
            if select.select([ours], [], [], 0.05)[0] and not (recorder and recorder.told(ours, guest.pid)):
                time.sleep(0.1)
        if not (self.share / "ended").exists():
            sys.exit("the guest died")
