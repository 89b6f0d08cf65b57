"""Generating from headers that are not the development-host SDK's own."""
import os
import shutil
import subprocess
import tempfile
import unittest

GENERATE = os.environ['QUOREL_GENERATE'].split('|')
HEADERS = os.environ['QUOREL_SDK_INCLUDE']


class OtherHeaders(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)
        self.headers = os.path.join(self.directory, 'include')
        shutil.copytree(HEADERS, self.headers)

    def edit(self, header, old, new):
        path = os.path.join(self.headers, header)
        with open(path) as file:
            text = file.read()
        self.assertEqual(text.count(old), 1, old)
        with open(path, 'w') as file:
            file.write(text.replace(old, new))

    def generate(self, name):
        output = os.path.join(self.directory, name)
        if not os.path.isdir(output):
            os.mkdir(output)
        command = [self.headers if word == HEADERS else word for word in GENERATE] + ['--output', output]
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        log, _ = process.communicate()
        return process.returncode, log, output

    def binding(self, output):
        with open(os.path.join(output, 'binding.tsv')) as file:
            return set(file.read().splitlines())

    def test_the_binding_follows_the_headers(self):
        status, log, output = self.generate('as_it_is')
        self.assertEqual((status, log), (0, ''))
        times = dict((name, os.stat(os.path.join(output, name)).st_mtime) for name in os.listdir(output))
        before = self.binding(output)
        self.assertEqual(self.generate('as_it_is')[0], 0)
        self.assertEqual(dict((name, os.stat(os.path.join(output, name)).st_mtime) for name in os.listdir(output)),
                         times)

        self.edit('bcm/l2.h', 'typedef struct bcm_l2_addr_s {\n', 'typedef struct bcm_l2_addr_s {\n    uint64 generation;\n')
        self.edit('bcm/l2.h', 'int bcm_l2_clear(int unit);', 'int bcm_l2_recount(int unit, uint64 *count);')
        self.edit('bcm/l2.h', '#define BCM_L2_DELETE_STATIC ', '#define BCM_L2_SECURE 1\n#define BCM_L2_DELETE_STATIC ')
        self.edit('bcm/l2.h', '    BCM_L2_STATIC = ', '    BCM_L2_STICKY = 0x4000,\n    BCM_L2_STATIC = ')
        status, log, output = self.generate('edited')
        self.assertEqual((status, log), (0, ''))
        after = self.binding(output)
        self.assertEqual(before - after, {'function\tl2\tbcm_l2_clear(unit) -> int\tsdk\tint32\tint32\tint\t-'})
        self.assertEqual(after - before, {
            'member\tl2\tbcm_l2_addr_t\tgeneration\tuint64\tuint64\t-\tbcm_l2_addr_s *',
            'function\tl2\tbcm_l2_recount(unit, count) -> int\tsdk\tint32\tint32\tint\t-\t'
            'pointer\tuint64 *\t_p_unsigned_long_long'})
        with open(os.path.join(output, 'constants.cpp')) as file:
            constants = file.read()
        for name in 'BCM_L2_SECURE', 'BCM_L2_STICKY':
            self.assertIn('static_cast<int32_t>(%s)' % name, constants)

    def test_what_does_not_fit_is_said(self):
        self.edit('bcm/l2.h', 'int bcm_l2_clear(int unit);', 'int bcm_l2_clear(int unit, double share);')
        status, log, output = self.generate('wrong')
        self.assertEqual((status, os.listdir(output)), (1, []))
        self.assertIn("no conversion for a value of type 'double'", log)


if __name__ == '__main__':
    unittest.main()
