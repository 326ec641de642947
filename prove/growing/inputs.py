"""Texts whose time must not grow faster than n log n: functions that give lines of a definition and of parameters."""


def table(count, group=1):
    return ['limits group 1 1 Limits'] + [f'option_{i:06} integer {i} 5 0 100 1 {group} The option with the number {i}'
                                          for i in range(count)]


def unknown_names(n):
    """Names that no option has, near to some, over a table four times as long."""
    return table(4 * n), [f'optoin_{i:06} 7' for i in range(n)]


def missing_files(n):
    return table(10) + ['read immediate ReadFile 1 1 Reads a file'], [f'read nowhere/file{i}.opt' for i in range(n)]


def groups(n):
    return ([f'group{i} group {i} 1 The group with the number {i}' for i in range(1, n + 1)] +
            [f'option_{i} integer {i} 5 0 100 1 {i} An option' for i in range(1, n + 1)]), ['option_1 7']


def faulty_lines(n):
    faults = ['option_{0:06} 700', 'option_{0:06} word', 'option_{0:06}', '!', 'option_{0:06} 7 8', '{0}']
    return table(1000), [faults[i % len(faults)].format(i % 1000) for i in range(n)]


def good_lines(n):
    return table(n), [f'option_{i:06} 7' for i in range(n)]


def settings_twice(n):
    return table(10), [f'option_{i % 10:06} 7' for i in range(n)]


def runtime_lists(n):
    return table(10), [f'--list{i} one' for i in range(n)]


def long_list(n):
    return table(10) + ['words strlist 1 1 1 Words'], [f'words word{i}' for i in range(n)]


def faulty_records(n):
    faults = ['option_{0} integer x 5 0 100 1 1 Text', 'option_{0} integr 1 5 0 100 1 1 Text',
              'option_{0} integer 1 500 0 100 1 1 Text', 'other synonym nothing{0}', 'option_1 boolean 1 0 1 1 Text']
    return [faults[i % len(faults)].format(i) for i in range(n)], ['option_1 7']


def items(n):
    return ['method enumstr 1 item0 1 1 Method'] + [f' item{i} {i} The item with the number {i}' for i in range(n)], [
        'method itm5']


def members(n):
    return (table(n) + ['all macro 1 1 All of them'] + [f' option_{i:06}' for i in range(n)] +
            ['some multilist 1 1 1 Some of them'] + [f' option_{i:06}' for i in range(n)]), ['all 7']


def synonyms(n):
    return (table(n) + [f'other_{i} synonym option_{i:06}' for i in range(n)] + ['old deprecated'] +
            [f' other_{i} Say option_{i:06}' for i in range(0, n, 2)]), [f'other_{i} 7' for i in range(n)]


def dot_options(n):
    return table(10) + ['.scale double 1 1 0 100 1 1 Scale'], [f"x{i}.scale('a','b') = 2" for i in range(n)]


def long_help(n):
    return table(1) + [f' A line of help with the number {i}' for i in range(n)], ['option_000000 7']


def long_lines(n):
    """Lines that lose most of their bytes."""
    return table(10), [f'option_{i % 10:06} 7' + ' and more' * 500 for i in range(n // 10)]


def letters(i):
    """A word of three letters for each number below 15,625; without an h, so that none is like that of Help."""
    return ''.join('abcdefgijklmnopqrstuvwxyz'[i // power % 25] for power in (625, 25, 1))


def words(i):
    """A name whose words a lookup by their first letters tells apart."""
    return f'{letters(i // 15625)}_{letters(i % 15625)}'


def two_runs(n):
    """Names in two rising runs, each of which lies among the other."""
    half = n // 2
    return table(0) + [f'option_{i % half:06}x{i // half} integer 0 5 0 100 1 1 An option' for i in range(2 * half)], [
        'option_000000x0 7']


def by_rule(rule, n):
    """A table that is made and used under a rule of lookup; the words are longer than what counts of them."""
    names = [words(i).replace('_', 'ing_') + 'ing' for i in range(n)]
    keys = [words(i) if rule == 'Path' else words(i).replace('_', ' ') + 'ing' for i in range(n)]
    return ([f'{rule} lookup'] + [f'{name} integer 0 5 0 100 1 1 An option' for name in names],
            [f'{key} = 7' for key in keys])


def path_names(n):
    return by_rule('Path', n)


def minos_names(n):
    return by_rule('Minos', n)


INPUTS = (unknown_names, missing_files, groups, faulty_lines, faulty_records, good_lines, settings_twice,
          runtime_lists, long_list, items, members, synonyms, dot_options, long_help, long_lines, path_names,
          minos_names, two_runs)
