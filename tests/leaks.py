"""What LeakSanitizer tells of at exit: memory that is lost, and not what is held or given back."""
import subprocess
import sys
import unittest

START = 'import _QuorelApiNew as q\n'


class Leaks(unittest.TestCase):
    def run_to_the_end(self, code):
        """Exit status, and whether a leak was told of."""
        process = subprocess.Popen([sys.executable, '-c', START + code], stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT)
        output = process.communicate()[0]
        return process.returncode != 0, 'LeakSanitizer: detected memory leaks' in output

    def test_what_is_lost_is_told(self):
        for code in ('q.new_intp().disown()',
                     'q.new_bcm_l2_addr_t().disown()',
                     'q.new_uint8Array(1000)'):
            self.assertEqual(self.run_to_the_end(code), (True, True), code)

    def test_what_is_held_to_the_end_is_not(self):
        for code in ('', 'q.bcm_attach(1, "", "", 1)',
                     'import QuorelApiNew; entry, number = QuorelApiNew.bcm_l2_addr_t(), q.new_intp()'):
            self.assertEqual(self.run_to_the_end(code), (False, False), code)


if __name__ == '__main__':
    unittest.main()
