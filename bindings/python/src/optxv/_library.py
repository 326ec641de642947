"""The shared library: where it is found, the structs of its header, and the prototype of each function used here.

Nothing outside this package uses this module.
"""
from __future__ import annotations

import ctypes
import functools
import os
from ctypes import POINTER, c_char_p, c_double, c_int32, c_int64, c_size_t, c_uint32, c_uint64, c_void_p
from pathlib import Path
from typing import Any, Callable, NoReturn

from .errors import LibraryError

SONAME = 'liboptxv.so.2'
TEXT_SIZE = 256  # what a text that the library fills needs, with its zero byte


class Text(ctypes.Structure):
    """Bytes and their number. The bytes are the library's; str() copies them."""

    _fields_ = [('bytes', c_void_p), ('size', c_size_t)]

    def __str__(self) -> str:
        return decoded(ctypes.string_at(self.bytes, self.size)) if self.size else ''


class Place(ctypes.Structure):
    _fields_ = [('file', c_char_p), ('line', c_int64), ('column', c_int64), ('length', c_int64)]


class Option(ctypes.Structure):
    _fields_ = [*((name, c_int32) for name in (
        'kind', 'takes', 'data', 'reference', 'group', 'helpcontext', 'marks', 'defined', 'recent', 'items',
        'helplines', 'runtime', 'default_integer', 'low_integer', 'high_integer')),
        ('default_real', c_double), ('low_real', c_double), ('high_real', c_double),
        ('default_text', Text), ('name', Text), ('help', Text), ('markedtext', Text)]


class Item(ctypes.Structure):
    _fields_ = [('integer', c_int32), ('option', c_int32), ('helpcontext', c_int32), ('text', Text), ('help', Text)]


class Group(ctypes.Structure):
    _fields_ = [('number', c_int32), ('helpcontext', c_int32), ('name', Text), ('help', Text)]


class Synonym(ctypes.Structure):
    _fields_ = [('option', c_int32), ('marks', c_int32), ('name', Text), ('markedtext', Text)]


class Message(ctypes.Structure):
    _fields_ = [*((name, c_int32) for name in ('number', 'kind', 'fault', 'detail', 'option', 'field')),
                ('text', Text), ('about', Text), ('seen', Text), ('place', Place)]


class DotOption(ctypes.Structure):
    _fields_ = [('option', c_int32), ('labels', c_int32), ('value', c_double), ('symbol', Text)]


class Indicator(ctypes.Structure):
    _fields_ = [('equation_labels', c_int32), ('variable_labels', c_int32), ('mark', c_int32),
                ('equation', Text), ('variable', Text)]


# What takes a written text: it is called once, with the text.
Taker = ctypes.CFUNCTYPE(c_int32, c_void_p, c_void_p, c_size_t)

_handle = c_void_p
_bytes = (c_char_p, c_size_t)
_three_names = POINTER(Text)

# The arguments of each function. The result is an int32_t except where RESULTS tells another.
PROTOTYPES: dict[str, tuple[Any, ...]] = {
    'optxv_status_text': (c_int32,),
    'optxv_create': (POINTER(_handle),),
    'optxv_free': (POINTER(_handle),),
    'optxv_read_definition': (_handle, c_char_p),
    'optxv_read_parameters': (_handle, c_char_p),
    'optxv_read_line': (_handle, *_bytes),
    'optxv_read_definition_text': (_handle, c_char_p, *_bytes),
    'optxv_read_parameter_text': (_handle, c_char_p, *_bytes),
    'optxv_read_arguments': (_handle, POINTER(ctypes.c_int), POINTER(c_char_p), c_uint32),
    'optxv_read_environment': (_handle, c_char_p),
    'optxv_switch': (_handle, c_int32, c_int32),
    'optxv_find': (_handle, *_bytes, POINTER(c_int32)),
    'optxv_get_integer_nr': (_handle, c_int32, c_int32, POINTER(c_int32)),
    'optxv_get_real_nr': (_handle, c_int32, c_int32, POINTER(c_double)),
    'optxv_get_text_nr': (_handle, c_int32, c_int32, POINTER(Text)),
    'optxv_set_integer_nr': (_handle, c_int32, c_int32, c_int32),
    'optxv_set_real_nr': (_handle, c_int32, c_int32, c_double),
    'optxv_set_text_nr': (_handle, c_int32, c_int32, *_bytes),
    'optxv_show_value': (_handle, c_int32, c_int32, c_char_p),
    'optxv_parse_value': (_handle, c_int32, c_int32, *_bytes),
    'optxv_reset': (_handle, c_int32),
    'optxv_reset_all': (_handle,),
    'optxv_take_snapshot': (_handle, POINTER(c_void_p)),
    'optxv_restore_snapshot': (_handle, c_void_p),
    'optxv_free_snapshot': (POINTER(c_void_p),),
    'optxv_option_count': (_handle,),
    'optxv_option_info': (_handle, c_int32, POINTER(Option)),
    'optxv_item_info': (_handle, c_int32, c_int32, POINTER(Item)),
    'optxv_help_line': (_handle, c_int32, c_int32, POINTER(Text)),
    'optxv_group_count': (_handle,),
    'optxv_group_info': (_handle, c_int32, POINTER(Group)),
    'optxv_synonym_count': (_handle,),
    'optxv_synonym_info': (_handle, c_int32, POINTER(Synonym)),
    'optxv_table_mark': (_handle,),
    'optxv_nearest_names': (_handle, *_bytes, _three_names),
    'optxv_message_count': (_handle,),
    'optxv_error_count': (_handle, POINTER(c_int32), POINTER(c_int32)),
    'optxv_add_message': (_handle, *_bytes),
    'optxv_clear_messages': (_handle,),
    'optxv_show_help': (_handle, c_char_p),
    'optxv_message_info': (_handle, c_int32, POINTER(Message)),
    'optxv_show_message': (_handle, c_int32, c_char_p),
    'optxv_message_nearest': (_handle, c_int32, _three_names),
    'optxv_dot_option_count': (_handle, POINTER(c_int32)),
    'optxv_dot_option_info': (_handle, c_int32, POINTER(DotOption)),
    'optxv_dot_option_label': (_handle, c_int32, c_int32, POINTER(Text)),
    'optxv_indicator_count': (_handle, POINTER(c_int32)),
    'optxv_indicator_info': (_handle, c_int32, POINTER(Indicator)),
    'optxv_indicator_label': (_handle, c_int32, c_int32, c_int32, POINTER(Text)),
    'optxv_value_place': (_handle, c_int32, POINTER(Place), POINTER(c_int32), POINTER(c_int32)),
    'optxv_list_count': (_handle, c_int32),
    'optxv_list_item': (_handle, c_int32, c_int32, POINTER(Text)),
    'optxv_fault_name': (c_int32,),
    'optxv_write_parameters': (_handle, c_char_p),
    'optxv_write_parameter_text': (_handle, Taker, c_void_p),
}
RESULTS: dict[str, Any] = {
    'optxv_status_text': c_char_p,
    'optxv_free': None,
    'optxv_free_snapshot': None,
    'optxv_table_mark': c_uint64,
    'optxv_error_count': None,
    'optxv_clear_messages': None,
    'optxv_fault_name': c_char_p,
}


def encoded(text: str | bytes) -> bytes:
    """A text as the library takes it; bytes that came from there as lone surrogates are themselves again."""
    return text.encode('utf-8', 'surrogateescape') if isinstance(text, str) else text


def decoded(text: bytes) -> str:
    """A text of the library; what is not UTF-8 becomes lone surrogates, which encoded() takes back."""
    return text.decode('utf-8', 'surrogateescape')


def terminated(text: bytes) -> bytes:
    """The same, for a function that reads up to a zero byte. A ValueError if there is one within."""
    if b'\0' in text:
        raise ValueError('a name may not have a zero byte in it')
    return text


def place() -> str:
    """The library to load: the one beside this file, which is how a wheel has it; else the file that OPTXV_LIBRARY
    names; else what the system's loader finds."""
    beside = Path(__file__).with_name('liboptxv.so')
    return str(beside) if beside.exists() else os.environ.get('OPTXV_LIBRARY') or SONAME


def absent(path: str, name: str) -> Callable[..., NoReturn]:
    """What stands for a function that the library does not have: a LibraryError when it is called."""
    def call(*_: object) -> NoReturn:
        raise LibraryError(f'the library {path} has no function {name}: it is older than this package')
    return call


@functools.cache
def load() -> ctypes.CDLL:
    """The library, with all prototypes. A LibraryError if it is not there."""
    path = place()
    try:
        library = ctypes.CDLL(path)
    except OSError as failure:
        raise LibraryError(f'cannot load the library optxv: {failure}; OPTXV_LIBRARY may name its file') from None
    for name, arguments in PROTOTYPES.items():
        try:
            function = getattr(library, name)
        except AttributeError:
            setattr(library, name, absent(path, name))
        else:
            function.argtypes = arguments
            function.restype = RESULTS.get(name, c_int32)
    return library
