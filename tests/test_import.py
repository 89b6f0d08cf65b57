"""What the import of the extension module leaves in the process."""
import os
import subprocess
import sys
import unittest


class Import(unittest.TestCase):
    def test_the_interpreter_lock_is_made(self):
        script = ('import sys; sys.path.insert(0, %r); import threads_probe; print threads_probe.has_lock()\n'
                  'import _QuorelApiNew; print threads_probe.has_lock()' % os.environ['QUOREL_PROBE'])
        output = subprocess.check_output([sys.executable, '-c', script])
        self.assertEqual(output.split(), ['False', 'True'])


if __name__ == '__main__':
    unittest.main()
