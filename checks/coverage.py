#!/usr/bin/env python3
"""Runs the tests of a build with counters, and says which lines and branches of src/ and command/ they reach.

Usage: coverage.py <build folder> [--branches] [--kept] [test...]. Prints a row for each folder beside its goals, then
the lines that nobody reaches; with --branches the lines too of which a branch is never taken. --kept takes the
counts of the run before. With names of tests only these run, and no goal counts. The exit status is 1 where a goal
is missed, a test fails, or a mark is wrong.

What no test can reach is marked at the end of its line, with the reason: `// unreached: <reason>`. The mark of a
line that opens a block holds to the end of the block, that of a line that opens a list of arguments to its end. A
marked line does not count, and its mark is wrong where the line and all of its branches are reached.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import testruns  # noqa: E402  (found beside this file)

HIGH = re.compile(r'src/(options|definition|parameter|language|writers|frame)|command/analysis')
GOALS = {True: (97, 92), False: (92, 85)}  # of lines and of branches, in percent
MARK = re.compile(r'// unreached: \S')
LIMIT = 600  # seconds that a test may take
VERSION = os.environ.get('OPTXV_LLVM', '-14')
FOLDERS = ('src/', 'command/')
JOBS = int(os.environ.get('OPTXV_JOBS', os.cpu_count()))

# What is known of a file: {line: times reached}, and {line: [times taken]}, one for each way of each branch.
File = collections.namedtuple('File', 'lines branches')


def counted(build, test):
    """Runs one test, which leaves its counts in a folder of its own; its status."""
    folder = build / 'profiles' / test['name']
    folder.mkdir(parents=True)
    with open(build / 'profiles' / f'{test["name"]}.log', 'wb') as output:
        # One file for each binary, into which all processes of a test count at once: one that aborts has counted too.
        return testruns.run(test, {'LLVM_PROFILE_FILE': str(folder / '%m%c.profraw')}, LIMIT, output)


def run_all(build, tests):
    """Runs the tests, and gives the names of those that fail."""
    shutil.rmtree(build / 'profiles', ignore_errors=True)
    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        statuses = list(pool.map(lambda test: counted(build, test), tests))
    return [test['name'] for test, status in zip(tests, statuses) if status != 0]


def binaries(build):
    """What has the counters: the libraries and the programs that the build has made."""
    found = [path for path in sorted(build.iterdir()) if path.is_file() and not path.is_symlink() and
             os.access(path, os.X_OK)]
    return sorted(found, key=lambda path: '.so' not in path.name)


def libraries(build):
    return [path for path in binaries(build) if '.so' in path.name]


def exporter(profiles, objects):
    """A function that gives what llvm-cov tells in some form of the counts in folders of profiles."""
    raw = [str(path) for folder in profiles for path in folder.glob('*.profraw')]
    merged = profiles[0].with_suffix('.profdata')
    subprocess.run([f'llvm-profdata{VERSION}', 'merge', '-sparse', '-o', merged, '-f', '/dev/stdin'], check=True,
                   input='\n'.join(raw), text=True)

    def told(*form):
        return subprocess.run([f'llvm-cov{VERSION}', 'export', *form, f'-instr-profile={merged}', objects[0],
                               *(f'-object={path}' for path in objects[1:])],
                              check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
    return told


def line_counts(profiles, objects):
    return read_lines(exporter(profiles, objects)('-format=lcov'))[0]


def export(profiles, objects):
    """The counts of some folders of profiles in some binaries, as {path: File}."""
    told = exporter(profiles, objects)
    lines, kept = read_lines(told('-format=lcov'))
    return with_branches(lines, kept, json.loads(told('-format=text', '-skip-functions')))


def path_of(told):
    """The path in the tree of a file that was compiled; the copies of headers in the build are these headers."""
    return re.sub(r'^.*/classheaders/optxv/', 'src/', told).split('/./')[-1]


def read_lines(told):
    """The lines of FOLDERS in a text in the form of lcov, as {path in the tree: {line: count}}; and how many ways of
    branches each line has, as {(path, line): count}: without those that the compiler has decided."""
    files, kept = collections.defaultdict(collections.Counter), collections.Counter()
    for record in told.split('end_of_record\n')[:-1]:
        path = path_of(re.search(r'^SF:(.*)', record, re.M)[1])
        if path.startswith(FOLDERS):
            for line, count in re.findall(r'^DA:(\d+),(\d+)', record, re.M):
                files[path][int(line)] += int(count)
            kept.update((path, int(line)) for line in re.findall(r'^BRDA:(\d+)', record, re.M))
    return files, kept


def ways_of(told):
    """All branches in what llvm-cov tells in its own form, as {(path, line): {columns: [taken, not taken]}}. Those of a
    template are one, whatever it is made for."""
    ways, listed = collections.defaultdict(dict), collections.Counter()
    for file in told['data'][0]['files']:
        path = path_of(file['filename'])
        for line, column, last, end, taken, untaken, *_ in file['branches']:
            here = ways[path, line].setdefault((column, last, end), [0, 0])
            here[0] += taken
            here[1] += untaken
            listed[path, line] += 2
    return ways, listed


def with_branches(lines, kept, told):
    """The files, with the branches of each line. Where some of a line are decided by the compiler, these are the ones
    that are never met."""
    files = {path: File(counts, {}) for path, counts in lines.items()}
    ways, listed = ways_of(told)
    for (path, line), branches in ways.items():
        decided = kept[path, line] < listed[path, line]
        counts = [count for _, pair in sorted(branches.items()) if any(pair) or not decided for count in pair]
        if path in files and counts:
            files[path].branches[line] = counts
    return files


def block_end(text, start):
    """The index of the last line of what the line at `start` opens: itself, where it opens nothing."""
    if not text[start].split('//')[0].rstrip().endswith(('{', '(')):
        return start
    head = start
    while head > 0 and text[head - 1].endswith(','):  # the lines of a head of several lines
        head -= 1
    indent = len(text[head]) - len(text[head].lstrip())
    closing = re.compile(' ' * indent + r'\S')
    return next(index for index in range(start + 1, len(text)) if closing.match(text[index]))


def marks(text):
    """The marks of a file, as (first line, last line)."""
    return [(start + 1, block_end(text, start) + 1) for start, line in enumerate(text) if MARK.search(line)]


def reached(file, line):
    return file.lines.get(line, 1) > 0 and all(file.branches.get(line, []))


def wrong_marks(path, file, marked):
    return [f'{path}:{first}: marked as unreached, and reached' for first, last in marked
            if all(reached(file, line) for line in range(first, last + 1))]


def without(file, marked):
    """The file without its marked lines."""
    left_out = {line for first, last in marked for line in range(first, last + 1)}
    return File(*({line: count for line, count in part.items() if line not in left_out} for part in file))


def share(part, whole):
    return 100 * part / whole if whole else 100.0


def sums(files):
    """Of some files: lines reached, lines, ways of branches taken, ways of branches."""
    lines = [count for file in files for count in file.lines.values()]
    taken = [count for file in files for counts in file.branches.values() for count in counts]
    return sum(map(bool, lines)), len(lines), sum(map(bool, taken)), len(taken)


def row(name, goals, of_files):
    """Prints the row of a folder, and gives whether its goals are met."""
    lines, all_lines, taken, all_taken = of_files
    met = share(lines, all_lines) >= goals[0] and share(taken, all_taken) >= goals[1]
    print(f'{name:<20} {share(lines, all_lines):7.1f} % of {all_lines:6,} {goals[0]:4} '
          f'{share(taken, all_taken):7.1f} % of {all_taken:6,} {goals[1]:4}  {"yes" if met else "NO"}')
    return met


def table(files):
    """Prints the rows of all folders, and gives whether all goals are met."""
    folders = collections.defaultdict(list)
    for path, file in files.items():
        folders[str(Path(path).parent)].append(file)
    print(f'{"folder":<20} {"lines":>18} goal {"branches":>18} goal  met')
    return all([row(name, GOALS[bool(HIGH.fullmatch(name))], sums(folders[name])) for name in sorted(folders)])


def lacking(path, file, text, with_branches):
    """A line of text for each line that is not reached; with_branches: or of which a branch is not taken."""
    for line in sorted(file.lines.keys() | file.branches.keys()):
        if file.lines.get(line, 1) == 0:
            yield f'{path}:{line}: {text[line - 1].strip()}'
        elif with_branches and not reached(file, line):
            ways = ''.join('.' if count else 'X' for count in file.branches[line])
            yield f'{path}:{line}: [{ways}] {text[line - 1].strip()}'


def report(files, with_branches):
    """Prints all that is to be said of the counts, and gives whether it is good."""
    texts = {path: Path(path).read_text(encoding='utf-8').splitlines() for path in files}
    marked = {path: marks(texts[path]) for path in files}
    wrong = [fault for path in files for fault in wrong_marks(path, files[path], marked[path])]
    left = {path: without(file, marked[path]) for path, file in files.items()}
    met = table(left)
    unreached = [line for path in sorted(left) for line in lacking(path, left[path], texts[path], with_branches)]
    print('\n'.join([*wrong, *unreached]))
    lines, all_lines, taken, all_taken = sums(left.values())
    left_out = sum(len(file.lines) for file in files.values()) - all_lines
    print(f'coverage: {share(lines, all_lines):.1f} % of {all_lines:,} lines, {share(taken, all_taken):.1f} % of '
          f'{all_taken:,} branches; {left_out:,} lines are marked as unreached')
    return met and not wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('build', type=Path)
    parser.add_argument('--branches', action='store_true')
    parser.add_argument('--kept', action='store_true')
    parser.add_argument('tests', nargs='*')
    words = parser.parse_args()
    build = words.build.resolve()
    if not words.kept:
        tests = [test for test in testruns.tests_of(build)
                 if not words.tests or test['name'] in words.tests]
        failed = run_all(build, tests)
        if failed:
            print('these tests fail, see profiles/*.log there: ' + ' '.join(failed))
            return 1
    profiles = sorted(path for path in (build / 'profiles').iterdir() if path.is_dir())
    good = report(export(profiles, binaries(build)), words.branches)
    return 0 if good or words.tests else 1


if __name__ == '__main__':
    sys.exit(main())
