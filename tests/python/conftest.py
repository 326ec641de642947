"""What the tests of the Python package share: the options of the example. OPTXV_LIBRARY names the library."""
from pathlib import Path

import optxv
import pytest

SOURCE = Path(__file__).parents[2]


@pytest.fixture
def options():
    with optxv.Options(SOURCE / 'examples/solver.def') as made:
        yield made
