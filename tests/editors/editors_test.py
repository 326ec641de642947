#!/usr/bin/env python3
"""Works on an example in real editors with the plug-ins, and walks the requests of the server with a client that
others wrote.

Usage: editors_test.py. The environment has OPTXV_COMMAND. The exit status is 77 if an editor or npm is not installed.
With --record the screen of Neovim is written into docs/editors.md; without it, it is compared with what is there.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
EDITORS, HERE = SOURCE / 'editors', SOURCE / 'tests/editors'
PAGE = SOURCE / 'docs/editors.md'
COMMAND = os.environ['OPTXV_COMMAND']
NIGHT = '* The night shift.\ntime_limit    900\nmetod = dual\nprint_level 1\n'
BINDING = '{"definitions": [{"definition": "solver.def", "files": ["*.opt"]}]}\n'
SCREEN = re.compile(r'(?<=<!-- the screen of Neovim -->\n```diagram\n).*?(?=```\n)', re.DOTALL)


def folder(at):
    """A folder with a definition, a parameter file with a mistake, and what binds them."""
    shutil.copy(SOURCE / 'examples/solver.def', at)
    (at / 'night.opt').write_text(NIGHT, encoding='utf-8')
    (at / 'optxv.json').write_text(BINDING, encoding='utf-8')
    return at


def run(words, at, **more):
    """Runs an editor in a folder of its own home; says what it said if it fails."""
    home = at / 'home'
    home.mkdir()
    environment = {**os.environ, 'HOME': str(home), 'XDG_CONFIG_HOME': str(home), 'XDG_DATA_HOME': str(home),
                   'XDG_STATE_HOME': str(home), 'XDG_CACHE_HOME': str(home), **more}
    done = subprocess.run(words, cwd=at, env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                          errors='replace', timeout=120, check=False)
    return [] if done.returncode == 0 else [f'{words[0]}: status {done.returncode}: {done.stdout}{done.stderr}']


def neovim(at):
    screen = at / 'screen.txt'
    faults = run(['nvim', '--headless', '-u', 'NONE', '-n', '-i', 'NONE', '--cmd', f'set rtp^={EDITORS / "neovim"}',
                  '--cmd', 'filetype plugin on | syntax on', '--cmd', f'source {EDITORS / "neovim/plugin/optxv.lua"}',
                  '-c', f'luafile {HERE / "neovim.lua"}'], at, OPTXV_SCREEN=str(screen))
    return faults or compared(screen.read_text(encoding='utf-8'))


def compared(screen):
    """The page shows the screen as it is, but for the empty lines of the editor."""
    shown = ''.join(line + '\n' for line in screen.splitlines() if line.strip(' ~'))
    page = PAGE.read_text(encoding='utf-8')
    if '--record' in sys.argv:
        PAGE.write_text(SCREEN.sub(lambda _: shown, page), encoding='utf-8')
        return []
    found = SCREEN.search(page)
    return [] if found and found[0] == shown else [f'docs/editors.md does not show this screen:\n{shown}']


def emacs(at):
    return run(['emacs', '--batch', '-q', '-f', 'package-initialize', '-l', str(EDITORS / 'emacs/optxv-mode.el'), '-l',
                str(HERE / 'emacs.el')], at)


def vim(at):
    """Every kind of place has its colour."""
    return run(['vim', '-u', 'NONE', '-N', '-n', '-i', 'NONE', '-es', '--cmd', f'set rtp^={EDITORS / "vim"}', '-c',
                'filetype plugin on | syntax on', '-c', f'source {HERE / "colours.vim"}'], at,
               OPTXV_EXAMPLES=str(SOURCE / 'examples'))


def packed(at):
    """The plug-in of VS Code: its types, its grammars, its package; then the server through a client of npm's."""
    code = at / 'editors/vscode'
    shutil.copytree(EDITORS / 'vscode', code, ignore=shutil.ignore_patterns('node_modules', 'out', '*.vsix'))
    for name in ('LICENSE', 'editors/optxv.schema.json'):
        shutil.copy(SOURCE / name, at / name)
    modules = Path(os.environ.get('OPTXV_NPM', at)) / 'vscode/node_modules'
    faults = [] if modules.is_dir() else installed(code, modules)
    if faults:
        return faults
    (code / 'node_modules').symlink_to(modules)
    for words in (['npm', 'run', '--silent', 'grammars'], ['./pack', str(at / 'optxv.vsix')],
                  ['node', str(HERE / 'protocol.mjs'), str(code), str(at)]):
        done = subprocess.run(words, cwd=code, capture_output=True, text=True, timeout=300, check=False)
        if done.returncode != 0:
            faults.append(f'{" ".join(words)}: {done.stdout}{done.stderr}')
    return faults


def installed(code, modules):
    """Installs what the lock file names, and keeps it for the next run."""
    done = subprocess.run(['npm', 'ci', '--ignore-scripts', '--no-audit', '--no-fund'], cwd=code, capture_output=True,
                          text=True, timeout=300, check=False)
    if done.returncode != 0:
        return [f'npm ci: {done.stdout}{done.stderr}']
    modules.parent.mkdir(parents=True, exist_ok=True)
    shutil.move(code / 'node_modules', modules)
    return []


TESTS = {'nvim': neovim, 'emacs': emacs, 'vim': vim, 'npm': packed}


def main():
    missing = [program for program in TESTS if not shutil.which(program)]
    if missing:
        print('not installed:', *missing)
        return 77
    failed = 0
    for program, test in TESTS.items():
        with tempfile.TemporaryDirectory() as name:
            faults = test(folder(Path(name)))
        print(f'{program}: {"good" if not faults else "failed"}', *faults, sep='\n')
        failed += len(faults)
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
