#!/usr/bin/env python3
"""Runs every fenced block of the documents, so that no example says what the product does not do.

Usage: documents.py file.md... The environment says what is tested: OPTXV_LIBRARY, OPTXV_SOURCE (the tree),
OPTXV_COMMAND, OPTXV_MINIMIZER and OPTXV_SOLVER (the programs, if they were built), CC, CXX and FC (empty where there
is none).
Prints a line for each fault; the exit status is 1 where there is one. The word after the fence says what a block is:

  definition        a definition file, example.def: a new table, and no option set
  parameters        a parameter file, example.opt, read into a fresh copy of the table; with the word `token`
                    in token mode; with the word `more` into what the block before has set
  file NAME         a file that a later block reads
  messages          the messages of the block before, all of them, except those that open and close a file;
                    with the word `all` these too. Where it is missing there must be none
  values            all that is set, one per line
  lookup            lines `key -> name`; the name is `nothing` for a key that finds none
  help REQUEST      the lines of help that the request gives
  written           the file that is written back
  c, cpp, fortran   a program, compiled and run in the tree; an `output` block after it is its whole output
  python            likewise, with the package of the tree
  console           commands after `$ `, run in the tree, and what they print; a line `...` stands for any
                    number of lines
  excerpt FILE      lines of a file of the tree, in their order; blanks do not count
  lint CODE         a definition, or where the document has one above parameters for it, that breaks that rule
  clean             the same without the fault: it does not break the rule of the block before
  sh not-run        commands that this test cannot run: they build, install or test the whole
  diagram           a drawing
"""
import contextlib
import difflib
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import listing  # noqa: E402  (found beside this file)
import optxv  # noqa: E402

BRACKETS = (optxv.Said.FILE_ENTER, optxv.Said.FILE_LEAVE)  # messages that a read begins and ends


# The words that a program is called by, and the variable that says where it is.
PROGRAMS = {'optxv': 'OPTXV_COMMAND', 'minimizer': 'OPTXV_MINIMIZER', 'solver(_c)?': 'OPTXV_SOLVER'}


class Fault(Exception):
    pass


def broken_links(path, text):
    """A fault for each link that leads nowhere; what lies outside the tree is not looked at."""
    for target in re.findall(r'\]\(([^)\s]+)\)', text):
        if '://' not in target and not (path.parent / target.split('#')[0]).exists():
            yield f'{path.name}: {target}: there is no such file'


def blocks(text):
    """The fenced blocks as (line number, words of the fence, lines)."""
    found = [(text.count('\n', 0, match.start()) + 1, match[1].split(), match[2].splitlines(), match[3])
             for match in re.finditer(r'^```(.*)\n((?:(?!```).*\n)*)(```|\Z)', text + '\n', re.M)]
    if found and not found[-1][3]:
        raise Fault(f'{found[-1][0]}: the block is not closed')
    return [block[:3] for block in found]


def compare(shown, real):
    """Fault unless the lines are the same; in what is shown, `...` stands for any lines."""
    pattern = ''.join('(?:.*\n)*?' if line == '...' else re.escape(line.rstrip()) + ' *\n' for line in shown)
    if not re.fullmatch(pattern, ''.join(line + '\n' for line in real)):
        raise Fault('is not what comes out:\n' + '\n'.join(
            difflib.unified_diff(shown, real, 'shown', 'real', lineterm='', n=1)))


class Document:
    """Runs the blocks of one document in their order, in a folder of its own."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.source = Path(os.environ['OPTXV_SOURCE'])
        self.options = None
        self.pending = []  # messages that no block has looked at
        self.output = None  # of the program before
        self.code = None  # of the rule of lint that the block before breaks
        self.skipped = False  # that program was not run, and its output is not known

    def run(self, words, lines):
        kind = words[0] if words else ''
        step = getattr(self, 'run_' + kind, None)
        if step is None:
            raise Fault(f'nothing runs a block of kind "{kind}"')
        if kind != 'messages':
            self.close_messages()
        if kind != 'output':
            self.close_output()
        step(lines, *words[1:])

    def close(self):
        self.close_messages()
        self.close_output()
        if self.options:
            self.options.close()

    def close_output(self):
        if self.output:
            raise Fault('the program before prints, and no output block follows it')

    def close_messages(self):
        unseen = [text for text, kind in self.pending if kind not in BRACKETS]
        self.pending = []
        if unseen:
            raise Fault('messages of the block before that nothing shows:\n' + '\n'.join(unseen))

    # --- the languages

    def write(self, name, lines):
        path = self.folder / name
        path.write_text(''.join(line + '\n' for line in lines), encoding='utf-8')
        return name

    def fresh(self):
        if self.options:
            self.options.close()
        self.options = optxv.Options('example.def', strict=False)
        return self.taken_messages()

    def taken_messages(self):
        """Takes the messages out of the queue, as pairs of text and kind."""
        messages = [(message.shown, message.kind) for message in self.options.messages]
        self.options.clear_messages()
        return messages

    def run_definition(self, lines):
        self.write('example.def', lines)
        self.pending = self.fresh()

    def run_parameters(self, lines, *how):
        if 'more' not in how:
            self.fresh()
        self.options.switch(optxv.Switch.LINE_MODE, 'token' not in how)
        self.options.read(self.write('example.opt', lines))
        self.pending = self.taken_messages()

    def run_file(self, lines, name):
        self.write(name, lines)

    def run_messages(self, lines, which=''):
        hidden = () if which == 'all' else BRACKETS
        real, self.pending = [text for text, kind in self.pending if kind not in hidden], []
        if not real:
            raise Fault('there are no messages')
        compare(lines, real)

    def run_values(self, lines):
        compare(lines, listing.values(self.options))

    def run_lookup(self, lines):
        lines = [' '.join(line.split()) for line in lines]
        keys = [line.split('->')[0].strip() for line in lines]
        compare(lines, [f'{key} -> {self.options.lookup(key) or "nothing"}' for key in keys])

    def run_help(self, lines, request):
        self.options.show_help(request)
        compare(lines, [text for text, _ in self.taken_messages()])

    def run_written(self, lines):
        compare(lines, self.options.to_text().splitlines())

    # --- programs

    def shell(self, command):
        programs = [os.environ[name] for name in PROGRAMS.values() if os.environ.get(name)]
        environment = {**os.environ, 'LD_LIBRARY_PATH': str(Path(os.environ['OPTXV_LIBRARY']).parent),
                       'PATH': ':'.join([*(str(Path(program).parent) for program in programs), os.environ['PATH']])}
        return subprocess.run(command, shell=isinstance(command, str), cwd=self.source, env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              text=True, errors='replace', timeout=120)

    def must(self, command):
        done = self.shell(command)
        if done.returncode != 0:
            raise Fault(f'{command} fails with {done.returncode}:\n{done.stdout}')
        return done.stdout

    def compiled(self, lines, compiler, name, standard):
        path = self.folder / self.write(name, lines)
        target = str(path.with_suffix(''))
        self.must([*compiler.split(), standard, '-Wall', '-Wextra', '-Wpedantic', '-Werror', f'-I{self.source}/include',
                   str(path), '-o', target, f'-L{Path(os.environ["OPTXV_LIBRARY"]).parent}', '-loptxv'])
        self.output = self.must([target])

    def run_c(self, lines):
        self.compiled(lines, os.environ.get('CC', 'cc'), 'program.c', '-std=c99')

    def run_cpp(self, lines):
        self.compiled(lines, os.environ.get('CXX', 'c++'), 'program.cpp', '-std=c++17')

    def run_fortran(self, lines):
        if not os.environ.get('FC'):
            self.skipped = True
            print('not run, since there is no compiler: a block of Fortran')
            return
        path = self.folder / self.write('program.f90', lines)
        target = str(path.with_suffix(''))
        self.must([os.environ['FC'], '-std=f2018', '-Wall', '-Wextra', '-Werror', f'-J{self.folder}',
                   f'{self.source}/bindings/fortran/optxv.f90', str(path), '-o', target,
                   f'-L{Path(os.environ["OPTXV_LIBRARY"]).parent}', '-loptxv'])
        self.output = self.must([target])

    def run_python(self, lines):
        self.output = self.must([sys.executable, '-B', str(self.folder / self.write('program.py', lines))])

    def run_output(self, lines):
        real, self.output = self.output or '', None
        if self.skipped:
            self.skipped = False
            return
        compare(lines, real.splitlines())

    def run_console(self, lines):
        missing = [variable for word, variable in PROGRAMS.items()
                   if not os.environ.get(variable) and any(re.search(rf'^\$ (.*\| )?{word} ', line) for line in lines)]
        if missing:
            print(f'not run, since this build lacks it: a console block for {missing[0]}')
            return
        above, *turns = ('\n' + '\n'.join(lines)).split('\n$ ')
        if above or not turns:
            raise Fault('does not begin with a command')
        for turn in turns:
            command, *shown = turn.split('\n')
            compare(shown, self.shell(command).stdout.splitlines())

    def run_excerpt(self, lines, name):
        rest = iter(' '.join(line.split()) for line in (self.source / name).read_text(encoding='utf-8').splitlines())
        for line in lines:
            if ' '.join(line.split()) not in rest:  # goes on after the line before
                raise Fault(f'has a line that is not there, or not in this order: {line}')

    def lints(self, code, lines):
        """Whether lint finds a fault of that code in a definition, or in parameters for the one above."""
        name = self.write('example.lint', lines)
        files = ['example.def', name] if self.options else [name]
        done = subprocess.run([os.environ['OPTXV_COMMAND'], 'lint', '--json', '--select', 'D,P' if code[0] == 'I' else code,
                               *files], cwd=self.folder, stdout=subprocess.PIPE, check=False)
        found = json.loads(done.stdout)
        if found['summary']['errors']:
            raise Fault('has errors')
        return code in [each['code'] for each in found['diagnostics']]

    def run_lint(self, lines, code):
        self.code = code
        if os.environ.get('OPTXV_COMMAND') and not self.lints(code, lines):
            raise Fault('does not break the rule')

    def run_clean(self, lines):
        if os.environ.get('OPTXV_COMMAND') and self.lints(self.code, lines):
            raise Fault(f'still breaks {self.code}')

    # --- what is not run

    def run_sh(self, lines, how=''):
        if how != 'not-run':
            raise Fault('a block of sh is a console block, or says not-run')

    def run_diagram(self, lines):
        pass


def faults(path):
    """Every fault of a document, as text."""
    text = path.read_text(encoding='utf-8')
    found = list(broken_links(path, text))
    number = 0
    with tempfile.TemporaryDirectory() as folder, contextlib.chdir(folder):
        try:
            document = Document(folder)
            for number, words, lines in blocks(text):
                try:
                    document.run(words, lines)
                except Fault as fault:
                    found.append(f'{path.name}:{number}: {" ".join(words)} {fault}')
                    document.output = None
            document.close()
        except Fault as fault:
            found.append(f'{path.name}:{number}: {fault}')
    return found


def main(names):
    found = [fault for name in names for fault in faults(Path(name).resolve())]
    print('\n'.join(found) if found else f'{len(names)} documents hold')
    return 1 if found or not names else 0


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
