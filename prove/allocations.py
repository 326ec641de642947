"""What happens where memory runs out: each request for memory is refused once alone, and once with all that follow.

Walked are the exported functions, in both forms of text, and those of the embedding header and the C++ header; the code
that `optxv generate` makes; and the command with its subcommands. Allowed is nothing but this:

- the same result as with memory enough;
- the classic functions: their line on standard output, and abort;
- the functions with a status: ENOMEM, the handle good, and nothing lost when it is freed;
- the command: status 2 and one sentence on standard error, the files whole or untouched.

With --sample, a share of the requests.
"""

import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from aid import commands
from aid.build import build, built, compiled, workplace
from aid.judge import Tally, command_faults, difference
from aid.server import Folder, Server

FOREVER = 1 << 60
CAUSES = (b"optxv: error: out of memory\n", b": Cannot allocate memory\n")


def orders(first, last, step):
    """Each request from first to last, alone and with all that follow."""
    for number in range(first, last + 1, step):
        yield number, 1
        yield number, FOREVER


def walk_command(line, first, step, place, tally):
    """Refuses the requests of one line of the command from some number on."""
    folder = Folder(place, commands.files())
    faults, refused = [], 0
    with Server(built("allocations_preload.so"), [built("optxv"), *commands.words(line)], folder,
                commands.stdin(line, folder)) as server:
        base = server.run()
        for number, count in orders(first, base.calls, step):
            run = server.run(number, count)
            refused += run.failed
            faults += [f"request {number} of {base.calls}, {'alone' if count == 1 else 'and all after it'}: {each}"
                       for each in command_faults(run, base, folder, CAUSES)]
    tally.add(f"optxv {line}", refused, faults)
    return base.calls


def walk_commands(place, tally, step):
    """All lines. The command builds its list of words and flags before it looks at any: refused once for all lines."""
    shared = walk_command("--version", 1, step * 3, place / "version", tally) * 9 // 10
    with ThreadPoolExecutor(2) as pool:
        for at, line in enumerate(commands.LINES):
            walked = pool.submit(walk_command, line, shared + 1, step, place / str(at), tally)
            walked.add_done_callback(lambda done: done.result())


HEAD = b"Q9 Standard Exception Handler: Out of Memory in "
LINES = (HEAD + b"New or GetMem. \n", HEAD + b"ReAllocMem. \n")


def parted(run):
    """What came of a walked call: what the library printed, the status, the text, and the number of blocks left."""
    printed, _, came = run.out.partition(b"== status ")
    status, _, text = came.partition(b"\n")
    text, _, left = text.rpartition(b"left ")
    return printed, status, text, int(left) if left else None


def call_faults(kind, run, base):
    """What is wrong with a run of a walked function, in words."""
    if kind == "classic" and run.status == -6 and run.err == b"" and run.out.endswith(LINES):
        return
    if run.status != 0 or run.err != b"":
        yield f"status {run.status}: {run.out[-200:]!r} {run.err[-200:]!r}"
        return
    *came, left = parted(run)
    *wanted, leak = parted(base)
    if left is None or left > leak:
        yield f"{left} blocks are left in place of {leak}"
    if came == wanted:
        return
    if kind == "classic" or came[1] != b"12":
        yield f"status {came[1].decode()}, not the same: {difference(came[0] + came[2], wanted[0] + wanted[2])}"
    elif not came[2].endswith(b"again " + wanted[1] + b"\n"):
        yield f"after it: {came[2][-20:]!r}"


def walk_call(program, kind, name, step, place, files, tally):
    """Refuses the requests of one function of a walk."""
    folder = Folder(place, files)
    faults, refused = [], 0
    words = [program, name, "first.def", "first.opt"]
    with Server(built("allocations_preload.so"), words, folder, environment={"PROVE_LATER": "1"} | VARIABLES) as server:
        base = server.run()
        for number, count in orders(1, base.calls, step if base.calls > step else 1):
            run = server.run(number, count)
            refused += run.failed
            faults += [f"request {number} of {base.calls}, {'alone' if count == 1 else 'and all after it'}: {each}"
                       for each in call_faults(kind, run, base)]
    tally.add(name, refused, faults)


FIRST = """setplim 4
steplim 9
names /first
names /second
--made first
x.scale('a',*) = 3
tie eq(i,'b')$var(i) = 1
nosuch 1
method newton
"""
VARIABLES = {"WALKED_STEPLIM": "3", "WALKED_NOSUCH": "1", "WALKED_LOGNAME": "a file"}
MORE = "more integer 1 1 0 9 1 1 More\nlimits group 7 1 The limits\nmo synonym more\n"


EVERYKIND = {"first.def": Path("tests/support/everykind.def").read_bytes(), "first.opt": FIRST, "more.def": MORE,
             "values.opt": "steplim 5\nlogname other\nnames /more\n", "old.opt": "what was there before\n"}
SOLVER = {"first.def": Path("examples/solver.def").read_bytes(), "first.opt": "time_limit 5\nread_path /first\n"}


def walk_calls(program, files, place, tally, step):
    """The functions of one walk."""
    listed = subprocess.run([program, "--list"], capture_output=True, text=True, check=True).stdout.splitlines()
    for at, line in enumerate(listed):
        kind, name = line.split(" ", 1)
        walk_call(program, kind, name, step, place / f"{program.name}{at}", files, tally)
    return listed


def exported():
    """The names of the functions that the library exports to programs in C."""
    text = re.sub(r"/\*.*?\*/", "", Path("src/frame/exports.map").read_text().split('extern "C++"')[0], flags=re.DOTALL)
    return {name for name in re.findall(r"(\w+);", text) if not re.match("SYSTEM_|_Q9_Finalizing", name)}


def walk_library(place, tally, step):
    """Every exported function: one that no walk has is a fault."""
    listed = walk_calls(built("allocations_prove"), EVERYKIND, place, tally, step)
    missing = exported() - {name for line in listed for name in line.split()}
    tally.add("what the walk has", 0, [f"{name} is not walked" for name in sorted(missing)])


def walk_generated(place, tally, step):
    """The code that the command generates, and the header for C++."""
    for language, name in (("c", "solver_options.h"), ("c++", "solver_options.hpp")):
        words = ["generate", "examples/solver.def", "--lang", language, "--embed", "-o", place / name]
        subprocess.run([built("optxv"), *words], check=True)
    walk_calls(compiled("prove/generated.cpp", place), SOLVER, place, tally, step)


def main():
    build("optxv", "optxv_command", "allocations_preload", "allocations_prove")
    tally, sample = Tally("allocations", "refused"), "--sample" in sys.argv[1:]
    only = [word for word in sys.argv[1:] if not word.startswith("-")]
    with workplace() as place:
        if only != ["command"]:
            walk_library(Path(place), tally, 61 if sample else 1)
            walk_generated(Path(place), tally, 61 if sample else 1)
        if only != ["library"]:
            walk_commands(Path(place), tally, 251 if sample else 1)
    return tally.end()


if __name__ == "__main__":
    sys.exit(main())
