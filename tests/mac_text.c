/*
 * Compares the MAC text of the module with the C library's scan and print functions, on many generated texts.
 * Loaded with ctypes: a loop in Python would take minutes.
 */
#include <Python.h>

#include <stdint.h>
#include <stdio.h>
#include <string.h>

enum { LONGEST = 512, FIELDS = 6 };

static uint32_t seed;

static uint32_t random_below(uint32_t bound)
{
    seed ^= seed << 13;
    seed ^= seed >> 17;
    seed ^= seed << 5;
    return seed % bound;
}

/* Mostly what a field may hold, sometimes what is just beside it. */
static char *add_field(char *text)
{
    static const char *const spaces[] = {"", "", "", "", "", "", " ", "\t", "\n ", "\v\f", "\r "};
    static const char *const signs[] = {"", "", "", "", "", "", "+", "-", "0x", "0X", "-0", "+0x"};
    static const char digits[] = "0123456789abcdefABCDEF";
    static const char others[] = "gGxX+-: .\t\0\x1c\x85\xa0\xff/@`";
    const char *sign = signs[random_below(sizeof signs / sizeof *signs)];
    size_t width = strlen(sign);
    text = stpcpy(text, spaces[random_below(sizeof spaces / sizeof *spaces)]);
    text = stpcpy(text, sign);
    uint32_t count = width >= 2 ? 0 : 1 + random_below(2 - (uint32_t)width);
    if (random_below(40) == 0) {
        count = random_below(4);
    }
    for (; count > 0; --count) {
        *text++ = random_below(100) ? digits[random_below(sizeof digits - 1)]
                                    : others[random_below(sizeof others - 1)];
    }
    return text;
}

static size_t make_text(char *text)
{
    char *end = text;
    uint32_t fields = random_below(16) ? FIELDS : random_below(FIELDS + 3);
    for (uint32_t i = 0; i < fields; ++i) {
        if (i > 0) {
            *end++ = random_below(100) ? ':' : "-:. \0"[random_below(5)];
        }
        end = add_field(end);
    }
    if (random_below(8) == 0) {
        for (uint32_t count = random_below(random_below(50) ? 8 : LONGEST / 2); count > 0; --count) {
            *end++ = (char)random_below(256);
        }
    }
    *end = '\0';
    return (size_t)(end - text);
}

/* What the C library makes of the text: the printed address, or an empty string if it refuses the text. */
static void expect(const char *text, char printed[18])
{
    unsigned int f[FIELDS];
    int count = sscanf(text, "%2x:%2x:%2x:%2x:%2x:%2x", &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]);
    *printed = '\0';
    if (count == FIELDS) {
        snprintf(printed, 18, "%02x:%02x:%02x:%02x:%02x:%02x", f[0] & 255, f[1] & 255, f[2] & 255, f[3] & 255,
                 f[4] & 255, f[5] & 255);
    }
}

/* Sets the text and reads it back; an empty string if it is refused with ValueError. Returns 0, or -1 with an
 * exception for anything else. */
static int pass(PyObject *set, PyObject *get, PyObject *record, PyObject *text, char printed[18])
{
    PyObject *result = PyObject_CallFunctionObjArgs(set, record, text, NULL);
    *printed = '\0';
    if (!result) {
        if (!PyErr_ExceptionMatches(PyExc_ValueError)) {
            return -1;
        }
        PyErr_Clear();
        return 0;
    }
    Py_DECREF(result);
    result = PyObject_CallFunctionObjArgs(get, record, NULL);
    if (!result) {
        return -1;
    }
    snprintf(printed, 18, "%s", PyString_AsString(result));
    Py_DECREF(result);
    return 0;
}

/* Whether the two agree on one text; -1 with an exception. */
static int agree(PyObject *set, PyObject *get, PyObject *record, PyObject *text, int *accepted)
{
    char expected[18], printed[18];
    expect(PyString_AS_STRING(text), expected);
    if (pass(set, get, record, text, printed) != 0) {
        return -1;
    }
    *accepted += *expected != '\0';
    return strcmp(printed, expected) == 0;
}

/*
 * Returns (how many texts were accepted, None), or as the second the first text on which the two differ.
 * Takes the accessors of a MAC member and a record that has it.
 */
PyObject *compare_mac_text(PyObject *set, PyObject *get, PyObject *record, int texts);

PyObject *compare_mac_text(PyObject *set, PyObject *get, PyObject *record, int texts)
{
    char text[LONGEST];
    int accepted = 0, agreed = 1;
    seed = 2463534242u;
    while (texts-- > 0) {
        size_t length = make_text(text);
        PyObject *object = PyString_FromStringAndSize(text, (Py_ssize_t)length);
        if (!object) {
            return NULL;
        }
        agreed = agree(set, get, record, object, &accepted);
        if (agreed == 0) {
            return Py_BuildValue("(iN)", accepted, object);
        }
        Py_DECREF(object);
        if (agreed < 0) {
            return NULL;
        }
    }
    return Py_BuildValue("(iO)", accepted, Py_None);
}
