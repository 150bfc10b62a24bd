#!/usr/bin/env python3
"""Kills a program that saves a document over and over, and looks at what each kill leaves.

kill_during_saves.py [--kills N] COMMAND...    e.g. tools/wine_run build/win32/bin/crash_safe_saver.exe

Each round starts the saver, waits until it has saved at least once, lets a random moment pass (three times of four: from
the sight of the temporary file on) and sends SIGKILL. The document must then be whole and no older than any seen before,
and beside it at most one other file may lie: the temporary one. When that one is there, the kill fell between its opening
and its move. At least a quarter of the kills must have fallen there, or the test has not tested much.
"""
import argparse
import os
import random
import re
import signal
import subprocess
import sys
import tempfile
import time


def processes_of(program, token):
    """The ids of the saver's own processes, not of the shells and wrappers that started them."""
    found = []
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{pid}/comm") as comm, open(f"/proc/{pid}/cmdline") as command:
                if comm.read().strip() == program[:15] and token in command.read():
                    found.append(int(pid))
        except OSError:
            pass  # it has ended since
    return found


def number_of_whole(document):
    """The number of a whole document; None for anything else."""
    mark = re.match(rb"<(\d+)>", document)
    if not mark:
        return None
    n = int(mark[1])
    return n if document == mark[0] + bytes([97 + n % 26]) * (1000000 + n % 1000) + mark[0] else None


def inode(path):
    try:
        return os.stat(path).st_ino
    except FileNotFoundError:
        return None


def wait_for(condition, what):
    end = time.monotonic() + 20
    while not condition():
        if time.monotonic() > end:
            sys.exit(f"waited in vain for {what}")
        time.sleep(0.0005)


def run_and_kill(command, path, first, in_the_act):
    """One round. `in_the_act`: the kill waits until a save has begun; otherwise it falls anywhere."""
    before = inode(path)
    temporary = path + ".tmp"
    token = os.path.basename(os.path.dirname(path))
    program = os.path.basename(command[-1])
    with tempfile.TemporaryFile() as said:
        saver = subprocess.Popen([*command, "Z:" + path.replace("/", "\\"), str(first)],
                                 stdin=subprocess.DEVNULL, stdout=said, stderr=said)
        wait_for(lambda: inode(path) not in (None, before) or saver.poll() is not None, "the first save")
        targets = processes_of(program, token)  # looked up beforehand: the kill must not come late
        if in_the_act:
            wait_for(lambda: inode(temporary) is not None or saver.poll() is not None, "a save")
            time.sleep(random.uniform(0, 0.0015))
        else:
            time.sleep(random.uniform(0, 0.03))
        if saver.poll() is not None:
            said.seek(0)
            sys.exit(f"the saver ended by itself: {said.read().decode(errors='replace')}")
        for pid in targets:
            os.kill(pid, signal.SIGKILL)
        saver.wait(20)
    wait_for(lambda: not processes_of(program, token), "the saver's end")


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--kills", type=int, default=200)
    arguments.add_argument("command", nargs=argparse.REMAINDER)
    options = arguments.parse_args()
    inside = 0
    latest = 0
    with tempfile.TemporaryDirectory(prefix="qvi_kill_") as folder, tempfile.NamedTemporaryFile() as hold:
        # Where starting the first program of a session is dear, one that only waits keeps the session up.
        waiting = subprocess.Popen([*options.command, "Z:" + hold.name.replace("/", "\\")], stdin=subprocess.DEVNULL)
        path = os.path.join(folder, "document.xml")
        for kill in range(options.kills):
            run_and_kill(options.command, path, latest + 1, in_the_act=kill % 4 != 0)
            with open(path, "rb") as file:
                number = number_of_whole(file.read())
            if number is None or number < latest:
                sys.exit(f"kill {kill}: the document is broken or older than document {latest}")
            latest = number
            others = set(os.listdir(folder)) - {"document.xml"}
            if not others <= {"document.xml.tmp"}:
                sys.exit(f"kill {kill}: stray files {sorted(others)}")
            inside += bool(others)
        os.truncate(hold.name, 1)
        waiting.wait(20)
    print(f"{options.kills} kills, {inside} of them between the opening of the temporary file and its move; "
          f"the document was whole after every one; the last was number {latest}")
    if inside * 4 < options.kills:
        sys.exit("too few kills fell into a save")


main()
