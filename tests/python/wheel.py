"""The wheel holds the library, says which platform it is for, and works where it is installed, with nothing beside it."""
import importlib.util
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SKIPPED = 77
SOURCE = Path(__file__).parents[2]
USE = '''
import optxv
with optxv.Options({definition!r}) as options:
    options.read({parameters!r})
    print(options['time_limit'], options.errors)
'''


def main():
    missing = [name for name in ('build', 'setuptools', 'wheel', 'pip') if importlib.util.find_spec(name) is None]
    if missing:
        print(f'skipped: not installed: {" ".join(missing)}')
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        package, made, installed = (Path(folder) / name for name in ('package', 'made', 'installed'))
        shutil.copytree(SOURCE / 'bindings/python', package, ignore=shutil.ignore_patterns('build', '*.egg-info', '__pycache__'))
        subprocess.run([sys.executable, '-m', 'build', '--no-isolation', '--wheel', '--outdir', made, package],
                       check=True, stdout=subprocess.DEVNULL)
        [wheel] = made.iterdir()
        assert re.fullmatch(r'optxv-[\d.]+-py3-none-linux_\w+\.whl', wheel.name), wheel.name
        subprocess.run([sys.executable, '-m', 'pip', 'install', '-q', '--no-index', '--no-deps', '--no-compile',
                        '--target', installed, wheel], check=True)
        assert (installed / 'optxv/py.typed').exists()
        use = USE.format(definition=str(SOURCE / 'examples/solver.def'), parameters=str(SOURCE / 'examples/tight.opt'))
        plain = {name: value for name, value in os.environ.items() if name not in ('OPTXV_LIBRARY', 'LD_LIBRARY_PATH')}
        done = subprocess.run([sys.executable, '-c', use], cwd=folder, env={**plain, 'PYTHONPATH': str(installed)},
                              check=True, stdout=subprocess.PIPE, text=True)
        assert done.stdout == '3600.0 0\n', done.stdout
    return 0


if __name__ == '__main__':
    sys.exit(main())
