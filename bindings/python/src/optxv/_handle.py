"""One handle of the library: its life, its calls, and their statuses as exceptions."""
from __future__ import annotations

import ctypes
import errno
import os
import weakref
from typing import Any, Optional

from . import _library
from ._library import Text, decoded, encoded, terminated
from .errors import ClosedError, FileError, MissingFileError, OptxvError, OutOfMemoryError

UNKNOWN, WRONG_KIND, REFUSED, TOO_LONG, OTHER_TABLE = -1, -2, -3, -4, -5


def _free(library: ctypes.CDLL, handle: ctypes.c_void_p) -> None:
    library.optxv_free(ctypes.byref(handle))


def filename(path: str | os.PathLike[str]) -> bytes:
    """A file name as the system has it."""
    return terminated(os.fsencode(path))


class Handle:
    """Owns a handle of the library. It is freed by close(), with the object, or at the end of the program."""

    def __init__(self) -> None:
        self.library = _library.load()
        handle = ctypes.c_void_p()
        status = int(self.library.optxv_create(ctypes.byref(handle)))
        if status != 0:
            raise self.error(status)
        self.address: Optional[int] = handle.value
        self._finalizer = weakref.finalize(self, _free, self.library, handle)

    def close(self) -> None:
        self.address = None
        self._finalizer()

    def call(self, function: str, *arguments: Any) -> Any:
        """The result of a function of this handle."""
        return getattr(self.library, function)(self.open(), *arguments)

    def open(self) -> int:
        """The handle as a number. A ClosedError after close()."""
        if self.address is None:
            raise ClosedError('these options are closed')
        return self.address

    def must(self, function: str, *arguments: Any) -> None:
        """Calls a function whose status has to be 0."""
        status = self.call(function, *arguments)
        if status != 0:
            raise self.error(status)

    def must_file(self, function: str, path: str | os.PathLike[str]) -> None:
        """Calls a function that takes a file name and has to do its work."""
        status = self.call(function, filename(path))
        if status != 0:
            raise self.error(status, os.fspath(path))

    def told(self, function: str, out: Any, *arguments: Any) -> Any:
        """What a function puts into its last argument, a new object of the type `out`."""
        place = out()
        self.must(function, *arguments, ctypes.byref(place))
        return place

    def shown(self, function: str, *arguments: Any) -> str:
        """The text that a function writes into a buffer of its caller."""
        buffer = ctypes.create_string_buffer(_library.TEXT_SIZE)
        self.must(function, *arguments, buffer)
        return decoded(buffer.value)

    def names(self, function: str, *arguments: Any) -> tuple[str, ...]:
        """The names, at most three, that a function gives."""
        three = (Text * 3)()
        count = self.call(function, *arguments, three)
        return tuple(str(three[i]) for i in range(count))

    def nearest(self, name: str) -> tuple[str, ...]:
        """The names that are nearest to one that no option has."""
        text = encoded(name)
        return self.names('optxv_nearest_names', text, len(text))

    def error(self, status: int, path: Optional[str] = None) -> OptxvError:
        """The exception for a status that is not 0. Positive ones are error numbers of the system."""
        words = decoded(self.library.optxv_status_text(status))
        if status == errno.ENOMEM:
            return OutOfMemoryError('memory ran out')
        if status == TOO_LONG and path is not None:
            return FileError(errno.ENAMETOOLONG, 'a file name has at most 255 bytes', path)
        if status > 0:
            return (MissingFileError if status == errno.ENOENT else FileError)(status, words, path)
        return OptxvError(words)
