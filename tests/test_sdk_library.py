"""What the development SDK's library shows of itself, and how its parts depend on each other."""
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import _QuorelApiNew

LIBRARIES = os.path.dirname(os.path.abspath(_QuorelApiNew.__file__))
SDK = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'sdk')


def output(*command):
    return subprocess.check_output(command, universal_newlines=True)


def read(*path):
    with open(os.path.join(SDK, *path)) as file:
        return file.read()


class Library(unittest.TestCase):
    def test_it_exports_the_sdk_and_the_simulators_own_interface(self):
        exported = set(re.findall(r'\S+$', output('nm', '-D', '--defined-only',
                                                  os.path.join(LIBRARIES, 'libQuorelApiNew.so.0')), re.M))
        declared = set()
        for header in glob.glob(os.path.join(SDK, 'include', 'sim', '*.h')):
            declared.update(re.findall(r'\b(sim_\w+)\(', read(header)))
        self.assertEqual(set(name for name in exported if name.startswith('sim_')), declared & exported)
        self.assertEqual(declared - exported, set())
        self.assertIn('bcm_l2_addr_add', exported)
        self.assertEqual([name for name in exported if re.match(r'_ZN?K?(St|3sim|5rules|8call_log)', name)], [])

    def test_libraries_are_found_beside_each_other_wherever_they_are(self):
        moved = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, moved)
        for library in glob.glob(os.path.join(LIBRARIES, '*.so*')):
            shutil.copy(library, moved)
            for path in re.findall(r'\((?:RPATH|RUNPATH)\).*\[(.*)\]', output('readelf', '-d', library)):
                self.assertEqual(path, '$ORIGIN', library)
        environment = dict(os.environ, PYTHONPATH='')
        script = 'import ctypes; ctypes.CDLL("%s/libQuorelApiNew.so.0").bcm_attach_check(0)' % moved
        subprocess.check_call([sys.executable, '-c', script], cwd='/', env=environment)


class Rooms(unittest.TestCase):
    """A room uses what sdk/CMakeLists.txt says, also by names that it declares for itself."""

    # The topmost room lists all rooms, and adds commands; which of the chip's fields other rooms keep is said above them.
    DEFINED_ABOVE = set(['_ZN3sim11room_makersE', '_ZN3sim16startup_commandsE', '_ZN3sim14register_stateE',
                         '_ZN3sim12memory_stateE'])

    def uses(self):
        """By room, itself and the rooms that it may use."""
        uses = {}
        for room, names in re.findall(r'^add_room\((\w+)(?: USES ([\w ]+))?\)', read('CMakeLists.txt'), re.M):
            uses[room] = set([room]).union(*[uses[name] for name in names.split()])
        return uses

    def test_no_room_depends_on_one_above_or_beside_it(self):
        rooms = dict((os.path.basename(path) + '.o', path.split(os.sep)[-2])
                     for path in glob.glob(os.path.join(SDK, 'src', '*', '*.cpp')))
        defined, wanted = {}, []
        symbols = output('nm', '-A', os.path.join(LIBRARIES, 'libsimulated_switch.a'))
        for source, kind, name in re.findall(r':([^:\s]+\.o):\S* +(\w) (sim_\w+|_ZNK?3sim\w+)$', symbols, re.M):
            room = rooms.get(source)
            if room and kind in 'TDBR':
                defined[name] = room
            elif room and kind == 'U':
                wanted.append((source, room, name))
        uses = self.uses()
        self.assertGreater(len(wanted), 500)
        self.assertEqual([(source, name, defined[name]) for source, room, name in wanted
                          if name in defined and defined[name] not in uses[room] and name not in self.DEFINED_ABOVE],
                         [])


if __name__ == '__main__':
    unittest.main()
