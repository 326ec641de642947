"""What happens where files fail: each system call about a file fails once, with each error that it may have.

Walked are the lines of the command, and the functions of the library that read and write; in each run one call fails,
as the kernel would have it fail (prove/io_preload.c). Calls are also interrupted by a signal, and do half of what they
were asked for, or one byte. Allowed is nothing but this:

- an interruption and a short count change nothing at all;
- a failure that is without harm changes nothing;
- any other is told: by status 2 and a sentence of the command, or a status or the documented line of the library;
- a file that is written is whole, old or new; and nothing counts as empty that could not be read.

With --sample, a share of the calls.
"""

import errno
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from aid import commands
from aid.build import build, built, workplace
from aid.judge import Tally, command_faults, difference, same, whole
from aid.server import Folder, Server

FOREVER = 1 << 60
HALF, ONEBYTE = -1, -2

# The errors that are given to each call. What a program may meet in any folder is no failure: ENOENT says that there is
# nothing, and EINVAL that a file system does not do that.
READING = ("EACCES", "EIO")
ERRORS = {
    "open": ("EINTR", "EACCES", "EMFILE", "EIO", "ENOSPC"), "read": ("EINTR", "EIO"), "write": ("EINTR", "ENOSPC", "EIO"),
    "close": ("EINTR", "EIO", "ENOSPC"), "fsync": ("EINTR", "EIO", "ENOSPC"), "rename": ("EACCES", "EIO", "ENOSPC"),
    "stat": READING, "access": READING, "readlink": READING, "getcwd": READING, "chdir": READING, "getdents": READING,
    "mkdir": ("EACCES", "ENOSPC"), "unlink": ("EACCES",), "chmod": ("EPERM", "EIO"), "chown": ("EPERM", "EIO"),
    "dup": ("EMFILE",), "fcntl": ("EMFILE",), "poll": ("EINTR",), "truncate": ("EIO",),
}
KINDS = {"openat": "open", "readv": "read", "writev": "write", "fdatasync": "fsync", "renameat2": "rename", "lstat": "stat",
         "fstat": "stat", "newfstatat": "stat", "statx": "stat", "fchmod": "chmod", "fchown": "chown", "unlinkat": "unlink",
         "mkdirat": "mkdir", "readlinkat": "readlink", "faccessat": "access", "faccessat2": "access", "dup2": "dup",
         "dup3": "dup", "getdents64": "getdents", "ftruncate": "truncate", "ppoll": "poll"}


def call_names():
    """The names of the system calls by their numbers."""
    found = subprocess.run(["cc", "-E", "-dM", "-include", "sys/syscall.h", "-x", "c", "/dev/null"], capture_output=True,
                           text=True, check=True).stdout
    return {int(number): name for name, number in re.findall(r"#define __NR_(\w+) (\d+)$", found, re.MULTILINE)}


NAMES = call_names()


def kinds_of(journal):
    """What each call of a run is."""
    numbers = memoryview(journal).cast("i")
    return [KINDS.get(NAMES[number], NAMES[number]) for number in numbers]


def orders(kinds, step):
    """What is to fail: the place of a call, how many, the error, and the words for it."""
    yield 1, FOREVER, HALF, "each read and write does half of it"
    yield 1, FOREVER, ONEBYTE, "each read and write does one byte"
    for place in range(1, len(kinds) + 1):
        kind = kinds[place - 1]
        for at, name in enumerate(ERRORS.get(kind, ())):
            if (place + at) % step == 0:
                yield place, 1, getattr(errno, name), f"{kind}, call {place} of {len(kinds)}: {name}"
        if kind in ("read", "write") and place % step == 0:
            yield place, 1, HALF, f"{kind}, call {place} of {len(kinds)}: half of it"


# A file that parameter text names is a fault of that text where it cannot be read.
NAMED = (b"Cannot open parameter file", b"Cannot read parameter file")


def judge_command(run, base, folder, error):
    """What is wrong with a run of the command in which a call failed."""
    if same(run, base) and not (run.heeded and base.status != 2) or run.unheard and run.out == base.out:
        return
    if error in (errno.EINTR, HALF, ONEBYTE):
        yield f"it shows: status {run.status}: {run.err[-200:]!r} {difference(run.out, base.out)}"
    elif run.heeded and run.status == base.status != 2:
        yield f"it is not told: status {run.status}"
    elif run.status == 0 and "lsp.log" in base.files:  # an editor is told in the conversation
        again = set(base.out.split(b"Content-Length")) - set(run.out.split(b"Content-Length"))
        if again and os.strerror(error).encode() not in run.out:  # the same once more does no harm
            yield f"the editor is not told: {difference(run.out, base.out)}"
    elif run.status == 1 and any(text in run.out + run.err for text in NAMED):
        yield from whole(run, base, folder)
    else:
        yield from command_faults(run, base, folder, [os.strerror(error).encode()])


def walk_command(line, step, place, tally):
    """Fails the calls of one line of the command."""
    folder = Folder(place, commands.files())
    faults, failed = [], 0
    with Server(built("io_preload.so"), [built("optxv"), *commands.words(line)], folder, commands.stdin(line, folder),
                journals=True) as server:
        base = server.run()
        for first, count, error, words in orders(kinds_of(server.journal), step):
            run = server.run(first, count, error)
            failed += run.failed > 0
            faults += [f"{words}: {each}" for each in judge_command(run, base, folder, error)]
    tally.add(f"optxv {line}", failed, faults)


def walk_commands(place, tally, step):
    with ThreadPoolExecutor(2) as pool:
        jobs = [pool.submit(walk_command, line, step, place / str(at), tally) for at, line in enumerate(commands.LINES)]
    for job in jobs:
        job.result()


DOCUMENTED = b"Q9 Standard Exception Handler: I/O Error. "
FILES = {"first.opt": "steplim 9\nnames /first\nmethod dual\nx.scale('a',*) = 3\ntie eq(i,'b')$var(i) = 1\n",
         "more.def": "more integer 1 1 0 9 1 1 More\nlimits group 7 1 The limits\n", "old.opt": "what was there before\n",
         "nesting.opt": "steplim 1\nread values.opt\nlogname end\n", "values.opt": "steplim 5\nlogname other\nnames /more\n"}


def judge_call(kind, run, base, folder, error):
    """What is wrong with a run of a function of the library in which a call failed."""
    if same(run, base) or kind == "silent" and run.status == 0:
        if run.heeded and kind != "silent":
            yield "it is not told"
        return
    if error in (errno.EINTR, HALF, ONEBYTE):
        yield f"it shows: status {run.status}: {difference(run.out, base.out)}"
        return
    if kind == "status":
        yield from whole(run, base, folder)
    aborted = kind == "classic" and run.status == -6 and DOCUMENTED in run.out
    if run.status != 0 and not aborted or run.err != b"":
        yield f"status {run.status}: {run.out[-200:]!r} {run.err[-200:]!r}"
    elif os.strerror(error).encode() not in run.out and f"== status {error}\n".encode() not in run.out:
        yield f"it is not told: {difference(run.out, base.out)}"


def walk_call(program, kind, name, step, place, tally):
    """Fails the calls of one function of a walk."""
    folder = Folder(place, FILES | {"first.def": Path("tests/support/everykind.def").read_bytes()})
    faults, failed = [], 0
    with Server(built("io_preload.so"), [program, name, "first.def", "first.opt"], folder, b"steplim 3\nlogname in\n",
                {"PROVE_LATER": "1"}, journals=True) as server:
        base = server.run()
        for first, count, error, words in orders(kinds_of(server.journal), step):
            run = server.run(first, count, error)
            failed += run.failed > 0
            faults += [f"{words}: {each}" for each in judge_call(kind, run, base, folder, error)]
    tally.add(name, failed, faults)


def walk_calls(place, tally, step):
    """The functions of the library."""
    program = built("io_prove")
    listed = subprocess.run([program, "--list"], capture_output=True, text=True, check=True).stdout.splitlines()
    for at, line in enumerate(listed):
        kind, name = line.split(" ", 1)
        walk_call(program, kind, name, step, place / f"call{at}", tally)


def main():
    build("optxv_command", "io_preload", "io_prove")
    tally, sample = Tally("io", "runs with a failure"), "--sample" in sys.argv[1:]
    with workplace() as place:
        walk_calls(Path(place), tally, 3 if sample else 1)
        walk_commands(Path(place), tally, 11 if sample else 1)
    return tally.end()


if __name__ == "__main__":
    sys.exit(main())
