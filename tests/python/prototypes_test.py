"""The prototypes, structs and numbers of the package are those of the header."""
import ctypes
import inspect
import os
import re
import subprocess

from conftest import SOURCE
from optxv import _library, facts

HEADER = (SOURCE / 'include/optxv/embedding.h').read_text(encoding='utf-8')
CODE = re.sub(r'/\*.*?\*/', ' ', HEADER, flags=re.S)
PLAIN = {'int': ctypes.c_int, 'int32_t': ctypes.c_int32, 'int64_t': ctypes.c_int64, 'uint32_t': ctypes.c_uint32,
         'uint64_t': ctypes.c_uint64, 'size_t': ctypes.c_size_t, 'double': ctypes.c_double,
         'char*': ctypes.c_char_p, 'void': None, 'void*': ctypes.c_void_p, 'optxv_handle': ctypes.c_void_p,
         'optxv_snapshot*': ctypes.c_void_p}
ENUMS = {'kind': facts.Kind, 'takes': facts.Takes, 'said': facts.Said, 'road': facts.Road, 'switch': facts.Switch}
STRUCTS = {'optxv_' + re.sub(r'(?<=[a-z])(?=[A-Z])', '_', name).lower(): struct for name, struct in vars(_library).items()
           if inspect.isclass(struct) and issubclass(struct, ctypes.Structure)}


def c_type(text):
    """The ctypes type of a parameter or result as the header writes it."""
    text = re.sub(r'\bconst\b|\s', '', text)
    if text in PLAIN:
        return PLAIN[text]
    return ctypes.POINTER(c_type(text[:-1])) if text.endswith('*') else STRUCTS[text]


def parameter(text):
    if '(*' in text:
        return _library.Taker
    kind, array = re.fullmatch(r'\s*(.*?)\w+\s*(\[3\])?\s*', text, re.S).groups()
    return c_type(kind + '*' if array else kind)


def declarations():
    """The functions of the header, as {name: (result, parameters)}; only those that the package uses."""
    found = {}
    for result, name, parameters in re.findall(r'OPTXV_EMBEDDING_API\s+([\w* ]+?)\s*(optxv_\w+)\(([^;]*)\);', CODE):
        if name in _library.PROTOTYPES:
            parts = re.split(r',(?![^()]*\))', parameters)
            found[name] = (c_type(result), tuple(map(parameter, parts)))
    return found


def test_every_function_has_the_prototype_of_the_header():
    used = {name: (_library.RESULTS.get(name, ctypes.c_int32), arguments)
            for name, arguments in _library.PROTOTYPES.items()}
    assert declarations() == used
    assert set(_library.RESULTS) <= set(used)


def test_structs_and_numbers_are_those_that_a_compiler_sees(tmp_path):
    expected, lines = [], []
    for name, struct in STRUCTS.items():
        expected.append(ctypes.sizeof(struct))
        lines.append(f'sizeof({name})')
        for field, _ in struct._fields_:
            expected += [getattr(struct, field).offset, getattr(struct, field).size]
            lines += [f'offsetof({name}, {field})', f'sizeof((({name}*)0)->{field})']
    for prefix, enum in ENUMS.items():
        for member in enum:
            expected.append(member.value)
            lines.append(f'optxv_{prefix}_{member.name.lower()}')
    program = tmp_path / 'layout.c'
    program.write_text('#include <optxv/embedding.h>\n#include <stdio.h>\nint main(void) {\n' + ''.join(
        f'printf("%d\\n", (int)({line}));\n' for line in lines) + '}\n')
    subprocess.run([*os.environ.get('CC', 'cc').split(), f'-I{SOURCE}/include', program, '-o', tmp_path / 'layout'],
                   check=True)
    real = subprocess.run([tmp_path / 'layout'], check=True, stdout=subprocess.PIPE, text=True).stdout.split()
    assert dict(zip(lines, expected)) == dict(zip(lines, map(int, real)))


def test_every_number_of_the_header_has_a_name():
    for prefix, enum in ENUMS.items():
        names = set(re.findall(rf'\boptxv_{prefix}_(\w+) =', CODE))
        assert names == {member.name.lower() for member in enum}
