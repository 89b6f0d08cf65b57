"""What was built asks for no newer libraries than systems of 2013 have."""
import glob
import os
import re
import subprocess
import unittest

LIBRARIES = os.environ['QUOREL_LIBRARIES']

# The newest version of each that may be asked for: those of the C library 2.17 and of GCC 4.8's libraries.
NEWEST = {'GLIBC': (2, 17), 'GLIBCXX': (3, 4, 19), 'CXXABI': (1, 3, 7), 'GCC': (4, 8, 0)}
SYSTEM_LIBRARIES = {'libc.so.6', 'libdl.so.2', 'libpthread.so.0', 'libstdc++.so.6', 'libgcc_s.so.1', 'libm.so.6',
                    'ld-linux.so.2', 'ld-linux-x86-64.so.2'}


def dynamic_section(option, library):
    return subprocess.check_output(['readelf', '--wide', option, library])


def versions_needed(library):
    """The newest version of each of the system's libraries that a library asks for, {name: numbers}."""
    _, _, needs = dynamic_section('--version-info', library).partition('Version needs section')
    newest = {}
    for name, version in re.findall(r'Name: ([A-Z]+)_(\S+)', needs):
        # One that is no number, as that for packed relocations, is newer than any.
        numbers = tuple(int(part) if part.isdigit() else 9999 for part in version.split('.'))
        newest[name] = max(numbers, newest.get(name, ()))
    return newest


class OldSystems(unittest.TestCase):
    def setUp(self):
        self.libraries = sorted(set(os.path.realpath(path) for path in glob.glob(os.path.join(LIBRARIES, '*.so*'))))
        self.assertGreaterEqual(len(self.libraries), 3)

    def test_no_newer_version_is_needed(self):
        newer = []
        for library in self.libraries:
            needed = versions_needed(library)
            print('%s: %s' % (os.path.basename(library), ', '.join(
                '%s %s' % (name, '.'.join(map(str, needed[name]))) for name in sorted(needed))))
            self.assertTrue(needed, library)
            newer += [(os.path.basename(library), name, numbers) for name, numbers in sorted(needed.items())
                      if name not in NEWEST or numbers > NEWEST[name]]
        self.assertEqual(newer, [])

    def test_no_library_is_needed_that_a_system_may_lack(self):
        own = set(os.path.basename(path) for path in glob.glob(os.path.join(LIBRARIES, '*.so*')))
        for library in self.libraries:
            needed = set(re.findall(r'\(NEEDED\).*\[(.*)\]', dynamic_section('--dynamic', library)))
            self.assertEqual(needed - own - SYSTEM_LIBRARIES, set(), library)


if __name__ == '__main__':
    unittest.main()
