"""Where Ctrl-C goes."""
import ctypes
import os
import unittest

from recording import library


class CtrlC(unittest.TestCase):
    def test_return_points_and_blocking(self):
        # The checks call the SDK, which they find if its names are global.
        ctypes.CDLL(library._name, mode=ctypes.RTLD_GLOBAL)
        self.assertEqual(ctypes.CDLL(os.environ['QUOREL_CTRL_C']).ctrl_c_failures(), 0)


if __name__ == '__main__':
    unittest.main()
