"""Says how the development-host SDK answers each of its functions: what the generator tells of those that nobody
writes by hand (rules.tsv), joined with what the compiled rooms define. Only their object files tell one from the
other: generated answers are weak symbols, those written by hand are not.

usage: answers.py RULES NM ARCHIVE ANSWERS FAMILIES TABLE

ANSWERS has a line per function: name, family, "by hand", "by rule" or "unavailable", and why. FAMILIES counts them by
family, with a heading and the sums. TABLE is the table of docs/simulated-switch.md.
"""
import collections
import re
import subprocess
import sys

KINDS = 'by hand', 'by rule', 'unavailable'


def written_by_hand(nm, archive):
    """Source files by the functions that they define."""
    symbols = subprocess.check_output([nm, '-A', archive], universal_newlines=True)
    return dict((name, source) for source, name in re.findall(r': ?([^:\s]+)\.o: ?\S+ T sim_(\w+)$', symbols, re.M))


def answers(rules, by_hand):
    for line in rules:
        name, family, operation, _, why = line.rstrip('\n').split('\t')[:5]
        told = why.startswith('kept')
        if name in by_hand:
            yield name, family, 'by hand', by_hand[name] + (', ' + why if told else '')
        else:
            by_rule = operation not in ('-', 'unavailable')
            kept = 'kept, without effect on packets: ' if by_rule and operation != 'initialise' and not told else ''
            yield name, family, 'by rule' if by_rule else 'unavailable', kept + why


def write(path, rows):
    with open(path, 'w') as file:
        file.writelines('\t'.join(row) + '\n' for row in rows)


def table(rows):
    """A line of Markdown for each family."""
    families = collections.OrderedDict()
    for _, family, kind, why in rows:
        reasons = families.setdefault(family, collections.OrderedDict()).setdefault(kind, [])
        if why not in reasons:
            reasons.append(why)
    yield '| Family | done | kept by rule | unavailable, since |'
    yield '|---|---|---|---|'
    for family, kinds in families.items():
        done, kept = ('yes' if kind in kinds else '' for kind in KINDS[:2])
        yield '| %s | %s | %s | %s |' % (family, done, kept, '; '.join(kinds.get('unavailable', ())))


def main(rules, nm, archive, answers_path, families_path, table_path):
    with open(rules) as file:
        rows = list(answers(file, written_by_hand(nm, archive)))
    counts = collections.OrderedDict()
    for _, family, kind, _ in rows:
        counts.setdefault(family, collections.Counter())[kind] += 1
    counts['all'] = sum(counts.values(), collections.Counter())
    write(families_path, [('family',) + KINDS] + [
        (family,) + tuple(str(numbers[kind]) for kind in KINDS) for family, numbers in counts.items()])
    write(answers_path, rows)
    write(table_path, [(line,) for line in table(rows)])


if __name__ == '__main__':
    main(*sys.argv[1:])
