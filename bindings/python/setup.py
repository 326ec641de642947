"""Puts the shared library into the package, which makes a wheel one of this platform, for every Python 3.

The library is the file that OPTXV_LIBRARY names; where that is not set, it is built from the sources: those of the
tree around this folder, or those that the source distribution carries with it.
"""
import os
import shutil
import subprocess
from pathlib import Path

from setuptools import Distribution, setup
from setuptools.command.build_py import build_py
from setuptools.command.sdist import sdist

try:
    from setuptools.command.bdist_wheel import bdist_wheel
except ImportError:  # an older setuptools has it in a package of its own
    from wheel.bdist_wheel import bdist_wheel

HERE = Path(__file__).resolve().parent
CARRIED = 'library'  # the folder of the sources in a source distribution
SOURCES = ('CMakeLists.txt', 'LICENSE', 'cmake', 'include', 'src')


def tree():
    """The folder with the sources of the library."""
    return HERE / CARRIED if (HERE / CARRIED).is_dir() else HERE.parents[1]


def built_library(folder):
    """Builds the library alone. Needs cmake and a compiler of C++20."""
    subprocess.run(['cmake', '-S', tree(), '-B', folder, '-DCMAKE_BUILD_TYPE=Release', '-DBUILD_TESTING=OFF',
                    '-DOPTXV_TOOLS=OFF', '-DOPTXV_EXAMPLES=OFF', '-DOPTXV_WERROR=OFF'], check=True)
    subprocess.run(['cmake', '--build', folder, '--target', 'optxv', '--parallel', str(os.cpu_count() or 1)], check=True)
    return Path(folder) / 'liboptxv.so'


class BuildWithLibrary(build_py):
    def run(self):
        super().run()
        if not getattr(self, 'editable_mode', False):
            named = os.environ.get('OPTXV_LIBRARY')
            library = Path(named) if named else built_library(self.get_finalized_command('build').build_temp)
            shutil.copyfile(library, Path(self.build_lib) / 'optxv/liboptxv.so')


class WheelOfPlatform(bdist_wheel):
    def get_tag(self):
        return 'py3', 'none', super().get_tag()[2]  # nothing is linked with Python itself


class SdistWithSources(sdist):
    def make_release_tree(self, base_dir, files):
        super().make_release_tree(base_dir, files)
        for name in SOURCES:
            source, target = tree() / name, Path(base_dir) / CARRIED / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copytree(source, target) if source.is_dir() else shutil.copyfile(source, target)


class PlatformDistribution(Distribution):
    def has_ext_modules(self):
        return True


setup(distclass=PlatformDistribution,
      cmdclass={'build_py': BuildWithLibrary, 'bdist_wheel': WheelOfPlatform, 'sdist': SdistWithSources})
