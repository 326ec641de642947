"""Runs of the command on the examples: what each prints, its status and the files that it writes."""

import hashlib
import shutil
import subprocess

from aid.build import TREE

DEFINITION, FAULTY, PARAMETERS, TIGHT = 'solver.def', 'faulty.opt', 'solver.opt', 'tight.opt'

# Each in a fresh copy of examples/, which it may write to.
RUNS = [line.split() for line in f'''
check {DEFINITION} {PARAMETERS} {FAULTY} {TIGHT} notices.opt
check --json {DEFINITION} {FAULTY} {PARAMETERS}
check --format sarif {DEFINITION} {FAULTY}
check --tokens --no-bounds {DEFINITION} {TIGHT}
fix {DEFINITION} {FAULTY} {TIGHT}
fix --write {DEFINITION} {FAULTY} {TIGHT}
lint --all {DEFINITION}
lint --all --json {DEFINITION} {PARAMETERS} {FAULTY}
format {DEFINITION} {PARAMETERS} {FAULTY}
format --write --sort group {DEFINITION} {PARAMETERS} {TIGHT}
format --definitions {DEFINITION} minimizer/minimizer.def
show --all --origin {DEFINITION} {PARAMETERS}
show --all --json {DEFINITION} {PARAMETERS}
origin {DEFINITION} {PARAMETERS} {TIGHT}
diff {DEFINITION} {PARAMETERS} {TIGHT}
diff --json {DEFINITION} {PARAMETERS} {TIGHT}
diff --definitions {DEFINITION} minimizer/minimizer.def
help {DEFINITION} 15
help {DEFINITION} --search step limit
write {DEFINITION} {PARAMETERS} {TIGHT}
write {DEFINITION} {PARAMETERS} -o written.opt
html {DEFINITION}
definition {DEFINITION}
include {DEFINITION}
convert {DEFINITION} {PARAMETERS} --all --to json
schema {DEFINITION} -o schema.json
generate {DEFINITION} --lang c --embed
generate {DEFINITION} --lang c++
generate {DEFINITION} --lang python
generate {DEFINITION} --lang fortran
generate {DEFINITION} --lang pascal
reference {DEFINITION} -o page
reference {DEFINITION} --markdown -o reference.md
reference {DEFINITION} --man -o reference.5
api --json
complete bash
check {DEFINITION} nowhere.opt
show nowhere.def
'''.strip().splitlines()]


def digest(folder):
    """The files below a folder, each with its name."""
    whole = hashlib.sha256()
    for path in sorted(path for path in folder.rglob('*') if path.is_file()):
        whole.update(f'{path.relative_to(folder)} {path.stat().st_size}\n'.encode() + path.read_bytes())
    return whole.hexdigest()


def outcome(command, words, folder, **how):
    """Status, output, complaints and files of one run in a fresh copy of the examples."""
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(TREE / 'examples', folder)
    (folder / 'examples').symlink_to('.')  # one of the files names another from above the folder
    run = subprocess.run([*map(str, command), *words], cwd=folder, capture_output=True, stdin=subprocess.DEVNULL,
                         check=False, **how)
    return run.returncode, run.stdout, run.stderr, digest(folder)


def differing(wanted, seen):
    """The parts of two outcomes that differ, in words."""
    names = ['status', 'output', 'complaints', 'files']
    return ', '.join(name for name, one, other in zip(names, wanted, seen) if one != other)
