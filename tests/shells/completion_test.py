#!/usr/bin/env python3
"""bash, zsh and fish complete command lines: each runs under a pseudo-terminal, and what was typed in it, with its
TABs, comes to a program that tells the arguments it got.
"""
import json
import os
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

SKIPPED = 77
COMMAND = os.environ['OPTXV_COMMAND']
BASH_COMPLETION = Path('/usr/share/bash-completion/bash_completion')
MISSING = [name for name in ('bash', 'zsh', 'fish') if not shutil.which(name)]
MISSING += [] if BASH_COMPLETION.exists() else ['bash-completion']

# What makes trouble in one shell or another; each begins with a letter of its own.
HOSTILE = ['a b', "b'c", 'c$HOME', 'd`id`', 'e:f:g', 'h=i=j', 'k!l', 'm\\n', 'o*p?', 'q(r)[s]', 's;t|u', 'u&v<w>', 'w#x', 'x{1,2}',
           '~y', 'zü']
DEFINITION = '''g group 1 1 General
time_limit double 1 3600 0 1e6 10 1 Seconds to run
Iterations integer 2 100 0 1000 11 1 Steps at most
method enumstr 3 auto 12 1 How to solve
 auto 1 Chosen by size
 primal 2 Primal simplex
 primate 3 Another one
presolve boolean 4 1 13 1 Simplify
dive boolean.NV 5 1 14 1 Dive
log_file string 6 "" 15 1 Log
range double.TWO 7 1 0 10 16 1 Range
time_old double 8 1 0 9 17 1 Old
old deprecated
 time_old Use time_limit
text enumstr 9 plain 18 1 Text
 plain 1 Nothing odd
''' + ''.join(f' "{item}" 1 Odd\n' for item in HOSTILE)

# What is typed, without the Enter, and the arguments that the program gets. A letter after a TAB shows whether a blank
# has come before it.
TYPED = [
    # A program of its own
    ('prog tim\t5', ['time_limit=5']),
    ('prog --ti\t5', ['--time_limit=5']),
    ('prog --time-l\t5', ['--time-limit=5']),
    ('prog iter\t5', ['iterations=5']),
    ('prog time_o\t5', ['time_old=5']),
    ('prog --div\tx', ['--dive', 'x']),
    ('prog time_limit=\tx', ['time_limit=3600', 'x']),
    ('prog method=au\tx', ['method=auto', 'x']),
    ('prog method=p\tx', ['method=primax']),
    ('prog --method a\tx', ['--method', 'auto', 'x']),
    ('prog --presolve y\tx', ['--presolve', 'yes', 'x']),
    ('prog --presolve tim\t5', ['--presolve', 'time_limit=5']),
    ('prog --range 1 \tx', ['--range', '1', '1', 'x']),
    ('prog log_file=my\tx', ['log_file=my file', 'x']),
    ('prog my\tx', ['my file', 'x']),
    ('prog -- tim\t5', ['--', 'tim5']),
    *((f'prog text={item[0]}\tx', [f'text={item}', 'x']) for item in HOSTILE if item[0] != '~'),
    ('prog "text=a\tx', ['text=a b', 'x']),
    ("prog 'text=b\tx", ["text=b'c", 'x']),
    ('prog "text=k\tx', ['text=k!l', 'x']),
    ('prog "text=zü\tx', ['text=zü', 'x']),
    ('prog log_file=zü text=e:f\tx', ['log_file=zü', 'text=e:f:g', 'x']),
    ('prog "text=d\tx', ['text=d`id`', 'x']),
    ('prog "text=c\tx', ['text=c$HOME', 'x']),
    ("prog --text 'm\tx", ['--text', 'm\\n', 'x']),
    ('prog text=e:f\tx', ['text=e:f:g', 'x']),
    ('prog text=h=i\tx', ['text=h=i=j', 'x']),
    ('prog text=a\\ \tx', ['text=a b', 'x']),
    # The command itself
    ('optxv ch\tx', ['check', 'x']),
    ('optxv --vers\tx', ['--version', 'x']),
    ('optxv check --st\tx', ['check', '--strict', 'x']),
    ('optxv generate s.def --lang py\tx', ['generate', 's.def', '--lang', 'python', 'x']),
    ('optxv generate s.def --lang=py\tx', ['generate', 's.def', '--lang=python', 'x']),
    ('optxv help s.def iter\tx', ['help', 's.def', 'iterations', 'x']),
    ('optxv help "odd \'name\'.def" time_l\tx', ['help', "odd 'name'.def", 'time_limit', 'x']),
    ('optxv help ~/s.def time_l\tx', ['help', '{home}/s.def', 'time_limit', 'x']),
    ('true | optxv help s.def time_l\tx', ['help', 's.def', 'time_limit', 'x']),
    ('optxv check s.def my\tx', ['check', 's.def', 'my file', 'x']),
    ('optxv write s.def -o my\tx', ['write', 's.def', '-o', 'my file', 'x']),
    ('optxv write s.def --output=my\tx', ['write', 's.def', '--output=my file', 'x']),
    ('optxv reference s.def -o fol\tx', ['reference', 's.def', '-o', 'folder/x']),
    ('optxv help fifo tim\tx', ['help', 'fifo', 'timx']),
    ('optxv help none tim\tx', ['help', 'none', 'timx']),
    ('optxv help /dev/zero tim\tx', ['help', '/dev/zero', 'timx']),
]
# fish does not tell which of the words are redirections.
REDIRECTED = [('optxv help 2>/dev/null s.def time_l\tx', ['help', 's.def', 'time_limit', 'x']),
              ('prog >/dev/null tim\t5', ['time_limit=5'])]
# What is typed, and what is then to be seen.
SHOWN = {'zsh': [('prog method=\t', ('primal', '-- Primal simplex', 'Chosen by size (default)')),
                 ('optxv ch\b\bf\b\t', ('-- Report everything', '-- Repair what'))],
         'fish': [('prog method=\t', ('Primal simplex', 'Chosen by size (default)')), ('optxv \t', ('Report everything',))],
         'bash': [('prog method=\t', ('auto', 'primal', 'primate')), ('optxv \t', ('check', 'reference'))]}


class Shell:
    """A shell under a pseudo-terminal, in a folder of its own."""
    def __init__(self, name, folder):
        self.told = folder / 'told'
        self.seen = ''
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.execvpe(name, self.words(name, folder), self.variables(folder))
        self.until(lambda: 'READY>' in self.seen)

    @staticmethod
    def words(name, folder):
        return [name, '--rcfile', str(folder / 'bashrc'), '-i'] if name == 'bash' else [name, '-i']

    @staticmethod
    def variables(folder):
        return {'HOME': str(folder), 'PATH': f'{folder}/bin:{os.environ["PATH"]}', 'TERM': 'xterm', 'LC_ALL': 'C.UTF-8',
                'ZDOTDIR': str(folder), 'XDG_CONFIG_HOME': f'{folder}/config', 'XDG_DATA_HOME': f'{folder}/share',
                'XDG_DATA_DIRS': f'{folder}/share:/usr/share', 'COLUMNS': '120', 'LINES': '50'}

    def until(self, done, patience=10):
        """Reads what is shown until it is enough."""
        end = time.monotonic() + patience
        while not done():
            if time.monotonic() > end:
                raise AssertionError(f'nothing came; seen: {self.seen!r}')
            if select.select([self.terminal], [], [], .02)[0]:
                self.seen += os.read(self.terminal, 65536).decode(errors='replace')

    def run(self, line):
        """Types a line; gives the arguments that came of it, and what was shown."""
        self.told.unlink(missing_ok=True)
        self.seen = ''
        os.write(self.terminal, line.encode() + b'\r')
        try:
            self.until(lambda: re.search('TOLD.*READY>', self.seen, re.S))
        except AssertionError:
            os.write(self.terminal, b'\3')  # the next line has a prompt all the same
            raise
        return json.loads(self.told.read_text()), re.sub(r'\x1b(\[[0-9;?>=]*[A-Za-z]|[()][B0]|[=>])|[\r\n]', '', self.seen)

    def close(self):
        os.close(self.terminal)
        os.waitpid(self.process, 0)


def made(shell, *words):
    return subprocess.run([COMMAND, 'complete', shell, *words], check=True, capture_output=True, text=True).stdout


def program(path, interpreter, text):
    path.write_text(f'#!{interpreter}\n{text}')
    path.chmod(0o755)


def prepare(folder):
    """A home with the scripts where each shell looks for them, a program and some files."""
    for name in ('bin', 'folder', 'zsh', 'config/fish', 'share/fish/vendor_completions.d', 'share/bash-completion/completions'):
        (folder / name).mkdir(parents=True)
    tell = f'import json, sys\nopen("{folder}/told", "w").write(json.dumps(sys.argv[1:]))\nopen("/dev/tty", "w").write("TOLD")\n'
    program(folder / 'bin/prog', f'{sys.executable} -BSI', tell)
    program(folder / 'bin/optxv', '/bin/sh', f'case $1 in complete) exec "{COMMAND}" "$@" ;; esac\nexec prog "$@"\n')
    for name in ('s.def', "odd 'name'.def"):
        (folder / name).write_text(DEFINITION)
    (folder / 'my file').touch()
    os.mkfifo(folder / 'fifo')
    host = ('--host', 'prog', '--definition', str(folder / "odd 'name'.def"))
    (folder / 'share/bash-completion/completions/optxv').write_text(made('bash'))
    (folder / 'bashrc').write_text(f'. {BASH_COMPLETION}\nPS1="READY>"\nbind "set show-all-if-ambiguous on"\n'
                                   'bind "set enable-bracketed-paste off"\n' + made('bash', *host))
    (folder / 'zsh/_optxv').write_text(made('zsh'))
    (folder / '.zshrc').write_text(f'fpath=({folder}/zsh $fpath)\nautoload -U compinit; compinit -u\nPROMPT="READY>"\n'
                                   'setopt no_beep interactive_comments\n' + made('zsh', *host))
    (folder / 'share/fish/vendor_completions.d/optxv.fish').write_text(made('fish'))
    (folder / 'config/fish/config.fish').write_text('function fish_prompt; echo "READY>"; end\nset -g fish_greeting\n'
                                                    'set -g fish_autosuggestion_enabled 0\n' + made('fish', *host))


@unittest.skipIf(MISSING, 'not installed: ' + ', '.join(MISSING))
class Completion(unittest.TestCase):
    def tried(self, name):
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        prepare(folder)
        shell = Shell(name, folder)
        self.addCleanup(shell.close)
        for line, wanted in TYPED + (REDIRECTED if name != 'fish' else []):
            with self.subTest(name, line=line):
                wanted = [word.format(home=folder) if '{home}' in word else word for word in wanted]
                self.assertEqual(shell.run(line)[0], wanted)
        for line, pieces in SHOWN[name]:
            with self.subTest(name, line=line):
                shown = shell.run(line)[1]
                self.assertEqual([piece for piece in pieces if piece not in shown], [], shown)

    def test_bash(self):
        self.tried('bash')

    def test_zsh(self):
        self.tried('zsh')

    def test_fish(self):
        self.tried('fish')


if __name__ == '__main__':
    if MISSING:
        print('skipped: not installed: ' + ', '.join(MISSING))
        sys.exit(SKIPPED)
    unittest.main()
