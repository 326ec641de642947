"""What the library knows of the options of a definition, for the tests of what others make of its documents."""
import os
from pathlib import Path

import optxv

INTEGER, DOUBLE, STRING, BOOLEAN, ENUMSTR, ENUMINT, MULTILIST, STRLIST, MACRO, IMMEDIATE = range(10)


def tables(*more):
    """The example, the definitions given, and those in the folder OPTXV_TABLES, if that is set."""
    folder = os.environ.get('OPTXV_TABLES')
    return [Path('examples/solver.def'), *more, *(sorted(Path(folder).glob('*.def')) if folder else [])]


def facts(path):
    """Number, name and kind of each option, and the messages of the read."""
    with optxv.Options(path, strict=False) as options:
        return [{'number': option.number, 'name': option.name, 'kind': option.kind} for option in options.options], options.messages
