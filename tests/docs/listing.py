"""What is set in options, as lines of text: what the runner of the documents and the test of the examples share."""
from optxv import Kind, Takes


def values(options):
    """Lines `name = value`: options in the order of the table, dot options, indicators."""
    return [line for option in options.options for line in _option(options, option)] + [
        f'{entry.symbol}{entry.attribute}{_labels(entry.labels)} = {entry.value:g}' for entry in options.dot_options] + [
        f'{tie.equation}{_labels(tie.equation_labels)}${tie.variable}{_labels(tie.variable_labels)} = {tie.mark:d}'
        for tie in options.indicators]


def _option(options, option):
    if option.kind is Kind.LIST:
        items = options.get_value(option.number)
        return [f'{option.name}[{position}] = {item}' for position, item in enumerate(items, 1)]
    if not option.is_set:
        return []
    count = 2 if option.takes is Takes.TWO else 1
    shown = [options.show_value(option.number, which) for which in range(1, count + 1)]
    return [f'{option.name} = {" ".join(shown)}']


def _labels(labels):
    return f'({",".join(labels)})' if labels else ''
