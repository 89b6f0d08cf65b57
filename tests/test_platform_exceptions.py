"""The platform's functions throw: Python sees an exception that says what was thrown, and the process goes on."""
import os
import subprocess
import sys
import unittest

SCRIPT = """
import ctypes, sys
ctypes.CDLL(sys.argv[1], ctypes.RTLD_GLOBAL)  # what it defines is found before what the platform's libraries do
import _QuorelApiNew as m
for name, args in (('captureTrace', (True,)), ('getTrace', ()), ('traceToLogIs', (False,)), ('setSandAgentName', ('a',)),
                   ('getNumDevices', ()), ('sdc', (0, 'ps')), ('findChipMemory', (0, 1, 2))):
    try:
        getattr(m, name)(*args)
        print name, 'returned'
    except Exception as error:
        print name, repr(error)
print m.bcm_attach_check(0)
"""


class Exceptions(unittest.TestCase):
    def test_what_is_thrown_is_raised(self):
        throwing = os.path.join(os.environ['QUOREL_PROBE'], 'throwing_platform.so')
        process = subprocess.Popen([sys.executable, '-c', SCRIPT, throwing], stdout=subprocess.PIPE)
        output = process.communicate()[0]
        self.assertEqual(output.splitlines(), [
            "captureTrace ValueError('more than can be captured',)",
            "getTrace OSError(5, 'nothing was captured')",
            "traceToLogIs RuntimeError('the platform failed for a reason that it does not name',)",
            "setSandAgentName MemoryError()",
            "getNumDevices RuntimeError('no list of devices',)",
            "sdc RuntimeError('no shell',)",
            "findChipMemory ValueError('no such memory',)",
            '0'])
        self.assertEqual(process.returncode, 0)


if __name__ == '__main__':
    unittest.main()
