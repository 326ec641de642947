"""A program in each language, over the code that is generated for it, and how it is built and run.

Each takes the words `values FILE` or `defaults` and writes parameter text, in which an option stands that is set:

  values FILE   reads the definition and that parameter file, fills the struct, writes a line of what it found,
                changes some of the fields, and writes them back. It is for examples/solver.def
  defaults      fills the struct of a new handle from the definition that the code holds, and writes that back, so
                that nothing is set; then tries a handle without a definition, which gives the status -5
"""
import os
import shutil
import subprocess
from pathlib import Path

FOUND = 'time_limit={} threads={} scale_range={},{} dive_first={} log_file={} method={} print_level={}'

C = r'''
#include <stdio.h>
#include "generated.h"
%(host)s
int main(int count, char** words) {
  optxv_handle handle;
  struct %(prefix)s_options values;
  if (optxv_create(&handle) != 0) return 1;
  if (count == 1) printf("%%d\n", %(prefix)s_fill(&values, handle));
  if (%(prefix)s_read_definition(handle) != 0) return 2;
  if (count > 1) optxv_read_parameters(handle, words[1]);
  if (%(prefix)s_fill(&values, handle) != 0) return 3;
  if (count > 1) change(&values);
  if (%(prefix)s_apply(&values, handle) != 0) return 4;
  fflush(stdout);
  optxv_write_parameters(handle, "");
  optxv_free(&handle);
  return 0;
}
'''
C_CHANGE = r'''
static void change(struct solver_options* v) {
  printf("%g %d %g,%g %d %s %s %d\n", v->time_limit, v->threads, v->scale_range[0], v->scale_range[1], v->dive_first,
         v->log_file, solver_method_texts()[v->method], v->print_level);
  v->time_limit = 12;
  v->scale_range[1] = 77;
  v->presolve = false;
  v->method = SOLVER_METHOD_DUAL;
  v->print_level = SOLVER_PRINT_LEVEL_9;
  strcpy(v->basis_file, "two words");
}
'''
C_NONE = 'static void change(struct %s_options* v) { (void)v; }'

CPP = r'''
#include <iostream>
#include "generated.hpp"
%(host)s
struct owner {
  optxv_handle own = nullptr;
  optxv_handle handle() const { return own; }
};
int main(int count, char** words) {
  owner options;
  %(prefix)s::options values;
  if (optxv_create(&options.own) != 0) return 1;
  if (count == 1) std::cout << %(prefix)s::fill(values, options) << std::endl;
  if (%(prefix)s::read_definition(options.own) != 0) return 2;
  if (count > 1) optxv_read_parameters(options.own, words[1]);
  if (%(prefix)s::fill(values, options.own) != 0) return 3;
  if (count > 1) change(values);
  if (%(prefix)s::apply(values, options) != 0) return 4;
  optxv_write_parameters(options.own, "");
  optxv_free(&options.own);
}
'''
CPP_CHANGE = r'''
static void change(solver::options& v) {
  std::cout << v.time_limit << ' ' << v.threads << ' ' << v.scale_range.first << ',' << v.scale_range.second << ' '
            << v.dive_first << ' ' << v.log_file << ' ' << items(v.method)[static_cast<std::size_t>(v.method)] << ' '
            << static_cast<int>(v.print_level) << std::endl;
  v.time_limit = 12;
  v.scale_range.second = 77;
  v.presolve = false;
  v.method = solver::method::dual;
  v.print_level = solver::print_level::value_9;
  v.basis_file = "two words";
  v.read_path = {"/a", "/b"};
}
'''
CPP_NONE = 'static void change(%s::options&) {}'

PYTHON = r'''
import sys
import generated
import optxv
%(host)s
if len(sys.argv) == 1:
    try:
        generated.Options.from_options(optxv.Options.from_text('other integer 1 0 0 9 1 1 Other\n'))
    except optxv.DefinitionError:
        print(-5)
options = generated.read_definition()
if len(sys.argv) > 1:
    options.read(sys.argv[1])
values = generated.Options.from_options(options)
if len(sys.argv) > 1:
    change(values)
values.apply(options)
print(options.to_text(), end='')
'''
PYTHON_CHANGE = r'''
def change(v):
    print(f'{v.time_limit:g} {v.threads} {v.scale_range[0]:g},{v.scale_range[1]:g} {int(v.dive_first)} {v.log_file} '
          f'{v.method.value} {int(v.print_level)}')
    v.time_limit = 12
    v.scale_range = (v.scale_range[0], 77)
    v.presolve = False
    v.method = generated.Method.DUAL
    v.print_level = generated.PrintLevel.VALUE_9
    v.basis_file = 'two words'
    v.read_path = ['/a', '/b']
'''

FORTRAN = r'''
%(host)s
program use
  use, intrinsic :: iso_c_binding
  use %(prefix)s_options
  use host
  implicit none
  interface
    function optxv_create(handle) bind(c) result(status)
      import :: c_ptr, c_int32_t
      type(c_ptr) :: handle
      integer(c_int32_t) :: status
    end function
    function optxv_read_parameters(handle, name) bind(c) result(status)
      import :: c_ptr, c_int32_t, c_char
      type(c_ptr), value :: handle
      character(kind=c_char) :: name(*)
      integer(c_int32_t) :: status
    end function
    function optxv_write_parameters(handle, name) bind(c) result(status)
      import :: c_ptr, c_int32_t, c_char
      type(c_ptr), value :: handle
      character(kind=c_char) :: name(*)
      integer(c_int32_t) :: status
    end function
  end interface
  type(c_ptr) :: handle
  type(%(prefix)s_values) :: values
  character(len=200) :: file
  if (optxv_create(handle) /= 0) stop 1
  if (command_argument_count() == 0) print '(i0)', %(prefix)s_fill(values, handle)
  if (%(prefix)s_read_definition(handle) /= 0) stop 2
  if (command_argument_count() > 0) then
    call get_command_argument(1, file)
    if (optxv_read_parameters(handle, trim(file) // achar(0)) /= 0) stop 3
  end if
  if (%(prefix)s_fill(values, handle) /= 0) stop 4
  if (command_argument_count() > 0) call change(values)
  if (%(prefix)s_apply(values, handle) /= 0) stop 5
  flush (6)
  if (optxv_write_parameters(handle, achar(0)) /= 0) stop 6
end program
'''
FORTRAN_CHANGE = r'''
module host
contains
  subroutine change(v)
    use solver_options
    type(solver_values), intent(inout) :: v
    print '(i0,a,i0,a,f5.3,a,i0,a,i0,5a,i0)', nint(v%%time_limit), ' ', v%%threads, ' ', v%%scale_range(1), ',', &
      nint(v%%scale_range(2)), ' ', merge(1, 0, v%%dive_first), ' ', trim(v%%log_file), ' ', &
      trim(solver_method_texts(v%%method + 1)), ' ', v%%print_level
    v%%time_limit = 12
    v%%scale_range(2) = 77
    v%%presolve = .false.
    v%%method = solver_method_dual
    v%%print_level = solver_print_level_9
    v%%basis_file = 'two words'
    v%%read_path = [character(len=255) :: '/a', '/b']
  end subroutine
end module
'''.replace('%%', '%')
FORTRAN_NONE = '''
module host
contains
  subroutine change(v)
    use %s_options
    type(%s_values), intent(inout) :: v
  end subroutine
end module
'''

PASCAL = r'''
program use;
{$mode objfpc}{$H+}{$scopedenums on}
uses %(prefix)s_options;
function optxv_create(var handle: Pointer): LongInt; cdecl; external 'optxv';
function optxv_read_parameters(handle: Pointer; name: PAnsiChar): LongInt; cdecl; external 'optxv';
function optxv_write_parameters(handle: Pointer; name: PAnsiChar): LongInt; cdecl; external 'optxv';
%(host)s
var
  handle: Pointer;
  values: T%(prefix)s_options;
begin
  handle := nil;
  values := %(prefix)s_defaults;
  if optxv_create(handle) <> 0 then Halt(1);
  if ParamCount = 0 then WriteLn(%(prefix)s_fill(values, handle));
  if %(prefix)s_read_definition(handle) <> 0 then Halt(2);
  if ParamCount > 0 then optxv_read_parameters(handle, PAnsiChar(ParamStr(1)));
  if %(prefix)s_fill(values, handle) <> 0 then Halt(3);
  if ParamCount > 0 then Change(values);
  if %(prefix)s_apply(values, handle) <> 0 then Halt(4);
  Flush(Output);
  optxv_write_parameters(handle, '');
end.
'''
PASCAL_CHANGE = r'''
procedure Change(var v: Tsolver_options);
begin
  WriteLn(v.time_limit:0:0, ' ', v.threads, ' ', v.scale_range[1]:0:3, ',', v.scale_range[2]:0:0, ' ', Ord(v.dive_first),
    ' ', v.log_file, ' ', solver_method_texts[Ord(v.method)], ' ', Ord(v.print_level));
  v.time_limit := 12;
  v.scale_range[2] := 77;
  v.presolve := false;
  v.method := Tsolver_method.dual;
  v.print_level := Tsolver_print_level.value_9;
  v.basis_file := 'two words';
  SetLength(v.read_path, 2);
  v.read_path[0] := '/a';
  v.read_path[1] := '/b';
end;
'''
PASCAL_NONE = 'procedure Change(var v: T%s_options);\nbegin\nend;\n'

STRICT = '-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror'.split()


class Language:
    """name: as the command has it. code: the file of the generated code, %s for the prefix. program: what uses it."""

    def __init__(self, name, code, program, source, change, none, build, needs):
        self.name, self.code, self.program, self.source = name, code, program, source
        self.change, self.none, self.build, self.needs = change, none, build, needs

    def missing(self):
        """What is not installed of what it needs, or nothing."""
        if self.name == 'python':
            return None if package().is_dir() else 'the package of bindings/python'
        return None if shutil.which(self.needs) else self.needs

    def make(self, folder, prefix, changes):
        """Builds the program over the generated code; gives the words that run it."""
        host = self.change if changes else self.none.replace('%s', prefix)
        (folder / self.program).write_text(self.source % {'prefix': prefix, 'host': host})
        if self.build is None:
            return [shutil.which('python3', path='/usr/bin') or 'python3', folder / self.program]
        library = Path(os.environ['OPTXV_LIBRARY']).parent
        words = self.build(self.code.replace('%s', prefix), self.program, Path(os.environ['OPTXV_INCLUDE']), library)
        done = subprocess.run(words, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=280)
        if done.returncode != 0:
            raise AssertionError(f'{self.name}: {" ".join(map(str, words))}\n{done.stdout[-4000:]}')
        return [folder / 'use']


def package():
    """The folder of the Python package."""
    return Path(os.environ.get('OPTXV_PYTHON_PACKAGE', Path(__file__).parents[2] / 'bindings/python/src'))


def linked(library):
    return [f'-L{library}', f'-Wl,-rpath,{library}', '-loptxv']


LANGUAGES = (
    Language('c', 'generated.h', 'use.c', C, C_CHANGE, C_NONE, lambda code, program, include, library: [
        'gcc', '-std=c99', *STRICT, f'-I{include}', program, '-o', 'use', *linked(library)], 'gcc'),
    Language('c++', 'generated.hpp', 'use.cpp', CPP, CPP_CHANGE, CPP_NONE, lambda code, program, include, library: [
        'g++', '-std=c++17', *STRICT, f'-I{include}', program, '-o', 'use', *linked(library)], 'g++'),
    Language('python', 'generated.py', 'use.py', PYTHON, PYTHON_CHANGE, '', None, 'python3'),
    Language('fortran', '%s_options.f90', 'use.f90', FORTRAN, FORTRAN_CHANGE, FORTRAN_NONE,
             lambda code, program, include, library: [
                 'gfortran', '-std=f2008', '-Wall', '-Werror=line-truncation', code, program, '-o', 'use',
                 *linked(library)], 'gfortran'),
    Language('pascal', '%s_options.pas', 'use.pas', PASCAL, PASCAL_CHANGE, PASCAL_NONE,
             lambda code, program, include, library: [
                 'fpc', '-v0ew', f'-Fl{library}', f'-k-rpath={library}', program], 'fpc'),
)
