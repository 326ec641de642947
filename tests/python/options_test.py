"""Values of options as a mapping: types, what is refused and how, snapshots, the end."""
import copy
import math
import pickle

import optxv
import pytest
from conftest import SOURCE
from optxv import (ClosedError, DefinitionError, MissingFileError, OptxvError, RefusedValueError, SnapshotError,
                   UnknownOptionError, WrongTypeError)


@pytest.mark.parametrize('name, default, value', [
    ('time_limit', 3600.0, 12.5),
    ('iteration_limit', 2**31 - 1, 5),
    ('threads', 1, 64),
    ('presolve', True, False),
    ('dive_first', True, True),
    ('method', 'auto', 'dual'),
    ('print_level', 1, 9),
    ('log_file', 'solver run.log', 'nächt "1"\udcff\x01 .log'),
    ('scale_range', (1.0, 1.0), (0.5, 2.0)),
    ('read_path', [], ['/a b', 'ü', '', '/a b']),
    ('RESLIM', 3600.0, 1.0),  # a synonym, deprecated; case does not count
])
def test_values_have_the_type_of_their_option(options, name, default, value):
    assert (options[name], type(options[name])) == (default, type(default))
    assert not options.is_set(name)
    options[name] = value
    assert (options[name], type(options[name])) == (value, type(default))
    assert options.is_set(name)
    del options[name]
    assert (options[name], options.is_set(name)) == (default, False)
    number = options.number(name)
    options.set_value(number, value)
    assert options.get_value(number) == value


@pytest.mark.parametrize('name, value, error, words', [
    ('threads', 65, RefusedValueError, 'option "threads" does not take 65: allowed is 1 to 64'),
    ('threads', 2**32 + 1, RefusedValueError, 'allowed is 1 to 64'),  # 1 in 32 bits
    ('threads', 2.0, WrongTypeError, 'option "threads" takes an int, not 2.0'),
    ('threads', '2', WrongTypeError, "takes an int, not '2'"),
    ('time_limit', -1, RefusedValueError, 'allowed is 0 to 1e+299'),
    ('time_limit', '900', WrongTypeError, 'takes a float'),
    ('time_limit', 10**400, RefusedValueError, '...: allowed is'),
    ('time_limit', None, WrongTypeError, 'takes a float, not None'),
    ('presolve', 2, RefusedValueError, 'allowed is True or False'),
    ('presolve', 'yes', WrongTypeError, 'takes a bool'),
    ('method', 'primel', RefusedValueError, 'auto, primal, dual, barrier; did you mean primal?'),
    ('method', b'dual', WrongTypeError, "takes a str, not b'dual'"),
    ('print_level', 3, RefusedValueError, 'allowed is 0, 1, 2, 9'),
    ('log_file', 'x' * 255, RefusedValueError, 'a text of at most 254 bytes'),
    ('log_file', 'ü' * 128, RefusedValueError, 'a text of at most 254 bytes'),
    ('scale_range', 2.0, WrongTypeError, 'a tuple of two, each a float or None'),
    ('scale_range', (0.5, 1e9), RefusedValueError, 'does not take 1000000000.0'),
    ('scale_range', (0.5, 'x'), WrongTypeError, "not 'x'"),
    ('read_path', 'one', WrongTypeError, "a list of str, not 'one'"),
    ('read_path', ['a', 'x' * 255], RefusedValueError, '254 bytes'),
    ('read_path', ['a', 1], WrongTypeError, 'a list of str'),
    ('say', 'hello', WrongTypeError, 'no value of its own: it acts when it is read'),
    ('trheads', 2, UnknownOptionError, 'there is no option "trheads"; did you mean threads?'),
    ('thr\0eads', 2, UnknownOptionError, 'there is no option "thr\0eads"'),
    (7, 2, WrongTypeError, 'the name of an option is a str'),
])
def test_a_wrong_value_is_an_exception_and_changes_nothing(options, name, value, error, words):
    options.update({'scale_range': (0.25, 4), 'read_path': ['kept'], 'threads': 3})
    before = options.to_dict()
    with pytest.raises(error) as caught:
        options[name] = value
    assert words in str(caught.value)
    assert isinstance(caught.value, OptxvError)
    assert options.to_dict() == before
    assert pickle.loads(pickle.dumps(caught.value)).args == caught.value.args


def test_numbers_of_other_types_and_parts_of_pairs_are_taken(options):
    options['time_limit'] = 5
    assert (options['time_limit'], type(options['time_limit'])) == (5.0, float)
    options['threads'] = True
    assert (options['threads'], type(options['threads'])) == (1, int)
    options['scale_range'] = (None, 8)
    options['scale_range'] = [0.5, None]
    assert options['scale_range'] == (0.5, 8.0)


def test_macros_and_multilists_hand_on_and_are_no_keys(options):
    options['all_cuts'] = True
    options['tolerances'] = (1e-7, 1e-5)
    assert (options['cover_cuts'], options['feasibility_tol'], options['optimality_tol']) == (True, 1e-7, 1e-5)
    for name, words in (('all_cuts', 'cover_cuts, gomory_cuts'), ('tolerances', 'feasibility_tol, optimality_tol')):
        assert name not in options and name not in list(options)
        with pytest.raises(WrongTypeError, match=words):
            options[name]
        with pytest.raises(WrongTypeError, match=words):
            del options[name]
    options['tolerances'] = (1e-8, 1e-8)  # it still has its members
    with pytest.raises(RefusedValueError, match='"tolerances" does not take'):
        options['tolerances'] = (1e-8, 5)


def test_it_is_a_mapping(options):
    names = list(options)
    assert len(options) == len(names) == len(set(names))
    assert names[:2] == ['time_limit', 'iteration_limit'] and 'help' not in map(str.lower, names)
    assert 'reslim' in options and 'nothing' not in options and 5 not in options
    assert options.get('nothing', 4) == 4
    options.update(threads=2, read_path=['a'])
    assert options.to_dict() == {'threads': 2, 'read_path': ['a']}
    assert options.to_dict(defaults=True) == dict(options) and dict(options)['time_limit'] == 3600
    assert repr(options).endswith('solver.def: 15 options, 2 set>')
    assert options.pop('threads') == 2 and options.to_dict() == {'read_path': ['a']}
    with pytest.raises(WrongTypeError):
        options.popitem()
    options.clear()
    assert options.to_dict() == {}
    for number in (0, len(options.options) + 1, -1):
        with pytest.raises(UnknownOptionError, match='no option number'):
            options.get_value(number)


def test_values_come_back_from_another_options(options):
    options.read_text('threads 8\nscale_range 0.5 2\nread_path "a b"\n--note x\nmethod DUAL\n')
    assert options['--note'] == ['x']
    options['--note'] = []
    del options['--note']
    other = optxv.Options(SOURCE / 'examples/solver.def')
    other.update(options.to_dict())
    assert other.to_dict() == options.to_dict()
    assert other.table_mark == options.table_mark != optxv.Options.from_text('').table_mark


def test_a_trial_leaves_no_trace(options):
    options['threads'] = 2
    with pytest.raises(ZeroDivisionError), options.trial() as same:
        same.update(threads=3, presolve=False, read_path=['x'])
        1 / 0
    assert options.to_dict() == {'threads': 2}
    with options.trial():
        options.close()


def test_snapshots(options):
    snapshot = options.snapshot()
    for threads in (2, 3):
        options['threads'] = threads
        snapshot.restore()
        assert options.to_dict() == {}
    snapshot.close()
    snapshot.close()
    with pytest.raises(SnapshotError):
        snapshot.restore()
    with optxv.Options.from_text('') as other, options.snapshot() as mine:
        mine._handle = other._handle
        with pytest.raises(SnapshotError, match='other options'):
            mine.restore()


@pytest.mark.parametrize('use', [
    lambda o: o['threads'], lambda o: o.get('threads'), lambda o: o.set_value(3, 1), lambda o: 'threads' in o, len, list,
    lambda o: o.read('x'), lambda o: o.messages, lambda o: o.options, lambda o: o.clear(), lambda o: o.snapshot(),
    lambda o: o.to_text(), lambda o: o.to_dict(), lambda o: o.table_mark, lambda o: o.__enter__()])
def test_use_after_close_is_an_exception(options, use):
    options['threads']
    options.close()
    options.close()
    with pytest.raises(ClosedError):
        use(options)
    assert 'closed' in repr(options)


def test_it_cannot_be_pickled_or_copied(options):
    for copied in (pickle.dumps, copy.copy, copy.deepcopy):
        with pytest.raises(TypeError, match='cannot be pickled or copied'):
            copied(options)


def test_definitions(tmp_path):
    with pytest.raises(MissingFileError) as caught:
        optxv.Options(tmp_path / 'none.def')
    assert caught.value.filename == str(tmp_path / 'none.def') and 'none.def' in str(caught.value)
    with pytest.raises(optxv.FileError, match='at most 255 bytes'):
        optxv.Options('x' * 256)
    with pytest.raises(ValueError, match='zero byte'):
        optxv.Options('x\0y')
    text = 'a integer 1 5 0 9 1 1 A\nb color 1 2 3\n'
    with pytest.raises(DefinitionError, match='my.def has errors') as found:
        optxv.Options.from_text(text, 'my.def')
    assert found.value.messages[0].fault == 'unknown-type'
    with optxv.Options.from_text(text + text + 'again immediate Repeat 3 1 Text\n', strict=False) as options:
        assert dict(options) == {'a': 5} and options.errors > 0  # the first of two alike
        assert options.messages[-1].option is None  # the record failed before its option was in the table


def test_reals_are_not_rounded(options):
    for value in (math.pi, 5e-324, 1 / 3):
        options['time_limit'] = value
        assert options['time_limit'] == value
