"""Every function: what the SDK receives, and what each argument refuses."""
import ctypes
import unittest

import QuorelApiNew as q
import binding
import headers
import recording


class SweepCalls(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.functions, _ = binding.read()

    def setUp(self):
        self.objects = binding.Objects()
        self.addCleanup(self.objects.release)

    def arguments(self, function):
        # A unit that does not exist: the call is recorded and refused, and the switch stays as it is.
        return [self.objects.value(argument, seed + 40) for seed, argument in enumerate(function.arguments)]

    def test_the_sdk_receives_every_argument(self):
        checked = 0
        for function in self.functions:
            if function.origin != 'sdk':
                continue
            values = self.arguments(function)
            with recording.recording() as calls:
                function(*values)
            name, received = calls()[0]
            self.assertEqual(name, function.name)
            self.assertEqual(len(received), len(function.parameters), function.doc)
            given = iter(values)
            for parameter, data in zip(function.parameters, received):
                if parameter.kind == 'appended':
                    continue
                if parameter.kind == 'in_and_out':
                    next(given)
                    continue
                value = next(given)
                expected = binding.packed(parameter.kind, value)
                if parameter.kind == 'low_bits':
                    expected = expected[:len(data)]
                if parameter.kind == 'value':
                    # By value, or by reference: what was pointed to.
                    expected = ctypes.string_at(int(value), len(data))
                elif parameter.kind == 'pointer' and parameter.text.endswith(']'):
                    # Arrays of a known size are recorded whole.
                    expected = ctypes.string_at(int(value), len(data))
                if expected is not None:
                    self.assertEqual(data, expected, '%s: %s' % (function.doc, parameter.text))
                    checked += 1
        self.assertGreater(checked, 300)

    def test_every_argument_refuses_wrong_values(self):
        for function in self.functions:
            good = self.arguments(function)
            for position, argument in enumerate(function.arguments):
                text = "in method '%s', argument %d of type '%s'" % (function.name, position + 1, argument.text)
                for value, exception, other_text in binding.wrong_values(argument):
                    # Later arguments are wrong too: the first failure is the one that is told.
                    values = good[:position] + [value] + [object()] * (len(good) - position - 1)
                    with recording.recording() as calls:
                        error = binding.error_of(function, *values)
                    self.assertEqual(error, (exception, other_text or text), (function.doc, value))
                    self.assertEqual(calls(), [], function.doc)
                if argument.kind == 'value':
                    values = good[:position] + [None] + good[position + 1:]
                    self.assertEqual(binding.error_of(function, *values),
                                     (ValueError, 'invalid null reference ' + text))

    def test_every_function_takes_its_exact_number_of_arguments(self):
        for function in self.functions:
            wanted = len(function.arguments)
            for count in (wanted - 1, wanted + 1):
                if count < 0:
                    continue
                error = binding.error_of(function, *[None] * count)
                self.assertEqual(error, (TypeError, '%s expected %d arguments, got %d' % (
                    function.name, wanted, count)), function.doc)

    def test_docstrings_say_what_the_headers_do(self):
        declared = headers.Headers().functions
        functions = [function for function in self.functions if function.origin == 'sdk']
        self.assertGreater(len(functions), 3000)
        for function in functions:
            result = declared[function.name].result
            names = [name or 'arg%d' % (position + 1)
                     for position, name in enumerate(declared[function.name].names)]
            names = ['INOUT' if parameter.kind == 'in_and_out' else name
                     for name, parameter in zip(names, function.parameters) if parameter.kind != 'appended']
            self.assertEqual(getattr(q, function.name).__doc__, '%s(%s)%s' % (
                function.name, ', '.join(names), result and ' -> ' + result))
            self.assertEqual(len(names), len(function.arguments))
        for doc in 'getHwMacTable(unit) -> PyObject *', 'l2_traverse_cb(unit, info, user_data) -> int':
            self.assertEqual(getattr(q, doc[:doc.index('(')]).__doc__, doc)


if __name__ == '__main__':
    unittest.main()
