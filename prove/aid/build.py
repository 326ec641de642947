"""Builds what a part needs, and finds it."""

import subprocess
import tempfile
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
BUILD = TREE / "build"


def build(*targets):
    """Builds targets of the preset that the tests use too. What it prints is shown only if it fails."""
    for words in (["cmake", "--preset", "release"], ["cmake", "--build", "--preset", "release", "--target", *targets]):
        done = subprocess.run(words, cwd=TREE, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise SystemExit(done.stdout + done.stderr)


def built(name):
    return (BUILD / name).resolve()


def compiled(source, place, *words):
    """Compiles one source against the library in the build folder, and gives the program."""
    program = Path(place) / Path(source).stem
    line = ["c++", "-std=c++20", "-O1", "-Iinclude", f"-I{place}", source, "-o", program, BUILD / "liboptxv.so",
            f"-Wl,-rpath,{BUILD.resolve()}", *words]
    done = subprocess.run(line, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise SystemExit(done.stderr)
    return program


def workplace():
    """A folder that goes with its context; in memory where there is such a place, since syncing a disk takes long."""
    memory = Path("/dev/shm")
    return tempfile.TemporaryDirectory(dir=memory if memory.is_dir() else None)
