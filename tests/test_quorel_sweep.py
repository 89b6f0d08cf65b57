"""Every function of the SDK that takes pointers, called from Python alone, and what C then received."""
import sys
import unittest

import QuorelApiNew as q
import binding
import recording
from _quorel import _forget_registrations
from quorel import OUT, StatusError, array, callback, checked, parameters

POINTERS = ('pointer', 'constant', 'text', 'constant_text', 'callback', 'any_pointer', 'by_value', 'mac_address')
# It does not exist: the call is recorded and refused, and the switch stays as it is.
UNIT = 99


class Call(object):
    """A function and the parameters that the package and the report know of it."""

    def __init__(self, reported):
        self.name, self.reported = reported.name, reported.arguments
        self.function = getattr(q, reported.name)
        self.parameters = parameters(self.function)
        self.appends = len(reported.arguments) < len(reported.parameters)
        # What the binding appends is recorded too, at its place.
        self.recorded = [number for number, parameter in enumerate(reported.parameters)
                         if parameter.kind != 'appended']

    def takes_pointers(self):
        return any(row[2] in POINTERS for row in self.parameters)

    def gets_address(self):
        """Whether a MAC address among the arguments is an output."""
        return self.name.endswith('_get') and not self.appends

    def received(self, arguments):
        """What C got for each argument; None if it was not called."""
        with recording.recording() as calls:
            try:
                checked(self.function, *arguments)
            except StatusError:
                pass
        got = [data for name, data in calls() if name == self.name]
        return [got[0][number] for number in self.recorded] if got else None


# Functions without a unit are not refused, and write as much as other arguments make them.
ROOM = 65536
# No number among the arguments is greater.
ENOUGH = 128


def memory(kind, bound, filled, has_unit=True):
    """An array of that type; of numbers each byte another, where it is looked at."""
    made = array(kind, max(bound, ENOUGH if has_unit else ROOM // len(bytes(array(kind, 1)))))
    if filled and isinstance(made[0], (int, long)):
        made[:] = ''.join(chr(number % 251 + 1) for number in range(len(bytes(made))))
    return made


# For what is no pointer.
VALUES = binding.Objects()


def value(reported, seed):
    return UNIT if seed == 0 and reported.kind == 'int32' else VALUES.value(reported, seed)


def with_memory(call):
    """[(argument, the bytes that C should get, or None where the report cannot tell)]"""
    has_unit = call.parameters[0][0] == 'unit'
    for seed, (reported, (_, kind, way, bound)) in enumerate(zip(call.reported, call.parameters)):
        if way in ('pointer', 'constant'):
            made = memory(kind, bound, bound, has_unit)
            # Arrays of a known size are recorded whole.
            yield made, bytes(made[:bound]) if bound else binding.packed('pointer', int(made.this))
        elif way in ('text', 'constant_text'):
            made = array('char', 'text'.ljust(ROOM, '\0'))
            yield made, None
        elif way == 'by_value':
            made = callback(call.function, max) if reported.descriptor.endswith('_cb_t') else memory(kind, 1, True)
            yield made, None if reported.descriptor.endswith('_cb_t') else bytes(made[:1])
        elif way == 'callback':
            made = callback(call.function, max)
            yield made, binding.packed('pointer', int(made.this))
        elif way == 'any_pointer':
            made = array('uint8', ROOM)
            yield made, binding.packed('pointer', int(made.this))
        else:
            given = value(reported, seed)
            yield given, None if way == 'in_and_out' else binding.packed(reported.kind, given)


def with_outputs(call):
    """The arguments with OUT wherever C may write."""
    for (given, _), (_, _, way, bound) in zip(with_memory(call), call.parameters):
        if way == 'mac_address' and call.gets_address() or way == 'pointer' and call.parameters[0][0] == 'unit':
            yield OUT
        elif way == 'pointer':
            yield OUT[1024]
        elif way == 'text':
            yield OUT[ROOM]
        else:
            yield given


class Sweep(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        functions, _ = binding.read()
        calls = [Call(function) for function in functions if function.origin == 'sdk']
        cls.calls = [call for call in calls if call.takes_pointers()]

    def setUp(self):
        # A function that returns nothing may have registered what it was given.
        self.addCleanup(_forget_registrations, UNIT)

    def test_all_can_be_called_with_memory_and_callbacks(self):
        unreached = []
        for call in self.calls:
            given = list(with_memory(call))
            try:
                received = call.received([argument for argument, _ in given])
            except (TypeError, ValueError) as error:
                unreached.append('%s: %s' % (call.name, error))
                continue
            if received is None:
                unreached.append(call.name + ': not called')
                continue
            for (argument, expected), data in zip(given, received):
                if expected is not None:
                    self.assertEqual(data[:len(expected)], expected[:len(data)], (call.name, argument))
        sys.stdout.write('%d of %d functions that take pointers cannot be called\n' % (len(unreached), len(self.calls)))
        self.assertEqual(unreached, [])
        self.assertGreater(len(self.calls), 300)

    def test_all_take_outputs(self):
        unreached = []
        for call in self.calls:
            arguments = list(with_outputs(call))
            if not any(isinstance(argument, type(OUT)) for argument in arguments):
                continue
            try:
                received = call.received(arguments)
            except (TypeError, ValueError) as error:
                unreached.append('%s: %s' % (call.name, error))
                continue
            direct = any(row[2] == 'mac_address' for row in call.parameters)
            for argument, (_, _, way, bound), data in zip(arguments, call.parameters, received or []):
                if way == 'pointer' and not bound:
                    self.assertNotEqual(data, binding.packed('pointer', None), call.name)
            if received is None and not direct:
                unreached.append(call.name + ': not called')
        self.assertEqual(unreached, [])


if __name__ == '__main__':
    unittest.main()
