"""Runs the tests of one file; under a debug interpreter, also looks for leaked references.

usage: python2.7 run.py MODULE

A debug interpreter counts all references. Each test is then repeated until two runs in a row leave the count as
it was; one whose count still grows after many runs leaks.
"""
import gc
import importlib
import itertools
import re
import sys
import unittest

MOST_RUNS = 12


def each_test(suite):
    for item in suite:
        if isinstance(item, unittest.TestSuite):
            for test in each_test(item):
                yield test
        else:
            yield item


def references_after(test):
    """How many references there are when the test has run."""
    test.run(unittest.TestResult())
    # Patterns that hold names are new in each run, until there are too many.
    re.purge()
    gc.collect()
    return sys.gettotalrefcount()


def is_flat(test):
    # What the measurement itself holds is the same after each run.
    before, flat_runs, left = references_after(test), 0, 0
    for _ in range(MOST_RUNS):
        now = references_after(test)
        left, before = now - before, now
        flat_runs = flat_runs + 1 if left == 0 else 0
        if flat_runs == 2:
            return True
    sys.stderr.write('%s leaves %d references behind\n' % (test.id(), left))
    return False


def leaking(tests):
    """Those whose count grows. What a class makes for its tests is made once for all their runs."""
    found = []
    for test_class, members in itertools.groupby(tests, type):
        test_class.setUpClass()
        try:
            found.extend(test for test in members if not is_flat(test))
        finally:
            test_class.tearDownClass()
    return found


def main():
    module = importlib.import_module(sys.argv[1])
    suite = unittest.defaultTestLoader.loadTestsFromModule(module)
    tests = list(each_test(suite))
    if not unittest.TextTestRunner().run(unittest.TestSuite(tests)).wasSuccessful():
        return 1
    # Tests that leave the module to other processes can lose none of its references here.
    if hasattr(sys, 'gettotalrefcount') and '_QuorelApiNew' in sys.modules:
        growing = leaking(tests)
        print('%d of %d tests leave the reference count flat' % (len(tests) - len(growing), len(tests)))
        return 1 if growing else 0
    return 0


if __name__ == '__main__':
    sys.exit(main())
