"""Snapshots of all values."""
from __future__ import annotations

import contextlib
import ctypes
import weakref
from collections.abc import Iterator
from typing import Optional

from ._handle import OTHER_TABLE, Handle
from .errors import SnapshotError


def _free(library: ctypes.CDLL, snapshot: ctypes.c_void_p) -> None:
    library.optxv_free_snapshot(ctypes.byref(snapshot))


class Snapshot:
    """All values of one Options as they were: which are set, lists, dot options and indicators. Messages and switches
    are no part of it. It takes memory for what is set.

    Options.snapshot() makes one. It is freed by close(), at the end of a `with` block, or with the object.
    """

    def __init__(self, handle: Handle) -> None:
        self._handle = handle
        snapshot = handle.told('optxv_take_snapshot', ctypes.c_void_p)
        self._address: Optional[int] = snapshot.value
        self._finalizer = weakref.finalize(self, _free, handle.library, snapshot)

    def restore(self) -> None:
        """Makes all values as they were when it was taken. May be called any number of times.

        Errors: SnapshotError after its close(); ClosedError after that of the options.
        """
        if self._address is None:
            raise SnapshotError('this snapshot is closed')
        status = self._handle.call('optxv_restore_snapshot', self._address)
        if status == OTHER_TABLE:
            raise SnapshotError('this snapshot was taken of other options')
        if status != 0:
            raise self._handle.error(status)

    def close(self) -> None:
        """Frees it. May be called again."""
        self._address = None
        self._finalizer()

    def __enter__(self) -> Snapshot:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()


@contextlib.contextmanager
def whole(handle: Handle) -> Iterator[None]:
    """A block in which an exception brings back all values as they were."""
    with Snapshot(handle) as before:
        try:
            yield
        except BaseException:
            before.restore()
            raise
