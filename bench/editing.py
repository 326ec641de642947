#!/usr/bin/env python3
"""How long an editor waits for the language server, and how much memory that has.

Usage: editing.py <optxv>. The times are those of a client: from the first byte of a message to the last byte of the
answer. A table of 3,158 options, a parameter file of as many lines, 1,000 edits at random: every other one undoes the
one before it, so that the file stays one that somebody works on.
"""
import json
import random
import subprocess
import sys
import tempfile
import time
from pathlib import Path

OPTIONS, LARGE, EDITS, MANY = 3158, 20000, 1000, 10000
WORDS = ['option_000017', ' 7', ' 700', '7', 'x', '\n', '* a note\n', 'optoin_000001 5\n', '!', '=', ' = 3\n']


class Client:
    def __init__(self, program, folder):
        self.server = subprocess.Popen([program, 'lsp'], stdin=subprocess.PIPE, stdout=subprocess.PIPE, cwd=folder)
        self.folder, self.asked, self.version = folder, 0, 0

    def send(self, method, params, **more):
        content = json.dumps({'jsonrpc': '2.0', 'method': method, 'params': params, **more}).encode()
        self.server.stdin.write(b'Content-Length: %d\r\n\r\n' % len(content) + content)
        self.server.stdin.flush()

    def receive(self):
        """The bytes of the next message, and when the last of them came."""
        length = int(self.server.stdout.readline().split(b':')[1])
        self.server.stdout.readline()
        content = self.server.stdout.read(length)
        return content, time.perf_counter()

    def ask(self, method, params):
        """The answer, and the seconds that it took."""
        self.asked += 1
        before = time.perf_counter()
        self.send(method, params, id=self.asked)
        while True:
            content, came = self.receive()
            message = json.loads(content)
            if message.get('id') == self.asked:
                return message.get('result'), came - before

    def uri(self, name):
        return (self.folder / name).as_uri()

    def begin(self):
        self.ask('initialize', {'processId': None, 'rootUri': self.folder.as_uri(), 'capabilities': {}})
        self.send('initialized', {})

    def told(self, method, params):
        """Sends what changes a document; the seconds until its findings are there."""
        before = time.perf_counter()
        self.send(method, params)
        while True:
            content, came = self.receive()
            if b'publishDiagnostics' in content and params['textDocument']['uri'].encode() in content:
                return came - before

    def open(self, name, language, text):
        self.version += 1
        return self.told('textDocument/didOpen', {'textDocument': {
            'uri': self.uri(name), 'languageId': language, 'version': self.version, 'text': text}})

    def change(self, name, start, end, text):
        self.version += 1
        span = [{'line': line, 'character': character} for line, character in (start, end)]
        return self.told('textDocument/didChange', {
            'textDocument': {'uri': self.uri(name), 'version': self.version},
            'contentChanges': [{'range': {'start': span[0], 'end': span[1]}, 'text': text}]})

    def memory(self):
        status = Path(f'/proc/{self.server.pid}/status').read_text()
        return int(next(line.split()[1] for line in status.splitlines() if line.startswith('VmRSS'))) / 1024

    def end(self):
        self.ask('shutdown', None)
        self.send('exit', None)
        self.server.wait()


def table(count):
    return ''.join(['general group 1 1 General\n'] +
                   [f'option_{i:06} integer {i + 1} 5 0 100 1 1 The option with the number {i}\n' for i in range(count)])


def line_of(number):
    return f'option_{number:06} {number % 100}'


def good_lines(count):
    return [line_of(i) for i in range(count)]


def faulty_lines(count):
    """A fourth of the lines has a name that no option has, and is near to some."""
    return [line_of(i) if i % 4 else f'optoin_{i:06} 7' for i in range(count)]


def text_of(lines):
    return ''.join(line + '\n' for line in lines)


def percentile(times):
    return sorted(times)[len(times) * 95 // 100] * 1000


def row(name, value, limit, unit):
    print(f'{name:<34} {value:9.1f} {limit:9.0f} {unit:<4} {"yes" if value <= limit else "NO"}', flush=True)


def after(line, character, text):
    """Where a text ends that is put in at a place."""
    lines = text.split('\n')
    return (line + len(lines) - 1, len(lines[-1]) + (character if len(lines) == 1 else 0))


def keystrokes(client, chance, lines):
    """One edit at random, a word put in or a few characters taken out, and its undoing: the seconds of both."""
    line, character = chance.randrange(len(lines)), chance.randrange(14)
    place = (line, character)
    if chance.random() < 0.5:
        word = chance.choice(WORDS)
        return [client.change('a.opt', place, place, word), client.change('a.opt', place, after(*place, word), '')]
    gone = lines[line][character:][:1 + chance.randrange(3)]
    end = (line, character + len(gone))
    return [client.change('a.opt', place, end, ''), client.change('a.opt', place, place, gone)]


def measure_other(program, folder, name, lines, lint):
    """A keystroke in a file of other lines, or with the rules of lint switched on."""
    (folder / 'optxv.json').write_text(json.dumps(
        {'definitions': [{'definition': 'solver.def', 'files': ['*.opt']}], 'lint': lint}))
    chance = random.Random(14)
    client = Client(program, folder)
    client.begin()
    client.open('a.opt', 'optxv-parameters', text_of(lines))
    row(name, percentile([took for _ in range(EDITS // 4) for took in keystrokes(client, chance, lines)]), 30, 'ms')
    client.end()
    (folder / 'optxv.json').unlink()


def measure(program, folder):
    chance = random.Random(14)
    (folder / 'solver.def').write_text(table(OPTIONS))
    client = Client(program, folder)
    client.begin()
    lines = good_lines(OPTIONS)
    client.open('a.opt', 'optxv-parameters', text_of(lines))
    edits, completions, hovers = [], [], []
    for _ in range(EDITS // 2):
        edits += keystrokes(client, chance, lines)
        place = {'textDocument': {'uri': client.uri('a.opt')},
                 'position': {'line': chance.randrange(OPTIONS), 'character': chance.randrange(14)}}
        completions.append(client.ask('textDocument/completion', place)[1])
        hovers.append(client.ask('textDocument/hover', place)[1])
    row('a keystroke to its findings', percentile(edits), 30, 'ms')
    row('completion', percentile(completions), 10, 'ms')
    row('hover', percentile(hovers), 5, 'ms')
    start = client.memory()
    for _ in range(MANY // 2):
        keystrokes(client, chance, lines)
    row('memory', client.memory(), 64, 'MiB')
    row('memory gained in 10,000 edits', client.memory() - start, 4, 'MiB')
    client.end()
    measure_other(program, folder, 'a keystroke where 790 lines err', faulty_lines(OPTIONS), False)
    measure_other(program, folder, 'a keystroke with lint', lines, True)
    client = Client(program, folder)
    client.begin()
    row('opening a table of 20,000', client.open('large.def', 'optxv-definition', table(LARGE)) * 1000, 1000, 'ms')
    client.end()


def main(program):
    print(f'{"editing":<34} {"measured":>9} {"limit":>9}      met')
    with tempfile.TemporaryDirectory() as name:
        measure(str(Path(program).resolve()), Path(name).resolve())


main(sys.argv[1])
