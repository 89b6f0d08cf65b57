"""Constructs of C, one each, as headers have them: what test_constructs binds and tries, and benchmarks/constructs.py.

A probe is its group, its name, what a header declares, what a C file defines, and a Python text that fails if it is
bound wrongly; `m` is the module. Where the last is 'refused: ...', the report has to say that of the probe's name.
"""
import ctypes
import os

BEGIN = '''#ifndef PROBES_H
#define PROBES_H
#include <stdarg.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/types.h>
#ifdef __cplusplus
extern "C" {
#endif
'''
END = '''
#ifdef __cplusplus
}
#endif
#endif
'''


def raises(kinds, function, *arguments):
    try:
        function(*arguments)
    except kinds:
        return
    raise AssertionError('%r%r raised nothing' % (function, arguments))


def memory(type, pointer, count):
    return (type * count).from_address(int(pointer))


def setter(type):
    def fill(pointer, values):
        memory(type, pointer, len(values))[:] = values
    return fill


def names(module, refused):
    """What the checks use; refused(name) is whether a report says that of it."""
    return {'m': __import__(module), 'refused': refused, 'raises': raises, 'inf': float('inf'),
            'set_ints': setter(ctypes.c_int), 'set_shorts': setter(ctypes.c_short), 'set_bytes': setter(ctypes.c_char),
            'get_ints': lambda pointer, count: list(memory(ctypes.c_int, pointer, count))}


def report(directory):
    """The report of a module that tools/bind made: name -> row."""
    with open(os.path.join(directory, 'report.tsv')) as file:
        return dict((row[1], row) for row in (line.rstrip('\n').split('\t') for line in file))


def write(directory, probes):
    """Writes their header, their C file and an interface that binds them."""
    appended = ['p_out_two = "a out"'] + ['%s = "out"' % name for group, name, _, _, _ in probes
                                          if group == 'outputs' and name not in ('p_out_two', 'p_out_array')]
    os.mkdir(os.path.join(directory, 'interface'))
    for name, text in (('probes.h', BEGIN + '\n'.join(header for _, _, header, _, _ in probes) + END),
                       ('probes.c', '#include "probes.h"\n' + '\n'.join(body for _, _, _, body, _ in probes)),
                       ('interface/binding.toml', 'families = ["probes"]\nstrict = false\n'),
                       ('interface/probes.toml', 'headers = ["probes.h"]\nfunctions = ["*"]\nrecords = ["*"]\n'
                                                 'constants = ["*"]\nvariables = ["*"]\ntexts = ["*"]\n'
                                                 'variadic = ["p_variadic"]\n[appended]\n' +
                                                 '\n'.join(appended) + '\n')):
        with open(os.path.join(directory, name), 'w') as file:
            file.write(text)


def round_trip(type, good, bad, declared=''):
    """A type as parameter, result, member and output: values that cross, and those that raise."""
    return (declared + 'typedef struct { int before; %(type)s value; int after; } NAME_t;\n'
            '%(type)s NAME(%(type)s value);\nvoid NAME_out(const NAME_t *from, %(type)s *to);' % {'type': type},
            '%(type)s NAME(%(type)s value) { return value; }\n'
            'void NAME_out(const NAME_t *from, %(type)s *to) { *to = from->value; }' % {'type': type},
            'r = m.NAME_t()\nr.before = r.after = -1\n'
            'for v in %r:\n    assert m.NAME(v) == v, m.NAME(v)\n    r.value = v\n    assert r.value == v, r.value\n'
            'for v in %r:\n    raises((OverflowError, TypeError), m.NAME, v)\n'
            '    raises((OverflowError, TypeError), setattr, r, "value", v)\n'
            'assert (r.before, r.after) == (-1, -1)' % (good, bad))


def integer(type, bits, signed, declared=''):
    low, high = (-2 ** (bits - 1), 2 ** (bits - 1) - 1) if signed else (0, 2 ** bits - 1)
    return round_trip(type, [low, 0, 1, high], [low - 1, high + 1, 1.5, 'x', None], declared)


def probes(long_bits):
    found = []

    def add(group, name, header, body='', check=''):
        found.append(tuple(text.replace('NAME', name) for text in (group, name, header, body, check)))

    # Integers.
    for name, type, bits, signed in (
            ('p_schar', 'signed char', 8, True), ('p_uchar', 'unsigned char', 8, False), ('p_short', 'short', 16, True),
            ('p_ushort', 'unsigned short', 16, False), ('p_int', 'int', 32, True), ('p_uint', 'unsigned', 32, False),
            ('p_long', 'long', long_bits, True), ('p_ulong', 'unsigned long', long_bits, False),
            ('p_llong', 'long long', 64, True), ('p_ullong', 'unsigned long long', 64, False),
            ('p_int8', 'int8_t', 8, True), ('p_uint8', 'uint8_t', 8, False), ('p_int16', 'int16_t', 16, True),
            ('p_uint16', 'uint16_t', 16, False), ('p_int32', 'int32_t', 32, True), ('p_uint32', 'uint32_t', 32, False),
            ('p_int64', 'int64_t', 64, True), ('p_uint64', 'uint64_t', 64, False), ('p_size', 'size_t', long_bits, False),
            ('p_ssize', 'ssize_t', long_bits, True), ('p_time', 'time_t', long_bits, True),
            ('p_uintptr', 'uintptr_t', long_bits, False), ('p_intptr', 'intptr_t', long_bits, True),
            ('p_ptrdiff', 'ptrdiff_t', long_bits, True), ('p_uint_fast16', 'uint_fast16_t', long_bits, False),
            ('p_off', 'off_t', long_bits, True), ('p_mode', 'mode_t', 32, False)):
        add('integers', name, *integer(type, bits, signed))
    add('integers', 'p_typedef', *integer('p_typedef_word', 16, False, 'typedef uint16_t p_typedef_half;\n'
                                          'typedef p_typedef_half p_typedef_word;\n'))
    add('integers', 'p_bool', *round_trip('bool', [True, False], [1, 'x', None]))
    add('integers', 'p_two_bools', 'bool NAME(bool a, bool b);', 'bool NAME(bool a, bool b) { return a && !b; }',
        'assert m.NAME(True, False) is True and m.NAME(True, True) is False')
    # Real numbers, characters.
    add('reals', 'p_float', *round_trip('float', [0.0, -1.5, 2.0 ** 100, float('inf')], [1e300, 'x', None]))
    add('reals', 'p_double', *round_trip('double', [0.0, -0.1, 1e300, float('-inf')], [10 ** 400, 'x', None]))
    add('reals', 'p_double_of_int', 'double NAME(double a);', 'double NAME(double a) { return a / 2; }',
        'assert m.NAME(3) == 1.5 and m.NAME(3L) == 1.5')
    header, body, check = round_trip('long double', [0.0, -0.1, 1e300, float('inf')], [10 ** 400, 'x', None])
    add('reals', 'p_long_double', header + '\nlong double NAME_most(void);',
        body + '\nlong double NAME_most(void) { return __LDBL_MAX__; }', check + '\nraises(OverflowError, m.NAME_most)')
    add('reals', 'p_complex', *round_trip('double _Complex', [0j, 1 - 2e300j, 2.5], [10 ** 400, 'x', None]))
    add('reals', 'p_complex_float', *round_trip('float _Complex', [0j, 1 - 0.5j, -3], [1e300j, 1e300, 'x', None]))
    add('text', 'p_char', *round_trip('char', ['a', '\0', '\xff'], ['', 'ab', 1000, None]))
    add('text', 'p_wchar', 'wchar_t NAME(wchar_t a);', 'wchar_t NAME(wchar_t a) { return a; }',
        "refused: no conversion for a value of type 'wchar_t'")
    add('text', 'p_wide_text', 'int NAME(const wchar_t *a);', 'int NAME(const wchar_t *a) { return a == 0; }',
        'assert m.NAME(None) == 1')
    add('text', 'p_text', 'const char *NAME(const char *a);', 'const char *NAME(const char *a) { return a + 1; }',
        'assert m.NAME("abc") == "bc"\nraises(TypeError, m.NAME, 1)')
    add('text', 'p_null_text', 'char *NAME(int a);', 'char *NAME(int a) { return a ? "x" : 0; }',
        'assert (m.NAME(0), m.NAME(1)) == (None, "x")')
    add('text', 'p_text_member', 'typedef struct { char *text; const char *constant; } NAME_t;', '',
        'r = m.NAME_t()\nassert r.text is None\nr.text = "ab"\nr.constant = "c"\nassert (r.text, r.constant) == ("ab", "c")')
    add('text', 'p_char_array', 'typedef struct { char before; char text[4]; char after; } NAME_t;', '',
        'r = m.NAME_t()\nr.before = r.after = "|"\n'
        'for t in "", "ab", "abcd":\n    r.text = t\n    assert r.text == t\n'
        'raises(OverflowError, setattr, r, "text", "abcde")\nraises(TypeError, setattr, r, "text", 1)\n'
        'assert (r.text, r.before, r.after) == ("abcd", "|", "|")')
    add('text', 'p_char_array_typedef', 'typedef char NAME_id[8];\ntypedef struct { NAME_id id; } NAME_t;', '',
        'r = m.NAME_t()\nr.id = "hub"\nassert r.id == "hub"')
    add('text', 'p_unsigned_text', 'int NAME(const unsigned char *a);',
        'int NAME(const unsigned char *a) { return a == 0; }', 'assert m.NAME(None) == 1')
    # Records.
    add('records', 'p_tagged', 'struct NAME { int a; };\nint NAME_of(struct NAME *s);',
        'int NAME_of(struct NAME *s) { return s->a; }', 'r = m.NAME()\nr.a = 5\nassert m.NAME_of(r) == 5')
    add('records', 'p_typedef_first', 'struct NAME_s;\ntypedef struct NAME_s NAME_t;\nstruct NAME_s { int a; NAME_t *next; };\n'
        'int NAME(NAME_t *s);', 'int NAME(NAME_t *s) { return s->next ? s->next->a : -1; }',
        'a, b = m.NAME_s(), m.NAME_s()\nb.a, a.next = 7, b\nassert (m.NAME(a), m.NAME(b), a.next.a) == (7, -1, 7)')
    add('records', 'p_by_value', 'typedef struct { short a, b; } NAME_t;\nNAME_t NAME(NAME_t s);',
        'NAME_t NAME(NAME_t s) { NAME_t t = {s.b, s.a}; return t; }',
        'r = m.NAME_t()\nr.a, r.b = 1, 2\ns = m.NAME(r)\nassert (s.a, s.b, r.a) == (2, 1, 1)\nraises(ValueError, m.NAME, None)')
    add('records', 'p_opaque', 'typedef struct NAME_s NAME_t;\nNAME_t *NAME_open(int a);\nint NAME(NAME_t *h);',
        'struct NAME_s { int a; };\nNAME_t *NAME_open(int a) { static struct NAME_s s; s.a = a; return &s; }\n'
        'int NAME(NAME_t *h) { return h ? h->a : -1; }',
        'h = m.NAME_open(3)\nassert (m.NAME(h), m.NAME(None)) == (3, -1)\nraises(TypeError, m.NAME, m.p_tagged())')
    add('records', 'p_incomplete_tag', 'struct NAME_s;\nstruct NAME_s *NAME_open(void);\nint NAME(struct NAME_s *h);',
        'struct NAME_s { int a; };\nstruct NAME_s *NAME_open(void) { static struct NAME_s s = {4}; return &s; }\n'
        'int NAME(struct NAME_s *h) { return h->a; }', 'assert m.NAME(m.NAME_open()) == 4')
    add('records', 'p_nested_unnamed', 'typedef struct { int a; struct { short x, y; } place; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->place.x * 100 + s->place.y; }',
        'r = m.NAME_t()\nr.place.x, r.place.y = 3, 4\nassert m.NAME(r) == 304 and r.place.y == 4')
    add('records', 'p_nested_tagged', 'struct NAME { struct NAME_in { int a; } in; struct NAME_in *at; };\n'
        'int NAME_of(struct NAME_in *s);', 'int NAME_of(struct NAME_in *s) { return s->a; }',
        'r, i = m.NAME(), m.NAME_in()\ni.a = 6\nsetattr(r, "in", i)\nr.at = i\n'
        'assert getattr(r, "in").a == 6 and m.NAME_of(getattr(r, "in")) == 6 and r.at.a == 6')
    add('records', 'p_nested_deep', 'typedef struct { struct { struct { int z; } b; } a; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a.b.z; }', 'r = m.NAME_t()\nr.a.b.z = 9\nassert m.NAME(r) == 9')
    add('records', 'p_nested_array', 'typedef struct { int a; struct { int x; } rows[3]; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->rows[0].x; }', 'r = m.NAME_t()\nr.rows.x = 8\nassert m.NAME(r) == 8')
    add('records', 'p_nested_pointer', 'typedef struct { struct { int x; } *to; } NAME_t;\nvoid NAME(NAME_t *s);',
        'void NAME(NAME_t *s) { static int x = 12; s->to = (void *)&x; }', 'r = m.NAME_t()\nm.NAME(r)\nassert r.to.x == 12')
    add('records', 'p_anonymous', 'typedef struct { int a; struct { int b, c; }; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a + s->c; }', 'r = m.NAME_t()\nr.a, r.c = 1, 2\nassert m.NAME(r) == 3')
    add('records', 'p_empty_tail', 'typedef struct { int count; unsigned char data[]; } NAME_t;\nNAME_t *NAME(void);',
        'NAME_t *NAME(void) { static unsigned char m[16] = {0}; m[4] = 7; return (NAME_t *)m; }',
        'r = m.NAME()\nassert int(r.data) == int(r.this) + 4\nraises(AttributeError, setattr, r, "data", None)')
    add('records', 'p_zero_array', 'typedef struct { int count; int data[0]; } NAME_t;', '',
        'r = m.NAME_t()\nassert int(r.data) == int(r.this) + 4')
    add('records', 'p_packed', 'typedef struct { char a; int b; } __attribute__((packed)) NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->b; }', 'r = m.NAME_t()\nr.b = -2\nassert m.NAME(r) == -2')
    add('records', 'p_aligned', 'typedef struct { char a; int b __attribute__((aligned(16))); } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->b; }', 'r = m.NAME_t()\nr.b = -3\nassert m.NAME(r) == -3')
    add('records', 'p_const_member', 'typedef struct { const int a; int b; const int c[2]; } NAME_t;\nNAME_t *NAME(void);',
        'NAME_t *NAME(void) { static NAME_t s = {5, 6, {7, 8}}; return &s; }',
        'r = m.NAME()\nassert r.a == 5\nraises(AttributeError, setattr, r, "a", 1)\nr.b = 2\nassert (r.a, r.b) == (5, 2)')
    add('records', 'p_same_as_function', 'struct NAME { int a; };\nint NAME(struct NAME *s);\nint NAME_2(const struct NAME *s);',
        'int NAME(struct NAME *s) { return s->a; }\nint NAME_2(const struct NAME *s) { return s->a + 1; }',
        'r = m.NAME()\nr.a = 3\nassert m.NAME_2(r) == 4')
    add('records', 'p_system_record', 'int NAME(const struct timeval *t);', 'int NAME(const struct timeval *t) { return t == 0; }',
        'assert m.NAME(None) == 1')
    add('records', 'p_system_hidden', 'int NAME(const struct stat *s);', 'int NAME(const struct stat *s) { return s == 0; }',
        'assert m.NAME(None) == 1')
    add('records', 'p_one_bad_member', 'typedef struct { int a; __float128 b; int c; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->c; }',
        'r = m.NAME_t()\nr.c = 3\nassert m.NAME(r) == 3 and not hasattr(r, "b")\nassert refused("NAME_t.b")')
    # Unions.
    add('unions', 'p_union', 'union NAME { int a; unsigned char b[4]; };\nint NAME_of(union NAME *u);',
        'int NAME_of(union NAME *u) { return u->b[0]; }', 'u = m.NAME()\nu.a = 0x01010101\nassert m.NAME_of(u) == 1')
    add('unions', 'p_union_typedef', 'typedef union { double d; uint64_t bits; } NAME_t;', '',
        'u = m.NAME_t()\nu.d = 1.0\nassert u.bits == 0x3ff0000000000000')
    add('unions', 'p_union_unnamed', 'typedef struct { int kind; union { int i; float f; } u; } NAME_t;\nfloat NAME(NAME_t *s);',
        'float NAME(NAME_t *s) { return s->u.f; }', 'r = m.NAME_t()\nr.u.f = 2.5\nassert m.NAME(r) == 2.5')
    add('unions', 'p_union_anonymous', 'typedef struct { int kind; union { int i; float f; }; } NAME_t;\nfloat NAME(NAME_t *s);',
        'float NAME(NAME_t *s) { return s->f; }', 'r = m.NAME_t()\nr.f = 0.5\nassert m.NAME(r) == 0.5')
    add('unions', 'p_union_nested', 'struct NAME { union NAME_u { int a; short b; } u; };\nint NAME_of(union NAME_u *u);',
        'int NAME_of(union NAME_u *u) { return u->b; }', 'r = m.NAME()\nr.u.a = 3\nassert m.NAME_of(r.u) == 3')
    add('unions', 'p_union_value', 'typedef union { int a; char b; } NAME_t;\nNAME_t NAME(NAME_t u);',
        'NAME_t NAME(NAME_t u) { u.a++; return u; }', 'u = m.NAME_t()\nu.a = 3\nassert m.NAME(u).a == 4')
    # Bit-fields.
    add('bit-fields', 'p_bits', 'typedef struct { unsigned a : 3, b : 5; unsigned c : 24; } NAME_t;\nunsigned NAME(NAME_t *s);',
        'unsigned NAME(NAME_t *s) { return s->a * 1000 + s->b; }',
        'r = m.NAME_t()\nr.a, r.b, r.c = 7, 31, 2 ** 24 - 1\nassert m.NAME(r) == 7031\n'
        'raises(OverflowError, setattr, r, "a", 8)\nraises(OverflowError, setattr, r, "a", -1)\n'
        'raises(TypeError, setattr, r, "a", "x")\nr.b = 0\nassert (r.a, r.b, r.c) == (7, 0, 2 ** 24 - 1)')
    add('bit-fields', 'p_bits_signed', 'typedef struct { signed int a : 4; int b : 28; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a; }',
        'r = m.NAME_t()\nfor v in -8, 7, -1:\n    r.a = v\n    assert (r.a, m.NAME(r), r.b) == (v, v, 0)\n'
        'raises(OverflowError, setattr, r, "a", 8)\nraises(OverflowError, setattr, r, "a", -9)')
    add('bit-fields', 'p_bits_wide', 'typedef struct { uint64_t a : 40; uint64_t b : 24; int64_t c : 64; } NAME_t;\nuint64_t NAME(NAME_t *s);',
        'uint64_t NAME(NAME_t *s) { return s->a; }',
        'r = m.NAME_t()\nr.a, r.c = 2 ** 40 - 1, -2 ** 63\nassert m.NAME(r) == 2 ** 40 - 1 and r.b == 0 and r.c == -2 ** 63\n'
        'raises(OverflowError, setattr, r, "a", 2 ** 40)')
    add('bit-fields', 'p_bits_bool', 'typedef struct { bool a : 1; bool b : 1; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a * 10 + s->b; }', 'r = m.NAME_t()\nr.b = True\nassert m.NAME(r) == 1 and r.b == 1')
    add('bit-fields', 'p_bits_enum', 'enum NAME_e { NAME_A, NAME_B, NAME_C };\ntypedef struct { enum NAME_e a : 2; unsigned b : 6; } NAME_t;\n'
        'int NAME(NAME_t *s);', 'int NAME(NAME_t *s) { return s->a; }', 'r = m.NAME_t()\nr.a = m.NAME_C\nassert m.NAME(r) == 2 == r.a')
    add('bit-fields', 'p_bits_unnamed', 'typedef struct { unsigned a : 1; unsigned : 3; unsigned : 0; unsigned b : 2; } NAME_t;\n'
        'unsigned NAME(NAME_t *s);', 'unsigned NAME(NAME_t *s) { return s->b; }', 'r = m.NAME_t()\nr.b = 3\nassert m.NAME(r) == 3')
    add('bit-fields', 'p_bits_const', 'typedef struct { const unsigned a : 4; unsigned b : 4; } NAME_t;\nNAME_t *NAME(void);',
        'NAME_t *NAME(void) { static NAME_t s = {9, 1}; return &s; }',
        'r = m.NAME()\nassert r.a == 9\nraises(AttributeError, setattr, r, "a", 1)')
    # Arrays.
    add('arrays', 'p_array_member', 'typedef struct { int before, a[3], after; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a[0] + s->a[2]; }',
        'r, s = m.NAME_t(), m.NAME_t()\nset_ints(r.a, [1, 2, 3])\ns.a = r.a\nassert m.NAME(s) == 4 and s.after == 0\n'
        'raises(ValueError, setattr, r, "a", None)')
    add('arrays', 'p_array_2d', 'typedef struct { short a[2][3]; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a[1][2]; }',
        'r, s = m.NAME_t(), m.NAME_t()\nset_shorts(r.a, range(6))\ns.a = r.a\nassert m.NAME(s) == 5')
    add('arrays', 'p_array_parameter', 'int NAME(int a[4], const int b[]);', 'int NAME(int a[4], const int b[]) { return a[3] + b[0]; }',
        'r = m.p_array_member_t()\nset_ints(r.a, [5, 6, 7])\nassert m.NAME(r.a, r.a) == 5')
    add('arrays', 'p_array_macro', '#define NAME_N 5\ntypedef struct { unsigned char a[NAME_N + 1]; } NAME_t;\nint NAME(const unsigned char a[NAME_N]);',
        'int NAME(const unsigned char a[NAME_N]) { return a[1]; }', 'r = m.NAME_t()\nset_bytes(r.a, "\\1\\2")\nassert m.NAME(r.a) == 2')
    add('arrays', 'p_array_typedef', 'typedef unsigned char NAME_mac[6];\ntypedef struct { NAME_mac a; } NAME_t;\nint NAME(NAME_mac a);',
        'int NAME(NAME_mac a) { return a[5]; }', 'r = m.NAME_t()\nset_bytes(r.a, "abcdef")\nassert m.NAME(r.a) == ord("f")')
    add('arrays', 'p_array_pointers', 'typedef struct { const char *a[2]; int *b[2]; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->b[1] == 0; }', 'r = m.NAME_t()\nr.b = r.b\nassert m.NAME(r) == 1')
    add('arrays', 'p_array_records', 'typedef struct { struct p_tagged a[2]; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->a[0].a; }', 'r = m.NAME_t()\nr.a.a = 4\nassert m.NAME(r) == 4')
    add('arrays', 'p_pointer_to_array', 'int NAME(int (*a)[3]);', 'int NAME(int (*a)[3]) { return a == 0; }', 'assert m.NAME(None) == 1')
    # Pointers and outputs.
    add('pointers', 'p_void', 'void *NAME(void *a);', 'void *NAME(void *a) { return a; }',
        'r = m.p_tagged()\nassert int(m.NAME(r)) == int(r.this) and m.NAME(None) is None')
    add('pointers', 'p_const_void', 'const void *NAME(const void *a);', 'const void *NAME(const void *a) { return a; }',
        'r = m.p_tagged()\nassert int(m.NAME(r)) == int(r.this)')
    add('pointers', 'p_pointer_member', 'typedef struct { int *a; void *b; const void *c; int **d; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return *s->a + (s->b == s->c); }',
        'a = m.p_array_member_t()\nset_ints(a.a, [8, 0, 0])\nr = m.NAME_t()\nr.a = a.a\nassert m.NAME(r) == 9 and r.b is None')
    for name, type, value, text in (('int', 'int', '-7', '-7'), ('uint64', 'uint64_t', '1ull << 63', str(2 ** 63)),
                                    ('double', 'double', '0.25', '0.25'), ('short', 'short', '-3', '-3'),
                                    ('bool', 'bool', '1', 'True'), ('char', 'char', "'q'", '"q"'),
                                    ('size', 'size_t', '9', '9'), ('enum', 'enum p_bits_enum_e', 'p_bits_enum_B', '1'),
                                    ('text', 'const char *', '"out"', '"out"'), ('text_2', 'char *', '(char *)"o"', '"o"'),
                                    ('float', 'float', '0.5f', '0.5'),
                                    ('complex', 'double _Complex', '2', '2 + 0j')):
        add('outputs', 'p_out_' + name, 'int NAME(int a, %s *out);' % type,
            'int NAME(int a, %s *out) { if (a) *out = %s; return 2; }' % (type, value), 'assert m.NAME(1) == [2, %s], m.NAME(1)' % text)
    add('outputs', 'p_out_handle', 'int NAME(int a, p_opaque_t **out);',
        'int NAME(int a, p_opaque_t **out) { *out = a ? p_opaque_open(a) : 0; return 0; }',
        'status, h = m.NAME(6)\nassert m.p_opaque(h) == 6 and m.NAME(0) == [0, None]')
    add('outputs', 'p_out_void', 'void NAME(void **out);', 'void NAME(void **out) { static int a; *out = &a; }',
        'assert m.NAME() is not None')
    add('outputs', 'p_out_record', 'int NAME(int a, p_by_value_t *out);', 'int NAME(int a, p_by_value_t *out) { out->a = a; return 0; }',
        'assert m.NAME(4)[1].a == 4')
    add('outputs', 'p_out_two', 'int NAME(int *a, double *out);', 'int NAME(int *a, double *out) { *a = 1; *out = 2.5; return 0; }',
        'assert m.NAME() == [0, 1, 2.5]')
    add('outputs', 'p_out_array', 'int NAME(int count, int *values);',
        'int NAME(int count, int *values) { for (int i = 0; i < count; ++i) values[i] = i * i; return 0; }',
        'r = m.p_array_member_t()\nm.NAME(3, r.a)\nassert get_ints(r.a, 3) == [0, 1, 4]')
    add('pointers', 'p_volatile', 'int NAME(volatile int *a);\nvolatile int *NAME_get(void);',
        'int NAME(volatile int *a) { return *a; }\nvolatile int *NAME_get(void) { static volatile int a = 5; return &a; }',
        'assert m.NAME(m.NAME_get()) == 5')
    add('pointers', 'p_restrict', 'int NAME(int *__restrict a, const char *__restrict b);',
        'int NAME(int *__restrict a, const char *__restrict b) { return (a == 0) + b[0]; }', 'assert m.NAME(None, "A") == 66')
    add('pointers', 'p_const_everywhere', 'const int *const NAME(const int *const a);',
        'const int *const NAME(const int *const a) { return a; }', 'assert m.NAME(None) is None')
    # Enumerations.
    add('enumerations', 'p_enum', 'enum NAME { NAME_A = -5, NAME_B, NAME_C = 1 << 20 };\nenum NAME NAME_next(enum NAME e);',
        'enum NAME NAME_next(enum NAME e) { return (enum NAME)(e + 1); }',
        'assert (m.NAME_A, m.NAME_B, m.NAME_C) == (-5, -4, 1 << 20) and m.NAME_next(m.NAME_A) == m.NAME_B')
    add('enumerations', 'p_enum_typedef', 'typedef enum { NAME_X = 3 } NAME_e;\nint NAME(NAME_e e);', 'int NAME(NAME_e e) { return e; }',
        'assert m.NAME(m.NAME_X) == 3')
    add('enumerations', 'p_enum_wide', 'enum NAME_e { NAME_BIG = 0x100000000ll };\nenum NAME_e NAME(enum NAME_e e);',
        'enum NAME_e NAME(enum NAME_e e) { return e; }', 'assert m.NAME(m.NAME_BIG) == m.NAME_BIG == 2 ** 32')
    add('enumerations', 'p_enum_nested', 'typedef struct { enum { NAME_ON = 4, NAME_OFF } state; } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->state; }', 'r = m.NAME_t()\nr.state = m.NAME_OFF\nassert m.NAME(r) == 5')
    add('enumerations', 'p_enum_nested_tag', 'struct NAME { enum NAME_e { NAME_P = 2, NAME_Q } state; };\nint NAME_of(struct NAME *s);',
        'int NAME_of(struct NAME *s) { return s->state; }', 'r = m.NAME()\nr.state = m.NAME_Q\nassert m.NAME_of(r) == 3')
    add('enumerations', 'p_enum_packed', 'typedef enum { NAME_L = 200 } __attribute__((packed)) NAME_e;\nint NAME(NAME_e e);',
        'int NAME(NAME_e e) { return e; }', 'assert m.NAME(m.NAME_L) == 200')
    add('enumerations', 'p_enum_anonymous', 'enum { NAME_M = 11 };', '', 'assert m.NAME_M == 11')
    # Macros.
    for name, value, text in (('int', '42', '42'), ('negative', '(-7)', '-7'), ('hex', '0xffffffffu', str(2 ** 32 - 1 - 2 ** 32)),
                              ('wide', '0x123456789abcull', str(0x123456789abc)), ('lowest', '(-9223372036854775807ll - 1)', str(-2 ** 63)),
                              ('highest', '0xffffffffffffffffull', str(2 ** 64 - 1)), ('real', '2.5', '2.5'), ('text', '"a" "b"', '"ab"'),
                              ('of_macro', '(p_macro_int * 2)', '84'), ('char', "'x'", '120'), ('size', 'sizeof(int)', '4'),
                              ('bit', '(1u << 5)', '32'), ('bool', '(3 > 2)', '1'), ('of_enum', 'p_enum_anonymous_M', '11'),
                              ('float', '0.5f', '0.5')):
        add('macros', 'p_macro_' + name, '#define NAME ' + value, '', 'assert m.NAME == %s, m.NAME' % text)
    add('macros', 'p_macro_none', '#define NAME do { } while (0)\n#define NAME_2(x) x\n#define NAME_3\n#define NAME_4 struct p_tagged', '',
        'assert not [name for name in dir(m) if name.startswith("p_macro_none")]')
    # Variables.
    for name, type, value, text, new in (
            ('int', 'int', '3', '3', '4'), ('ulong', 'unsigned long', '9', '9', '10'), ('double', 'double', '0.5', '0.5', '1.5'),
            ('short', 'short', '-1', '-1', '5'), ('int64', 'int64_t', '1ll << 40', str(2 ** 40), '-1'), ('bool', 'bool', '1', 'True', 'False'),
            ('char', 'char', "'c'", '"c"', '"d"'), ('complex', 'float _Complex', '1', '1+0j', '2j')):
        add('variables', 'p_var_' + name, 'extern %s NAME;' % type, '%s NAME = %s;' % (type, value),
            'assert m.cvar.NAME == %s\nm.cvar.NAME = %s\nassert m.cvar.NAME == %s' % (text, new, new))
    add('variables', 'p_var_const', 'extern const int NAME;', 'const int NAME = 6;',
        'assert m.cvar.NAME == 6\nraises(AttributeError, setattr, m.cvar, "NAME", 1)')
    add('variables', 'p_var_text', 'extern const char *NAME;', 'const char *NAME = "one";',
        'assert m.cvar.NAME == "one"\nm.cvar.NAME = "two"\nassert m.cvar.NAME == "two"')
    add('variables', 'p_var_const_text', 'extern const char *const NAME;', 'const char *const NAME = "fixed";',
        'assert m.cvar.NAME == "fixed"\nraises(AttributeError, setattr, m.cvar, "NAME", "x")')
    add('variables', 'p_var_array', 'extern int NAME[3];', 'int NAME[3] = {1, 2, 3};', 'assert get_ints(m.cvar.NAME, 3) == [1, 2, 3]')
    add('variables', 'p_var_const_array', 'extern const int NAME[2];', 'const int NAME[2] = {4, 5};',
        'assert get_ints(m.cvar.NAME, 2) == [4, 5]\nraises(AttributeError, setattr, m.cvar, "NAME", None)')
    add('variables', 'p_var_unbounded', 'extern const char NAME[];', 'const char NAME[] = "v1";', 'assert m.cvar.NAME is not None')
    add('variables', 'p_var_record', 'extern struct p_tagged NAME;', 'struct p_tagged NAME = {7};',
        'assert m.cvar.NAME.a == 7\nr = m.p_tagged()\nr.a = 8\nm.cvar.NAME = r\nassert m.cvar.NAME.a == 8')
    add('variables', 'p_var_const_record', 'extern const struct p_tagged NAME;', 'const struct p_tagged NAME = {9};',
        'assert m.cvar.NAME.a == 9\nraises(AttributeError, setattr, m.cvar, "NAME", m.p_tagged())')
    add('variables', 'p_var_pointer', 'extern struct p_tagged *NAME;', 'struct p_tagged *NAME;',
        'assert m.cvar.NAME is None\nr = m.p_tagged()\nm.cvar.NAME = r\nassert int(m.cvar.NAME.this) == int(r.this)\nm.cvar.NAME = None')
    add('variables', 'p_var_const_pointer', 'extern struct p_tagged *const NAME;', 'struct p_tagged *const NAME = &p_var_record;',
        'assert m.cvar.NAME is not None\nraises(AttributeError, setattr, m.cvar, "NAME", None)')
    add('variables', 'p_var_void', 'extern void *NAME;', 'void *NAME;', 'assert m.cvar.NAME is None')
    add('variables', 'p_var_volatile', 'extern volatile int NAME;', 'volatile int NAME = 2;', 'm.cvar.NAME = 3\nassert m.cvar.NAME == 3')
    add('variables', 'p_var_callback', 'extern int (*NAME)(int);', 'int (*NAME)(int);', 'assert m.cvar.NAME is None\nm.cvar.NAME = None')
    # Names that C++ has as words.
    add('names', 'p_name_member', 'typedef struct { int class, new; struct { int x; } private; unsigned try : 3; char this; } NAME_t;\n'
        'int NAME(NAME_t *template);', 'int NAME(NAME_t *template) { return template->class * 1000 + template->private.x * 10 + template->try; }',
        'r = m.NAME_t()\nsetattr(r, "class", 2)\nr.private.x = 3\nsetattr(r, "try", 4)\nr.new = 9\n'
        'assert (m.NAME(r), r.new) == (2034, 9) and refused("NAME_t.this")')
    add('names', 'p_name_function', 'int delete(int new);\nstatic inline int throw(int catch) { return catch + 1; }\n'
        'int NAME(int (*using)(int), int explicit);',
        'int delete(int new) { return new / 2; }\nint NAME(int (*using)(int), int explicit) { return using ? using(explicit) : explicit; }',
        'assert (m.delete(8), m.throw(8), m.NAME(None, 8)) == (4, 9, 8)')
    add('names', 'p_name_tag', 'struct class { int a; };\nint class(const struct class *mutable);\nstruct operator { union friend { int b; } in; };\n'
        'typedef struct { int c; } typename;\nint NAME(struct class *a, struct operator *b, typename *c);',
        'int class(const struct class *mutable) { return mutable->a; }\n'
        'int NAME(struct class *a, struct operator *b, typename *c) { return a->a * 100 + b->in.b * 10 + c->c; }',
        'a, b, c = getattr(m, "class")(), m.operator(), m.typename()\na.a, getattr(b, "in").b, c.c = 3, 4, 5\n'
        'assert m.NAME(a, b, c) == 345 and m.friend().b == 0')
    add('names', 'p_name_typedef', 'typedef short public;\ntypedef public (*virtual)(public);\nvirtual NAME(public a, public *b);',
        'virtual NAME(public a, public *b) { return 0; }', 'assert m.NAME(1, None) is None\nraises(OverflowError, m.NAME, 1 << 20, None)')
    add('names', 'p_name_enum', 'enum namespace { export, protected = 5 };\nenum namespace NAME(enum namespace e);',
        'enum namespace NAME(enum namespace e) { return e + protected; }', 'assert m.NAME(m.export) == m.protected == 5')
    add('names', 'p_name_variable', 'extern int decltype;\nextern struct p_tagged typeid;\nint NAME(void);',
        'int decltype = 3;\nstruct p_tagged typeid = {4};\nint NAME(void) { return decltype; }',
        'm.cvar.decltype = 6\nassert (m.NAME(), m.cvar.typeid.a) == (6, 4)')
    add('names', 'p_name_operator', 'typedef struct { int and, xor; } NAME_t;\nint NAME(NAME_t *not, int or);',
        'int NAME(NAME_t *not, int or) { return not->xor + or; }', 'r = m.NAME_t()\nr.xor = 3\nassert m.NAME(r, 4) == 7')
    # Functions and callbacks.
    add('functions', 'p_nothing', 'void NAME(void);', 'void NAME(void) {}', 'assert m.NAME() is None\nraises(TypeError, m.NAME, 1)')
    add('functions', 'p_inline', 'static inline int NAME(int a) { return a * 2; }', '', 'assert m.NAME(4) == 8')
    add('functions', 'p_unnamed_parameters', 'int NAME(int, const char *);', 'int NAME(int a, const char *b) { return a + b[0]; }',
        'assert m.NAME(1, "A") == 66')
    add('functions', 'p_keyword_parameters', 'int NAME(int from, int in, int print);',
        'int NAME(int from, int in, int print) { return from + in + print; }', 'assert m.NAME(1, 2, 3) == 6')
    add('functions', 'p_twice_declared', 'int NAME(int a);\nint NAME(int);', 'int NAME(int a) { return a; }', 'assert m.NAME(2) == 2')
    add('functions', 'p_renamed', 'int NAME(int a) __asm__("NAME_as_it_is_linked");', 'int NAME(int a) { return a + 9; }', 'assert m.NAME(1) == 10')
    add('functions', 'p_many', 'int NAME(%s);' % ', '.join('int a%d' % i for i in range(14)),
        'int NAME(%s) { return a0 + a13; }' % ', '.join('int a%d' % i for i in range(14)), 'assert m.NAME(*range(14)) == 13')
    add('functions', 'p_deprecated', 'int NAME(int a) __attribute__((deprecated));', 'int NAME(int a) { return a; }', 'assert m.NAME(2) == 2')
    add('functions', 'p_variadic', 'int NAME(const char *format, ...);', 'int NAME(const char *format, ...) { return format[0]; }',
        'assert m.NAME("a") == ord("a")')
    add('functions', 'p_va_list', 'int NAME(const char *format, va_list more);', 'int NAME(const char *format, va_list more) { return format[0]; }',
        "refused: no conversion for a value of type 'va_list'")
    add('functions', 'p_missing', 'int NAME(int a);', '', "refused: no library exports 'NAME'")
    add('functions', 'p_missing_variable', 'extern int NAME;', '', "refused: no library exports 'NAME'")
    add('callbacks', 'p_callback', 'typedef int (*NAME_f)(int a, void *data);\nint NAME(NAME_f call, void *data);',
        'int NAME(NAME_f call, void *data) { return call ? call(1, data) : -1; }', 'assert m.NAME(None, None) == -1')
    add('callbacks', 'p_callback_result', 'typedef int (*NAME_f)(int a);\nNAME_f NAME(void);\nint NAME_call(NAME_f call, int a);',
        'static int twice(int a) { return 2 * a; }\nNAME_f NAME(void) { return twice; }\nint NAME_call(NAME_f call, int a) { return call(a); }',
        'assert m.NAME_call(m.NAME(), 21) == 42')
    add('callbacks', 'p_callback_member', 'typedef struct { int (*call)(int a); } NAME_t;\nint NAME(NAME_t *s);',
        'int NAME(NAME_t *s) { return s->call ? s->call(4) : -1; }',
        'r = m.NAME_t()\nassert m.NAME(r) == -1\nr.call = m.p_callback_result()\nassert m.NAME(r) == 8 and r.call is not None')
    add('callbacks', 'p_callback_inline', 'int NAME(int (*call)(const char *, struct p_tagged *), int a);',
        'int NAME(int (*call)(const char *, struct p_tagged *), int a) { return call ? 0 : a; }', 'assert m.NAME(None, 6) == 6')
    add('callbacks', 'p_callback_pointer', 'int NAME(int (**call)(int), int a);', 'int NAME(int (**call)(int), int a) { return call ? 0 : a; }',
        'assert m.NAME(None, 6) == 6')
    add('callbacks', 'p_callback_function_type', 'typedef int NAME_f(int a);\nint NAME(NAME_f *call, int a);',
        'int NAME(NAME_f *call, int a) { return call ? call(a) : a; }', 'assert m.NAME(None, 6) == 6 and m.NAME(m.p_callback_result(), 2) == 4')
    return found
