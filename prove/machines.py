#!/usr/bin/env python3
"""The library and the command on other machines, and by another compiler with another library of C++.

Usage: machines.py [--sample] [name...]. The names are those of MACHINES, `libcxx`, `musl` and `reals`; all without one.

A machine: everything is built by Debian's cross compiler, the unit tests run under qemu-user, and what the command
prints and writes for the examples is held against this machine's, byte for byte. `libcxx` is the same for this machine
by clang 16 with its own library of C++, whose std::from_chars reads no reals. `musl` compiles every source against the
headers of that C library and looks up there what they call. `reals` holds both roads from text to a real against each
other and against strtod.

With --sample nothing is built but the roads for reals, and a machine is only tried where it is built already.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from aid.build import TREE, build, built
from aid.commandruns import RUNS, differing, outcome

# name: the compiler's name of the machine, CMake's, the emulator's
MACHINES = {'s390x': ('s390x-linux-gnu', 's390x', 's390x'),
            'armhf': ('arm-linux-gnueabihf', 'armv7l', 'arm'),
            'aarch64': ('aarch64-linux-gnu', 'aarch64', 'aarch64')}
GOOGLETEST = '/usr/src/googletest'
# What an emulator cannot do as the machine would, by the names of the tests.
NOT_EMULATED = [
    'HostArguments.*',  # starts programs of the machine by their own names
    'BoundaryDeathTest.*',  # holds all that a program says at its end against what it should; the emulator adds a line
    'HeapDeathTest.*',  # the same
    'Command.WhatTheSystemRefuses*',  # has no descriptors or no folder: the emulator needs them itself
    'Commandline.MemoryThatRunsOut*',  # a limit of memory, which ends the emulator first
    'Libraries.LoadFindAndFree',  # compiles a library, for this machine
    'Files.ModesOfOpening',  # the emulator opens with access mode 3 as if it were 0
]
TEXTS, SAMPLE_TEXTS = 20_000_000, 400_000


def quietly(*command, **how):
    """Runs a command whose output is only of interest when it fails."""
    run = subprocess.run(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                         check=False, **how)
    if run.returncode != 0:
        sys.exit(f'{run.stdout}\nfailed: {" ".join(map(str, command))}')
    return run.stdout


def machine_settings(name):
    """What CMake is to know of a machine."""
    target, processor, emulator = MACHINES[name]
    return ['-DCMAKE_SYSTEM_NAME=Linux', f'-DCMAKE_SYSTEM_PROCESSOR={processor}',
            f'-DCMAKE_C_COMPILER={target}-gcc', f'-DCMAKE_CXX_COMPILER={target}-g++',
            f'-DCMAKE_CROSSCOMPILING_EMULATOR=qemu-{emulator};-L;/usr/{target}']


def libcxx_settings():
    return ['-DCMAKE_C_COMPILER=clang-16', '-DCMAKE_CXX_COMPILER=clang++-16', '-DCMAKE_CXX_FLAGS=-stdlib=libc++']


def build_for(name, settings):
    """Builds GoogleTest and then everything of ours; gives the folder. Warnings are for the builds of this machine:
    g++ 12 for armhf takes the end of a string for one that is passed."""
    folder = TREE / f'build-{name}'
    common = ['-G', 'Ninja', '-DCMAKE_BUILD_TYPE=Release', *settings]
    prefix = folder / 'prefix'
    quietly('cmake', '-S', GOOGLETEST, '-B', folder / 'googletest', f'-DCMAKE_INSTALL_PREFIX={prefix}', *common)
    quietly('cmake', '--build', folder / 'googletest', '--target', 'install')
    quietly('cmake', '-S', TREE, '-B', folder, f'-DCMAKE_PREFIX_PATH={prefix}', '-DOPTXV_TOOLS=ON',
            '-DOPTXV_EXAMPLES=OFF', '-DBUILD_TESTING=ON', '-DOPTXV_PRECOMPILE=ON', '-DCMAKE_CXX_COMPILER_LAUNCHER=',
            '-DCMAKE_C_COMPILER_LAUNCHER=', *common)
    quietly('cmake', '--build', folder)
    return folder


def run_tests(folder, left_out):
    """Runs the unit tests but for some; gives how many programs ran, and the names of those that failed."""
    words = ['ctest', '--test-dir', folder, '-L', 'unit', '-j', str(os.cpu_count()), '--output-on-failure']
    run = subprocess.run(words, capture_output=True, text=True, check=False,
                         env=os.environ | {'GTEST_FILTER': '-' + ':'.join(left_out)})
    failed = re.findall(r'^\s*\d+ - (\S+) \((?:Failed|Timeout|.*EXCEPTION.*|Subprocess.*)\)', run.stdout, re.MULTILINE)
    count = re.search(r'tests failed out of (\d+)', run.stdout)
    if failed or not count:
        print(run.stdout + run.stderr)
    return int(count[1]) if count else 0, failed


# What a build says of itself: its day, its machine.
AUDIT = re.compile(rb'\d\d\w{3} [\d.]+ LNX \S+ \w{3} \S+/\w+ *')


def nameless(seen):
    """An outcome without what the build says of itself."""
    status, output, *rest = seen
    return status, AUDIT.sub(b'', output), *rest


def compare(prefix, here, there, runs):
    """Runs of the command there that differ from those here."""
    faults = []
    with tempfile.TemporaryDirectory() as scratch:
        folder = Path(scratch) / 'examples'
        for words in runs:
            wanted = nameless(outcome([here], words, folder))
            seen = nameless(outcome([*prefix, there], words, folder))
            if wanted != seen:
                faults.append(f'{" ".join(words)}: other {differing(wanted, seen)}')
    return faults


def try_build(name, sample):
    """One machine, or the other library of C++: the line for it, and its faults."""
    folder = TREE / f'build-{name}'
    if sample and not (folder / 'optxv').exists():
        return f'{name}: not built, not tried', []
    prefix = ['qemu-' + MACHINES[name][2], '-L', '/usr/' + MACHINES[name][0]] if name in MACHINES else []
    tests, faults, runs = 0, [], RUNS[::6] if sample else RUNS
    if not sample:
        build_for(name, machine_settings(name) if name in MACHINES else libcxx_settings())
        tests, failed = run_tests(folder, NOT_EMULATED if name in MACHINES else [])
        faults += [f'test {test}' for test in failed] + ([] if tests else ['no test ran'])
    faults += compare(prefix, built('optxv'), folder / 'optxv', runs)
    return f'{name}: {tests} test programs, {len(runs)} runs of the command', faults


# --- musl

MUSL = ['clang++-16', '-std=c++20', '-target', 'x86_64-linux-musl', '-nostdlibinc',
        '-isystem', '/usr/lib/llvm-16/include/c++/v1', '-isystem', '/usr/include/x86_64-linux-musl',
        '-D_LIBCPP_HAS_MUSL_LIBC', '-fPIC', '-O1', '-Wall', '-Wextra', '-Werror']


MUSL_LIBRARY = '/usr/lib/x86_64-linux-musl/libc.so'


def musl_object(source, folder):
    """Compiles a source against musl's headers; gives the C functions that it calls."""
    target = folder / (source.stem + '.o')
    includes = ['-I', TREE / 'src', '-I', TREE / 'include']
    defined = [f'-DOPTXV_BUILD_{name}=""' for name in ['MAJOR', 'MINOR', 'MAINTENANCE', 'PLATFORM_CODE', 'CODE',
                                                       'PLATFORM_TEXT']]
    quietly(*MUSL, *includes, *defined, '-DOPTXV_BUILD_EPOCH=0', '-c', source, '-o', target)
    called = quietly('nm', '--undefined-only', '--format=just-symbols', target).split()
    return {name for name in called if not name.startswith('_Z') and not name.startswith('__cxa')}


def try_musl(sample):
    """What the sources of the library want of the C library, and musl has not."""
    if sample and not (shutil.which(MUSL[0]) and Path(MUSL_LIBRARY).exists()):
        return 'musl: not installed, not tried', []
    known = set(quietly('nm', '-D', '--defined-only', '--format=just-symbols', MUSL_LIBRARY).split())
    sources = sorted((TREE / 'src').glob('*/*.cpp'))
    defined_here = set(quietly('nm', '-D', '--defined-only', '--format=just-symbols', built('liboptxv.so')).split())
    allowed = known | defined_here | {'_GLOBAL_OFFSET_TABLE_', '_Unwind_Resume', '__dso_handle', '__gxx_personality_v0'}
    if sample:
        sources = sources[::50]
    faults = []
    with tempfile.TemporaryDirectory() as scratch:
        for source in sources:
            missing = musl_object(source, Path(scratch)) - allowed
            faults += [f'{source.name} calls what musl has not: {name}' for name in sorted(missing)]
    return f'musl: {len(sources)} sources', faults


def try_reals(sample):
    """Both roads from text to a real."""
    build('exactreal_prove', 'optxv_command')
    run = subprocess.run([built('exactreal_prove'), str(SAMPLE_TEXTS if sample else TEXTS), '1'],
                         capture_output=True, text=True, check=False)
    lines = run.stdout.splitlines() or ['no figures']
    return f'reals: {lines[-1]}', lines[:-1] + ([] if run.returncode == 0 else [f'status {run.returncode}'])


def main(words):
    sample = '--sample' in words
    names = [word for word in words if not word.startswith('--')] or ['reals', 'libcxx', 'musl', *MACHINES]
    tries = {'reals': try_reals, 'musl': try_musl}
    lines, faults = [], []
    for name in names:
        line, found = tries[name](sample) if name in tries else try_build(name, sample)
        print(line, *found, sep='\n  ', flush=True)
        lines.append(line)
        faults += found
    print(f'machines: {"; ".join(lines)}; {len(faults)} faults')
    return 1 if faults else 0


if __name__ == '__main__':
    os.environ['LC_ALL'] = 'C.UTF-8'
    sys.exit(main(sys.argv[1:]))
