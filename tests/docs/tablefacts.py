"""What the library knows of the options of a definition, for the tests of what others make of its documents."""
import contextlib
import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import library  # noqa: E402  (found beside this file)

INTEGER, DOUBLE, STRING, BOOLEAN, ENUMSTR, ENUMINT, MULTILIST, STRLIST, MACRO, IMMEDIATE = range(10)


def tables(*more):
    """The example, the definitions given, and those in the folder OPTXV_TABLES, if that is set."""
    folder = os.environ.get('OPTXV_TABLES')
    return [Path('examples/solver.def'), *more, *(sorted(Path(folder).glob('*.def')) if folder else [])]


def facts(path):
    """Number, name and kind of each option, and the messages of the read."""
    with contextlib.closing(library.Options()) as options:
        options.define(path)
        return [{'number': number, 'name': options.told('coptgethelpnr', number, out='tt')[0],
                 'kind': options.told('optgetinfonr', number, out='iiiiii')[4]}
                for number in range(1, options.call('optcount') + 1)], options.messages()
