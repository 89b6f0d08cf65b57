"""MDIO access objects of other interpreters in the process. Run apart: what fails here is a deadlock."""
import subprocess
import sys
import threading
import unittest

SCRIPT = """
import ctypes, os, threading
import _QuorelApiNew as m
probe = ctypes.PyDLL(os.path.join(os.environ['QUOREL_PROBE'], 'sub_interpreter.so'))
library = ctypes.CDLL(os.path.join(os.path.dirname(os.path.abspath(m.__file__)), 'libQuorelApiPythonMdioAccess.so.0'))
library.ext_phy_error.restype = ctypes.c_char_p
OWN, OTHER = 5, 6

def read(phy):
    data = ctypes.c_uint()
    status = library.ext_phy_read(0, phy, 3, 1, 2, ctypes.byref(data))
    return status or data.value

def print_both():
    print read(OWN), read(OTHER)

class Access(object):
    def read(self, *args):
        return 7
    def __del__(self):
        print 'ended'

m.QuorelApiSetExt84328MdioAccessWrapper(0, OWN, Access())
install = '''
import sys
import _QuorelApiNew as m
class Access(object):
    def read(self, *args):
        return sys.number
    def __del__(self):
        sys.ended.append(type(self))
sys.number, sys.ended = 8, []
m.QuorelApiSetExt84328MdioAccessWrapper(0, 6, Access())
'''
assert probe.run_in_sub_interpreter(install) == 0
print_both()
assert probe.run_in_sub_interpreter('m.QuorelApiSetExt84328MdioAccessWrapper(0, 6, Access())\\n'
                                    'assert len(sys.ended) == 1; sys.number = 9') == 0
thread = threading.Thread(target=print_both)
thread.start()
thread.join()
# Each interpreter replaces an object of the other.
assert probe.run_in_sub_interpreter('m.QuorelApiSetExt84328MdioAccessWrapper(0, 5, Access())') == 0
m.QuorelApiSetExt84328MdioAccessWrapper(0, OWN, Access())
assert probe.run_in_sub_interpreter('assert len(sys.ended) == 2') == 0
print_both()
probe.end_sub_interpreter()
print read(OWN), read(OTHER) < 0, library.ext_phy_error()
m.QuorelApiSetExt84328MdioAccessWrapper(0, OTHER, Access())
print_both()
"""


class Interpreters(unittest.TestCase):
    def test_objects_of_each_are_called_and_ended(self):
        process = subprocess.Popen([sys.executable, '-c', SCRIPT], stdout=subprocess.PIPE)
        deadlock = threading.Timer(60, process.kill)
        deadlock.start()
        output = process.communicate()[0]
        deadlock.cancel()
        self.assertEqual(output.split('\n')[:-1],
                         ['7 8', '7 9', 'ended', '7 9', '7 True the Python interpreter has ended', '7 7'])
        self.assertEqual(process.returncode, 0)


if __name__ == '__main__':
    unittest.main()
