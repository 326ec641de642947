"""What a user writes: files, texts, arguments, variables; the messages, the table and what is written."""
import argparse
import os
import sys

import optxv
import pytest
from conftest import SOURCE
from optxv import Choice, Kind, Place, Road, Said, Switch, Takes


def test_a_message_is_data(options, tmp_path):
    path = tmp_path / 'ü.opt'
    path.write_text('threads 2\nmethod primel\ntreads 5\n', encoding='utf-8')
    refused, allowed, unknown = [message for message in options.read(path)
                                 if message.kind not in (Said.FILE_ENTER, Said.FILE_LEAVE)]
    assert (refused.kind, refused.fault, refused.option, refused.seen, refused.detail, refused.nearest) == (
        Said.VALUE_ERROR, 'unknown-value', 'method', 'primel', False, ('primal',))
    assert refused.place == Place(str(path), 2, 8, 6) and str(refused.place) == f'{path}:2:8'
    assert str(refused) == '*** Value Error line 2: Unknown value for option "method" saw "primel"'
    assert refused.text in str(refused) and not refused.text.startswith('*')
    assert allowed.detail
    assert (unknown.fault, unknown.about, unknown.option, unknown.nearest) == (
        'unknown-option', 'treads', None, ('threads', 'read'))
    assert options['threads'] == 2 and options.errors == 3
    options.add_message('from the program')
    assert (options.messages[-1].fault, options.messages[-1].text) == ('own', 'from the program')
    options.clear_messages()
    assert (options.messages, options.errors, options.warnings) == ([], 0, 0)


def test_reading_gives_its_own_messages_alone(options):
    options.read_text('a 1')
    assert [message.seen for message in options.read_text(b'method p\xff', 'given') if message.seen] == ['p\udcff']
    with pytest.raises(FileNotFoundError):
        options.read('no such file')
    assert [message.fault for message in options.messages[-2:]] == ['cannot-open', 'system']


def test_line_mode_is_a_switch(options):
    assert options.switch(Switch.LINE_MODE, False) is True
    assert options.read_text('threads 3 presolve no') == []
    assert options.to_dict() == {'threads': 3, 'presolve': False}
    assert options.switch(Switch.LINE_MODE, True) is False


def test_arguments_are_taken_and_the_rest_is_left(options, monkeypatch):
    words = ['model.lp', '--time-limit=5', 'threads=2', '--scale_range', '1', '10', '--dive_first', '--tread=3', '-v',
             '--log_file', 'a b\udcff', '--', '--method=dual']
    assert options.read_arguments(iter(words)) == ['model.lp', '-v', '--method=dual']
    assert options.to_dict() == {'time_limit': 5.0, 'threads': 2, 'scale_range': (1.0, 10.0), 'dive_first': True,
                                 'log_file': 'a b\udcff'}
    [message] = [message for message in options.messages if message.fault == 'unknown-option']
    assert (message.place, message.nearest) == (Place('argument 8', 1, 3, 5), ('read', 'threads'))
    assert options.origin('threads').place == Place('argument 3', 1, 9, 1)
    options.clear_messages()
    assert options.read_arguments(['--tread=3'], keep_unknown=True) == ['--tread=3'] and options.messages == []
    monkeypatch.setattr(sys, 'argv', ['program', '--threads=7', 'x'])
    assert (options.read_arguments(), options['threads']) == (['x'], 7)
    with pytest.raises(ValueError, match='zero byte'):
        options.read_arguments(['a\0b'])


def test_the_environment(options, monkeypatch):
    for name, value in (('SOLVER_TIME_LIMIT', '5'), ('SOLVER_THREADS', '99'), ('solver_presolve', '0')):
        monkeypatch.setenv(name, value)
    assert [message.option for message in options.read_environment('SOLVER_') if not message.detail] == ['threads']
    assert options.to_dict() == {'time_limit': 5.0}
    assert options.origin('time_limit').place.file == 'variable SOLVER_TIME_LIMIT'
    with pytest.raises(ValueError):
        options.read_environment('')


def test_the_table(options):
    method = options.describe('method')
    assert (method.kind, method.takes, method.default, method.low, method.reference, method.group) == (
        Kind.ENUMERATED_TEXT, Takes.ONE, 'auto', None, 303, 3)
    assert method.choices[1] == Choice('primal', 'Primal simplex', 34)
    level = options.describe('print_level')
    assert [choice.value for choice in level.choices] == [0, 1, 2, 9]
    limit = options.describe('reslim')
    assert (limit.name, limit.low, limit.high, limit.is_set, len(limit.long_help)) == ('time_limit', 0.0, 1e299, False, 2)
    assert options.describe('scale_range').default == (1.0, 1.0)
    assert options.describe('all_cuts').members == ('cover_cuts', 'gomory_cuts')
    assert options.describe('all_cuts').has_value is False
    assert options.describe('basis_file').obsolete and options.describe('basis_file').marked_text.startswith('Bases')
    assert [option.number for option in options.options] == list(range(1, len(options.options) + 1))
    assert options.describe(3) == options.options[2]
    assert [(group.number, group.name) for group in options.groups][:2] == [(1, 'limits'), (2, 'numerics')]
    assert [(synonym.name, synonym.option, synonym.deprecated) for synonym in options.synonyms] == [
        ('iterlim', 'iteration_limit', False), ('reslim', 'time_limit', True)]
    assert options.nearest('mehtod') == ('method',)


def test_symbols_and_origins(options):
    options.read_text("x.priority('jan', *) = 3\nindic balance(i,'oslo')$open(i) = yes\nall_cuts yes\n", 'model.opt')
    [entry] = options.dot_options
    assert (entry.symbol, entry.attribute, entry.labels, entry.value) == ('x', '.priority', ('jan', '*'), 3.0)
    [tie] = options.indicators
    assert (tie.equation, tie.equation_labels, tie.variable, tie.variable_labels, tie.mark) == (
        'balance', ('i', "'oslo'"), 'open', ('i',), True)
    origin = options.origin('cover_cuts')
    assert (origin.road, origin.through, origin.place.line) == (Road.MACRO, 'all_cuts', 3)
    options['threads'] = 2
    assert options.origin('threads') == optxv.Origin(Road.CALL, None, None)
    assert options.origin('method') is None


def test_what_is_written_comes_back(options, tmp_path):
    options.update(threads=2, log_file='ä b', scale_range=(0.5, 2))
    options.write(tmp_path / 'out.opt')
    assert options.to_text() == (tmp_path / 'out.opt').read_text(encoding='utf-8')
    with optxv.Options(SOURCE / 'examples/solver.def') as other:
        assert other.read_text(options.to_text()) == [] and other.to_dict() == options.to_dict()
    with pytest.raises(FileNotFoundError):
        options.write(tmp_path / 'no/out.opt')


def test_values_as_text(options):
    options.parse_value('threads', '1e1')
    assert (options['threads'], options.show_value('threads'), options.show_value('scale_range', 2)) == (10, '10', '1')
    options.parse_value('read_path', 'a')
    options.parse_value('read_path', 'b')
    assert options['read_path'] == ['a', 'b']
    with pytest.raises(optxv.RefusedValueError):
        options.parse_value('threads', 'many')
    assert 'time_limit' in ''.join(map(str, options.show_help('time_limit')))


def parsed(options, *words, **how):
    parser = argparse.ArgumentParser(exit_on_error=False)
    parser.add_argument('model', nargs='?')
    options.add_arguments(parser, **how)
    return vars(parser.parse_args(words)), parser


def test_the_bridge_sets_what_was_given_and_no_more(options):
    found, _ = parsed(options, 'a.lp', '--time-limit', '5', '--threads', '--no-presolve', '--method', 'DUAL',
                      '--scale_range', '1', '10', '--dive-first', '--read-path', 'a', '--read-path', 'b', '--all-cuts',
                      'yes', '--print-level=2')
    assert found.pop('model') == 'a.lp'
    assert found.pop('all_cuts') == 'yes'
    assert found == {'time_limit': 5.0, 'threads': 1, 'presolve': False, 'method': 'dual', 'scale_range': (1.0, 10.0),
                     'dive_first': True, 'read_path': ['a', 'b'], 'print_level': 2}
    assert options.to_dict() == {**found, 'cover_cuts': True, 'gomory_cuts': True}


@pytest.mark.parametrize('words, said', [
    (['--threads', '99'], 'argument --threads: option "threads" does not take 99: allowed is 1 to 64'),
    (['--threads', 'many'], "invalid int value: 'many'"),
    (['--method', 'primel'], 'did you mean primal?'),
])
def test_the_bridge_reports_as_argparse_does(options, words, said):
    with pytest.raises(argparse.ArgumentError) as caught:
        parsed(options, *words)
    assert said in str(caught.value)
    assert options.to_dict() == {}


def test_the_help_of_the_bridge(options):
    found, parser = parsed(options, '--solver-threads', '3', prefix='solver-')
    assert (found['solver_threads'], options['threads']) == (3, 3)
    page = ' '.join(parser.format_help().split())
    for part in ('--solver-method {auto,primal,dual,barrier}', 'Method for the linear relaxation (default: auto)',
                 '--solver-time-limit REAL', '(default: 3600)', 'numerics:', '--no-solver-presolve',
                 'Simplify the model first (default: yes)'):
        assert part in page
    assert 'basis' not in page and 'whole' not in page
    with optxv.Options.from_text('rate integer 1 5 0 9 1 1 In % of 100%\n') as other:
        assert 'In % of 100% (default: 5)' in parsed(other)[1].format_help()


def test_the_library_comes_from_the_variable(options):
    assert options._handle.library._name == os.environ['OPTXV_LIBRARY']
