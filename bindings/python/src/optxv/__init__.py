"""optxv: the run-time options of a solver, from a definition file, parameter files, the command line and the environment.

    import optxv

    with optxv.Options('solver.def') as options:
        for message in options.read('solver.opt'):
            print(message)
        options['time_limit'] = 60
        solve(options['time_limit'], options['method'])
"""
from . import errors, facts
from ._snapshot import Snapshot
from .errors import (ClosedError, DefinitionError, FileError, LibraryError, MissingFileError, OptxvError,
                     OutOfMemoryError, RefusedValueError, SnapshotError, UnknownOptionError, WrongTypeError)
from .facts import (Choice, DotOption, Group, Indicator, Kind, Message, Option, Origin, Place, Road, Said, Switch,
                    Synonym, Takes)
from ._version import __version__
from .options import Options

__all__ = [
    'Choice', 'ClosedError', 'DefinitionError', 'DotOption', 'FileError', 'Group', 'Indicator', 'Kind', 'LibraryError',
    'Message', 'MissingFileError', 'Option', 'Options', 'OptxvError', 'Origin', 'OutOfMemoryError', 'Place',
    'RefusedValueError', 'Road', 'Said', 'Snapshot', 'SnapshotError', 'Switch', 'Synonym', 'Takes',
    'UnknownOptionError', 'WrongTypeError', '__version__', 'errors', 'facts',
]
