#!/usr/bin/env python3
"""Changes the code in one small place at a time, and says which changes no test notices.

Usage: mutants.py [--count N] [--seed S] [--sample] [place...]. Tries N changes (300) out of all that the places may
suffer, chosen at random by the seed, so that a run can be had again. A place is a folder (src and command/analysis), a
file, or a line of a file as path:line. A change is left out that does not compile, or that gives the same optimised
object code. Each is compiled into the build with counters, whose tests share one library, and then meets the tests that
reach its line, the one of its own module and the quick ones first, until one fails. Prints the changes that live, with
their places, and with the reason for those that survivors.txt has; the status is 1 where more than a tenth of all
lives. Needs the counts of `./dev coverage`, and makes them where there are none.

With --sample a few changes meet the test of their own module alone, in the build that the tests have anyway. That is a
look at this tool and at the tests of the lower floors: the status is 1 where more than three of four live.
"""
import argparse
import collections
import concurrent.futures
import contextlib
import hashlib
import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / 'checks'))
import changes  # noqa: E402
import coverage  # noqa: E402
import testruns  # noqa: E402

FOLDERS = ('src', 'command/analysis')
COUNTED, PLAIN = Path('build-coverage').resolve(), Path('build').resolve()
LIBRARIES = {'src': ('liboptxv.so', 'optxv_archive'), 'command': ('optxv_command_objects',)}
SAMPLE, SAMPLE_SEED, SAMPLE_FOLDERS = 5, 1, ('foundation', 'language', 'listing', 'stores')
# What a mutant is compiled without, and what it is compared without.
QUICK = r'-f(profile|coverage)|-mllvm|-runtime-counter'
SLOW = QUICK + r'|-Xclang|-include|.*/cmake_pch|-Winvalid|-O0'
MEMORY = 4 << 30  # bytes that a test may take: a change may make it ask for all there is
SURVIVORS = Path('prove/survivors.txt')
WRITTEN = 8 << 30  # bytes that a file may have; a test makes a sparse one of five thousand million

# A change of a file: its text, and where it stands for people.
Mutant = collections.namedtuple('Mutant', 'path text change line before after')


def mutants_of(path):
    text = Path(path).read_text(encoding='utf-8')
    lines = changes.Lines(text)
    for change in changes.changes_of(text):
        yield Mutant(path, text, change, lines.number(change.start), *lines.shown(text, change))


def sources(folders):
    return sorted({str(path) for folder in folders for path in Path(folder).rglob('*.cpp')})


def mutants_at(places):
    """The mutants of folders, of files, and of lines of files: path:line."""
    for place in places:
        path, _, line = place.partition(':')
        for source in [path] if Path(path).is_file() else sources([path]):
            yield from (mutant for mutant in mutants_of(source) if line in ('', str(mutant.line)))


def shuffled(mutants, seed):
    """In an order that the seed gives, and each mutant itself: it stays the same where other code changes."""
    return sorted(mutants, key=lambda each: hashlib.sha256(
        '\n'.join([str(seed), each.path, each.before, each.after]).encode()).digest())


class Compiler:
    """How a build folder compiles its sources, for sources with a change in them."""

    def __init__(self, build):
        self.build, self.scratch = build, build / 'mutant'
        self.scratch.mkdir(exist_ok=True)
        rows = json.loads((build / 'compile_commands.json').read_text(encoding='utf-8'))
        self.words = {os.path.relpath(row['file']): shlex.split(row['command']) for row in rows}

    def object_of(self, path):
        words = self.words[path]
        return self.build / words[words.index('-o') + 1]

    def compile(self, path, text, goal, without, *more):
        """Compiles a text in the place of a source; whether that went well."""
        source = self.scratch / Path(path).name
        source.write_text(text, encoding='utf-8')
        words = [word for word in self.words[path] if not word.endswith('ccache') and not re.match(without, word)]
        words[words.index('-o') + 1], words[-1] = str(goal), str(source)
        return subprocess.run([*words, '-w', *more], cwd=self.build, stderr=subprocess.DEVNULL).returncode == 0

    def quick(self, mutant, goal):
        return self.compile(mutant.path, changes.changed(mutant.text, mutant.change), goal, QUICK, '-O0')

    def optimised(self, path, text):
        """The object code of a text, optimised: the same for two texts that do the same in the same steps."""
        goal = self.scratch / 'optimised.o'
        done = self.compile(path, text, goal, SLOW, '-O2')
        return goal.read_bytes() if done else b''

    def same(self, mutant):
        return self.optimised(mutant.path, mutant.text) == \
            self.optimised(mutant.path, changes.changed(mutant.text, mutant.change))


def link_words(build, target):
    told = subprocess.run(['ninja', '-C', build, '-t', 'commands', target], check=True, stdout=subprocess.PIPE, text=True)
    linking = [line for line in told.stdout.splitlines() if ' -o ' in line and ' -c ' not in line]
    return shlex.split(re.sub(r'^: && | && .*$', '', linking[-1]))


class Placed:
    """The build in which a changed object takes the place of the right one, until the end of a `with`."""

    def __init__(self, build):
        self.build, self.kept = build, build / 'mutant' / 'kept'
        self.links = {top: [[*link_words(build, target), '-fuse-ld=gold', '-Wno-unused-command-line-argument']
                            for target in targets]
                      for top, targets in LIBRARIES.items()}
        self.restore()  # after a run that was cut short

    def restore(self):
        for path in self.kept.rglob('*'):
            if path.is_file():
                shutil.copy2(path, self.build / path.relative_to(self.kept))
        shutil.rmtree(self.kept, ignore_errors=True)

    def keep(self, path):
        place = self.kept / path.relative_to(self.build)
        place.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(path, place)

    @contextlib.contextmanager
    def mutated(self, path, original, changed_object):
        """The libraries with one object changed."""
        links = self.links[path.split('/')[0]]
        for file in (original, *(self.build / words[words.index('-o') + 1] for words in links)):
            self.keep(file)
        try:
            shutil.copy(changed_object, original)
            running = [subprocess.Popen(words, cwd=self.build) for words in links]
            if any([process.wait() for process in running]):
                raise RuntimeError(f'{path}: the library with the change was not linked')
            yield
        finally:
            self.restore()


# A changed library may write over anything that its user may: for root, the devices are not among it.
GUARD = ['unshare', '--mount', 'sh', '-c', 'mount --bind /dev /dev && mount -o remount,bind,ro /dev && exec "$@"', 'sh']


def guarded(test):
    return test | {'command': [*GUARD, *test['command']]} if os.geteuid() == 0 else test


def limited():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_FSIZE, (WRITTEN, WRITTEN))


class Tests:
    """The tests of the build with counters: how long each takes, and which lines it reaches."""

    def __init__(self, build):
        self.build = build
        self.tests = {test['name']: test for test in testruns.tests_of(build)}
        with concurrent.futures.ThreadPoolExecutor(coverage.JOBS) as pool:
            timed = dict(zip(self.tests, pool.map(self.timed, self.tests.values())))
            self.seconds = {name: seconds for name, seconds in timed.items() if seconds}
            self.order = sorted(self.seconds, key=self.seconds.get)
            self.lines = dict(zip(self.order, pool.map(self.lines_of, self.order)))

    def timed(self, test):
        """How long a test takes; None where it fails without any change, so that it can tell nothing."""
        start = time.monotonic()
        if self.status(test, coverage.LIMIT) == 0:
            return time.monotonic() - start
        print(f'left out, as it fails without any change: {test["name"]}', flush=True)
        return None

    def status(self, test, limit):
        settings = {'LLVM_PROFILE_FILE': os.devnull, 'GTEST_FAIL_FAST': '1'}
        return testruns.run(guarded(test), settings, limit, prepare=limited)

    def lines_of(self, name):
        """{path: {line: how often the test reaches it}}, from the last run with counters."""
        return coverage.line_counts([self.build / 'profiles' / name], coverage.libraries(self.build))

    def reaching(self, mutant):
        """The tests that reach the line, the one of its own module first. Where none does, those that reach its
        file: it may be a line of a table, or of what the compiler works out."""
        counts = {name: self.lines[name].get(mutant.path, {}) for name in self.order}
        names = [name for name in self.order if counts[name].get(mutant.line)]
        names = names or [name for name in self.order if any(counts[name].values())]
        own = f'{Path(mutant.path).stem}_test'
        return sorted(names, key=lambda name: name != own)

    def killer(self, names):
        """The first of some tests that fails, or None."""
        failed = []

        def step(name):
            limit = 10 * self.seconds[name] + 5
            if not failed and self.status(self.tests[name], limit) != 0:
                failed.append(name)
        with concurrent.futures.ThreadPoolExecutor(coverage.JOBS) as pool:
            list(pool.map(step, names))
        return failed[0] if failed else None


def told(mutant, what):
    print(f'{mutant.path}:{mutant.line}: {what}\n    {mutant.before}\n    {mutant.after}', flush=True)


class Sums(collections.Counter):
    def row(self):
        tried = self['killed'] + self['lives']
        percent = 100 * self['killed'] / tried if tried else 100
        return (f'mutants: {self["killed"]} of {tried} killed ({percent:.1f} %), {self["named"]} of the others have a '
                f'reason, {self["same"]} more gave the same code, {self["compile"]} did not compile')


def known_survivors():
    """{(path, line before, line after): why no test can notice, or which other check does}."""
    rows = re.findall(r'^(\S+): (.*)\n {4}(.*)\n {4}(.*)$', SURVIVORS.read_text(encoding='utf-8'), re.M)
    return {(path, before, after): why for path, why, before, after in rows}


def outdated(known):
    """Those of the known survivors that the code cannot suffer any more; each is printed."""
    there = {(each.path, each.before, each.after) for each in mutants_at({path for path, _, _ in known})}
    old = [change for change in known if change not in there]
    for path, before, after in old:
        print(f'{path}: {SURVIVORS} has a change that is none of this code\n    {before}\n    {after}')
    return old


def fate(mutant, compiler, placed, tests):
    """What becomes of a mutant: 'compile', where it does not; 'same', 'killed' or 'lives'."""
    goal = compiler.scratch / 'changed.o'
    if not compiler.quick(mutant, goal):
        return 'compile', ''
    names = tests.reaching(mutant)
    with placed.mutated(mutant.path, compiler.object_of(mutant.path), goal):
        killer = tests.killer(names)
    if killer:
        return 'killed', killer
    return ('same' if compiler.same(mutant) else 'lives'), f'{len(names)} tests reach it'


def whole(words):
    if not any((COUNTED / 'profiles').glob('*/*.profraw')):
        subprocess.run(['./dev', 'coverage'], check=False, stdout=subprocess.DEVNULL)
    compiler, placed = Compiler(COUNTED), Placed(COUNTED)
    tests = Tests(COUNTED)
    sums, known = Sums(), known_survivors()
    for mutant in shuffled(mutants_at(words.places or FOLDERS), words.seed):
        if sums['killed'] + sums['lives'] == words.count:
            break
        what, why = fate(mutant, compiler, placed, tests)
        reason = known.get((mutant.path, mutant.before, mutant.after))
        sums[what] += 1
        sums['named'] += what == 'lives' and reason is not None
        if what == 'lives' or words.verbose:
            told(mutant, f'{what}: {reason or why}')
    print(sums.row())
    return 1 if sums['lives'] * 10 > sums['killed'] + sums['lives'] or outdated(known) else 0


def sample_fate(mutant, compiler):
    """As fate, by the test of the module alone, which is linked with the changed object ahead of the archive."""
    goal, name = compiler.scratch / 'changed.o', f'{Path(mutant.path).stem}_test'
    if not compiler.quick(mutant, goal):
        return 'compile'
    words = link_words(PLAIN, name)
    program = words.index('-o') + 1
    words[program] = str(compiler.scratch / name)
    words.insert(next(index for index, word in enumerate(words) if word.endswith('_archive.a')), str(goal))
    subprocess.run(words, cwd=PLAIN, check=True)
    test = {'command': [words[program]], 'folder': '.', 'settings': {}}
    return 'lives' if testruns.run(guarded(test), {'GTEST_FAIL_FAST': '1'}, 20, prepare=limited) == 0 else 'killed'


def sample():
    subprocess.run(['cmake', '--preset', 'release'], check=True, stdout=subprocess.DEVNULL)
    paths = [path for path in sources(f'src/{folder}' for folder in SAMPLE_FOLDERS)
             if Path('tests', *Path(path).parts[1:2], f'{Path(path).stem}_test.cpp').is_file()]
    sums, compiler = Sums(), Compiler(PLAIN)
    for mutant in shuffled(mutants_at(paths), SAMPLE_SEED):
        if sums['killed'] + sums['lives'] == SAMPLE:
            break
        subprocess.run(['cmake', '--build', PLAIN, '--target', f'{Path(mutant.path).stem}_test'], check=True,
                       stdout=subprocess.DEVNULL)
        what = sample_fate(mutant, compiler)
        sums[what] += 1
        if what == 'lives':
            told(mutant, 'the test of the module does not notice')
    print(sums.row())
    return 1 if sums['lives'] > 3 * sums['killed'] else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--count', type=int, default=300)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--sample', action='store_true')
    parser.add_argument('--verbose', action='store_true', help='print the killed ones too')
    parser.add_argument('places', nargs='*')
    words = parser.parse_args()
    return sample() if words.sample else whole(words)


if __name__ == '__main__':
    sys.exit(main())
