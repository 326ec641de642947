"""Runs a program again and again, each time with other calls that fail, and gives what came of it.

The preloaded libraries (prove/*_preload.c) hold the program's main back and fork it for each order; prove/order.h has
the orders and the reports.
"""

import os
import shutil
import struct
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path

ORDER = struct.Struct("qqq")
REPORT = struct.Struct("qqqq")
MOSTCALLS = 4096  # that the journal of prove/io_preload.c has


@dataclass(frozen=True)
class Run:
    """What came of one run: how the process ended, and what it wrote."""

    status: int  # of exit, or -number of the signal
    out: bytes
    err: bytes
    calls: int
    failed: int
    heeded: bool  # a failure has to show
    unheard: bool  # what failed is a write to standard error
    files: dict  # of its folder: name -> content


class Folder:
    """A folder with files that each run finds as they were at first."""

    def __init__(self, path, files):
        self.path = Path(path)
        self.files = {name: content.encode() if isinstance(content, str) else content for name, content in files.items()}
        self.path.mkdir(parents=True, exist_ok=True)
        for name, content in self.files.items():
            (self.path / name).write_bytes(content)

    @staticmethod
    def content(path, before):
        found = {}
        for entry in os.scandir(path):
            if entry.is_dir():
                found[before + entry.name + "/"] = b""
                found |= Folder.content(entry.path, before + entry.name + "/")
                continue
            with open(entry.path, "rb") as file:
                found[before + entry.name] = file.read()
        return found

    def take(self):
        """Gives what is in the folder now, and puts back what was."""
        found = self.content(self.path, "")
        for name in found.keys() - self.files.keys():
            if name.endswith("/"):
                shutil.rmtree(self.path / name, ignore_errors=True)
            else:
                (self.path / name).unlink(missing_ok=True)
        for name, content in self.files.items():
            if found.get(name) != content:
                (self.path / name).write_bytes(content)
        return found


class Server:
    """A program that is started once and run for each order. A context manager."""

    def __init__(self, preload, words, folder, stdin=b"", environment=None, journals=False):
        self.journals, self.journal = journals, b""
        self.folder = folder
        self.out, self.err, self.input = (tempfile.TemporaryFile() for _ in range(3))
        self.input.write(stdin)
        self.input.flush()
        orders, self.orders = os.pipe()
        self.reports, reports = os.pipe()
        variables = {"PATH": os.environ["PATH"], "LC_ALL": "C", "LD_PRELOAD": str(preload),
                     "PROVE_ORDERS": str(orders), "PROVE_REPORTS": str(reports), **(environment or {})}
        out, err = (self.opened(file, os.O_WRONLY | os.O_APPEND) for file in (self.out, self.err))
        self.process = subprocess.Popen(words, cwd=folder.path, env=variables, stdin=self.opened(self.input, os.O_RDONLY),
                                        stdout=out, stderr=err, pass_fds=(orders, reports))
        os.close(orders)
        os.close(reports)

    @staticmethod
    def opened(file, flags):
        return os.open(f"/proc/self/fd/{file.fileno()}", flags | os.O_CLOEXEC)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.orders)
        os.close(self.reports)
        self.process.wait()
        for file in (self.out, self.err, self.input):
            file.close()

    def run(self, first=0, count=0, error=0):
        for file in (self.out, self.err):
            os.ftruncate(file.fileno(), 0)
        os.write(self.orders, ORDER.pack(first, count, error))
        told = os.read(self.reports, REPORT.size)
        if len(told) != REPORT.size:
            raise RuntimeError(f"{self.process.args}: the program ended before its run")
        status, calls, failed, heeded = REPORT.unpack(told)
        self.journal = self.received(min(calls, MOSTCALLS) * 4) if self.journals and count == 0 else b""
        return Run(os.waitstatus_to_exitcode(status), self.written(self.out), self.written(self.err), calls, failed,
                   heeded == 1, heeded == 2, self.folder.take())

    def received(self, size):
        """So many bytes of what goes out after a report."""
        all_of_it = b""
        while len(all_of_it) < size:
            all_of_it += os.read(self.reports, size - len(all_of_it))
        return all_of_it

    @staticmethod
    def written(file):
        return os.pread(file.fileno(), os.fstat(file.fileno()).st_size, 0)
