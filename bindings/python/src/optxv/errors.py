"""What can go wrong, as exceptions. Each is an OptxvError, and the built-in one that a caller expects besides."""
from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from .facts import Message


class OptxvError(Exception):
    """The base of all errors of this package. Its text is a whole sentence for people."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ''


class LibraryError(OptxvError, OSError):
    """The shared library is not there, or is older than this package."""


class ClosedError(OptxvError, ValueError):
    """The options were used after close()."""


class UnknownOptionError(OptxvError, KeyError):
    """No option has this name or number.

    name: what was asked for. nearest: names that may have been meant, the nearest first, at most three.
    """

    def __init__(self, text: str, name: str = '', nearest: tuple[str, ...] = ()) -> None:
        super().__init__(text, name, nearest)
        self.name = name
        self.nearest = nearest


class WrongTypeError(OptxvError, TypeError):
    """A value of a Python type that the option does not take, or an option that has no value of its own.

    option: its name.
    """

    def __init__(self, text: str, option: str = '') -> None:
        super().__init__(text, option)
        self.option = option


class RefusedValueError(OptxvError, ValueError):
    """A value that the option does not allow. The option keeps the value that it had.

    option: its name. nearest: allowed values that may have been meant.
    """

    def __init__(self, text: str, option: str = '', nearest: tuple[str, ...] = ()) -> None:
        super().__init__(text, option, nearest)
        self.option = option
        self.nearest = nearest


class DefinitionError(OptxvError, ValueError):
    """A definition with errors in it. messages: all that was said of it."""

    def __init__(self, text: str, messages: tuple[Message, ...] = ()) -> None:
        super().__init__(text, messages)
        self.messages = messages


class SnapshotError(OptxvError, ValueError):
    """A snapshot that was closed, or that was taken of other options."""


class OutOfMemoryError(OptxvError, MemoryError):
    """Memory ran out. The options may be used further; a read that was cut short has kept what it read."""


class FileError(OptxvError, OSError):
    """A file could not be read or written. errno, strerror and filename are those of an OSError."""

    def __str__(self) -> str:
        return OSError.__str__(self)


class MissingFileError(FileError, FileNotFoundError):
    """There is no file of that name."""
