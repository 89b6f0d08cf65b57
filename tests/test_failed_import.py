"""Where QuorelApiNew cannot be imported, one sentence says why and what to do, and nothing is left behind."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

LIBRARIES = os.environ['QUOREL_LIBRARIES']
MODULE, SDK, TYPES = '_QuorelApiNew.so', 'libQuorelApiNew.so.0', 'libQuorelApiTypes.so.0'
CLASS, MACHINE = 4, 18  # bytes of an ELF file
OTHER_CLASS = {'\1': '\2', '\2': '\1'}

SCRIPT = '''
import gc, sys
try:
    import %s
except ImportError as error:
    print(error)
    print(gc.isenabled() and not [name for name, module in sys.modules.items() if 'uorel' in name and module])
'''


class FailedImport(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)
        self.tree = os.path.join(self.directory, 'tree')
        shutil.copytree(LIBRARIES, self.tree, symlinks=True, ignore=shutil.ignore_patterns('*.a'))

    def said(self, module='QuorelApiNew', python=sys.executable):
        environment = dict(os.environ, PYTHONPATH=self.tree)
        if python != sys.executable:
            environment.pop('LD_PRELOAD', None)
        lines = subprocess.check_output([python, '-B', '-c', SCRIPT % module], cwd='/', env=environment).splitlines()
        self.assertEqual(lines[1:], ['True'], lines)
        return lines[0]

    def edit(self, name, change):
        path = os.path.join(self.tree, name)
        with open(os.path.join(LIBRARIES, name), 'rb') as file:
            data = file.read()
        changed = change(data)
        self.assertEqual((len(changed), changed == data), (len(data), False))
        with open(path, 'wb') as file:
            file.write(changed)

    def replace(self, name, old, new):
        self.edit(name, lambda data: data.replace(old, new))

    def test_by_python_3(self):
        for module in 'QuorelApiNew', 'quorel':
            self.assertRegexpMatches(
                self.said(module, 'python3'),
                r'^QuorelApiNew is for Python 2\.7, and this is Python 3\.\d+; run the script with python2\.7$')

    def test_without_a_library(self):
        os.remove(os.path.join(self.tree, SDK))
        self.assertEqual(self.said(),
                         '%s is missing; put it beside _QuorelApiNew.so, or name its folder in LD_LIBRARY_PATH '
                         '(%s: cannot open shared object file: No such file or directory)' % (SDK, SDK))
        self.assertEqual(self.said('quorel'), self.said())
        os.remove(os.path.join(self.tree, MODULE))
        self.assertEqual(self.said(),
                         '_QuorelApiNew.so is not on the path of Python; put it beside QuorelApiNew.py '
                         '(No module named _QuorelApiNew)')

    def test_on_another_system(self):
        bits = 64 if sys.maxsize > 2**32 else 32
        for name in MODULE, TYPES:
            for place, value in (CLASS, lambda byte: OTHER_CLASS[byte]), (MACHINE, lambda byte: '\x28'):
                self.edit(name, lambda data: data[:place] + value(data[place]) + data[place + 1:])
                self.assertRegexpMatches(
                    self.said(), r'^\S*%s is for another kind of system than this %d-bit Python; '
                                 r'install the build for this one \(' % (name, bits))
            shutil.copy(os.path.join(LIBRARIES, name), self.tree)
        self.replace(MODULE, 'GLIBC_2.', 'GLIBC_9.')
        self.assertRegexpMatches(
            self.said(), r'^this system is older than what it was built for, and lacks GLIBC_9\.\S+; '
                         r"install a build for this one \(.*: version `GLIBC_9\S+' not found ")

    def test_with_another_python_or_sdk(self):
        for old, new, said in (
                ('PyEval_InitThreads', 'PyUnicodeUCS2_Abcd',
                 'it was built for a Python with Unicode characters of 2 bytes; use one, which this is not'),
                ('PyEval_InitThreads', 'PyEval_ExitThreads',
                 'it was built for another kind of Python 2.7, with PyEval_ExitThreads; install a build for this kind'),
                ('bcm_l2_addr_add', 'bcm_l2_addr_adx',
                 'the library with bcm_l2_addr_adx is not of the build that the module was built for; install that one')):
            self.replace(MODULE, old, new)
            self.assertEqual(self.said(),
                             '%s (%s: undefined symbol: %s)' % (said, os.path.join(self.tree, MODULE), new))

    def test_pythons_of_either_size_of_unicode_can_load_it(self):
        for name in MODULE, '_quorel.so', 'libvey.so.0', SDK:
            self.assertNotIn('PyUnicodeUCS', subprocess.check_output(['nm', '-D', os.path.join(self.tree, name)]))


if __name__ == '__main__':
    unittest.main()
