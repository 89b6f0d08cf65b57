"""Words for what the headers say: how their texts are divided, and what arguments of a kind are.

It knows no SDK, and loads nothing: whatever makes a reference from a reference.tsv uses it.
"""
from __future__ import absolute_import

import re

# How arguments of a kind are given; of all others the type says it.
KINDS = {
    'string': 'text',
    'nullable_string': 'text, or None',
    'mac_address': "text, such as '02:00:5e:10:00:01'",
    'ip_text': 'text',
    'port_list': 'a list of ports',
    'any_pointer': 'any pointer object, or None',
    'object': 'any object',
    'bytes': 'a str or buffer',
    'callable': 'a Python function, or None',
    'low_bits': 'any int, of which the low bits count',
    'in_and_out': 'a number, or a pointer to one; what becomes of it joins the result',
    'appended': 'no argument: it joins the result',
}

ANSWERS = {
    'by hand': 'The simulated switch does this',
    'by rule': 'The simulated switch answers by rule',
    'unavailable': 'The simulated switch answers that it is not available',
}

_ITEM = r'(\d+\.|[a-z]\.|[-*])\s+'


def paragraphs(text):
    """What a text is made of: for each paragraph a list of [indent of the first line, of the others, text]. Such are
    plain text, items of a list, and lines that are to stay as they are, which have no others (None).
    """
    for paragraph in text.split('\n\n') if text else []:
        items = []
        for line in paragraph.split('\n'):
            said = line.lstrip()
            indent = len(line) - len(said)
            item = re.match(_ITEM, said)
            if item:
                items.append([indent, indent + item.end(), said])
            elif items and items[-1][1] == indent:
                items[-1][2] += ' ' + said
            else:
                items.append([indent, None if indent else 0, said])
        yield items


def pointed(type_name):
    """What a pointer type points to."""
    return re.sub(r'\s*(const)?\s*\*$', '', type_name).replace(' const', '')


def argument(known, kind, type_name, makers, with_package=True):
    """What an argument may be, and what its type says.

    known: a Reference. with_package: whether the package quorel is there, with OUT and memory of all types.
    """
    told = [KINDS[kind]] if kind in KINDS else []
    if kind in ('pointer', 'value') and type_name:
        ways = ['%s()' % maker for maker in makers.split()]
        if with_package and kind == 'pointer' and ' const' not in type_name:
            ways.insert(0 if not makers or makers.endswith('p') else len(ways), 'OUT')
        if with_package and not makers and kind == 'pointer':
            ways.append("array('%s', n)" % pointed(type_name))
        told.append(' or '.join(ways))
    if with_package and kind == 'callback':
        told.append("callback('%s', function)" % type_name)
    entry = known.find(type_name.rstrip(' *&').split(' ')[0]) if type_name else None
    if entry and entry.kind == 'type' and kind != 'callback':
        told.append(' '.join((entry.beside or entry.above).split()))
    elif entry and entry.kind == 'enumeration':
        told.append('see %s' % entry.name)
    return '; '.join(text for text in told if text)
