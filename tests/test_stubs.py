"""What editors and type checkers are told is what is there, and finds the mistakes that people make."""
import distutils.spawn
import glob
import os
import re
import shutil
import subprocess
import tempfile
import unittest

import QuorelApiNew
import _QuorelApiNew

LIBRARIES = os.environ['QUOREL_LIBRARIES']
EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'examples')
MYPY = distutils.spawn.find_executable('mypy')
NOT_DECLARED = set(['__builtins__', '__doc__', '__file__', '__name__', '__package__'])
NOT_THERE = set(['_Variables'])


def text_of(*path):
    with open(os.path.join(LIBRARIES, *path)) as file:
        return file.read()


def lines_of(*path):
    """Without docstrings."""
    return re.sub(r'(?s)""".*?"""', '', text_of(*path)).split('\n')


def declared(lines):
    """The names at the outermost level, with the parameters of functions."""
    for line in lines:
        found = re.match(r'(?:def (\w+)\((.*?)(?:, /)?\) ->|class (\w+)|(\w+):|'
                         r'from \S+ import (?:\w+ as )?(_\w+)$)', line)
        if found:
            function, parameters, others = found.group(1), found.group(2), found.groups()[2:]
            yield function or [name for name in others if name][0], parameters


def names_of_stub(module):
    """By name, the parameters of functions; of the stub and of what it takes over."""
    lines = lines_of(module + '.pyi')
    names = dict(declared(lines))
    hidden = set(names)
    for line in lines:
        star = re.match(r'from (\w+)[.](\w+) import [*]$', line)
        if star:
            taken = declared(lines_of(star.group(1), star.group(2) + '.pyi'))
            names.update((name, parameters) for name, parameters in taken if name[0] != '_' or name in hidden)
    return names


class Names(unittest.TestCase):
    def compare(self, module):
        stub = names_of_stub(module.__name__)
        there = set(vars(module)) - NOT_DECLARED
        self.assertEqual(sorted(there - set(stub)), [])
        self.assertEqual(sorted(set(stub) - there - NOT_THERE), [])
        return stub

    def test_they_are_those_of_the_modules(self):
        stub = self.compare(_QuorelApiNew)
        self.compare(QuorelApiNew)
        hidden = [name for name in vars(_QuorelApiNew) if name.startswith('_') and name not in NOT_DECLARED]
        self.assertGreater(len(hidden), 1)
        self.assertGreater(len(stub), 10000)

    def test_functions_have_the_arguments_of_their_docstrings(self):
        functions = 0
        with open(os.environ['QUOREL_BINDING']) as report:
            bound = [line.split('\t')[2] for line in report if line.startswith('function\t')]
        stub = names_of_stub('_QuorelApiNew')
        for docstring in bound:
            name, arguments = re.match(r'(\w+)\((.*?)\)', docstring).groups()
            parameters = re.findall(r'(\w+): ', stub[name] or '')
            self.assertEqual([parameter.rstrip('_') for parameter in parameters],
                             [argument.rstrip('_') for argument in arguments.split(', ') if argument], name)
            functions += 1
        self.assertGreater(functions, 3000)

    def test_classes_have_the_members_of_the_records(self):
        classes = {}
        for path in glob.glob(os.path.join(LIBRARIES, '_QuorelApiNew_stubs', '*_records.pyi')):
            for line in lines_of(path):
                start = re.match(r'class (\w+)', line)
                if start:
                    members = classes[start.group(1)] = set()
                member = re.match(r'    (\w+): ', line)
                if member:
                    members.add(member.group(1))
        self.assertGreater(len(classes), 300)
        for name, members in classes.items():
            there = set(member for member, value in vars(getattr(QuorelApiNew, name)).items()
                        if type(value).__name__ == 'property')
            self.assertEqual(members, there, name)

    def test_docstrings_are_what_the_headers_say(self):
        text = text_of('_QuorelApiNew_stubs', 'l2_functions.pyi')
        self.assertIn('def bcm_l2_age_timer_set(unit: int, age_seconds: int, /) -> int:\n    """Seconds after which an '
                      'unused dynamic entry goes, 0 for never; at first 300."""\n', text)


MISTAKES = """\
    speed = q.intp()
    address = q.bcm_l2_addr_t()
    q.bcm_port_speed_get(0, 1)                                  # a missing argument
    q.bcm_port_speed_get(0, 1, speed, 2)                        # one too many
    q.bcm_port_speed_get(0, 'xe1', speed)                       # a port by name
    q.bcm_port_speed_get(speed, 0, 1)                           # in the wrong order
    q.bcm_port_speed_get(0, 1, 0)                               # a number for what is written to
    q.bcm_port_speed_set(0, 1, '1000')                          # text for a number
    q.bcm_port_speed_set(0, 1, None)                            # nothing for a number
    q.bcm_port_speed_set(0, 1, speed)                           # the pointer instead of its value
    q.bcm_port_sped_set(0, 1, 1000)                             # a misspelt function
    q.bcm_l2_addr_add(0, speed)                                 # memory of another type
    q.bcm_l2_addr_add(0, q.bcm_vlan_data_t())                   # another record
    q.bcm_l2_addr_add(address)                                  # without a unit
    q.bcm_l2_addr_t_init(address, 0x020000000001, 1)            # a MAC address as a number
    q.bcm_vlan_port_add(0, 1, '1-4', [])                        # text for a list of ports
    q.bcm_vlan_port_add(0, 1, [1, 2], 3)                        # a port for a list of ports
    address.vlan = 1                                            # a member that is called otherwise
    address.port = 'xe1'                                        # a member of another type
    address.mac = 1                                             # likewise
    q.bcm_l2_addr_t(vlan=1)                                     # likewise, as a keyword
    q.bcm_l2_addr_t(1)                                          # members have names
    q.bcm_port_speed_get(0, 1, speed) / 1000                    # the status for the value
    q.BCM_L2_STATICS                                            # a misspelt constant
    speed.get()                                                 # what pointer classes do not have
"""

GOOD = """\
    speed = q.intp()
    if q.bcm_port_speed_get(0, 1, speed) != q.BCM_E_NONE or speed.value() + 1 < 2:
        print('%d' % q.bcm_port_speed_get(0, 1, cell('int')))
    address = q.bcm_l2_addr_t(port=3, mac='02:00:00:00:00:01', block_bitmap=[1, 2])
    address.flags |= q.BCM_L2_STATIC | q.BCM_L2_MIRROR
    q.bcm_l2_addr_add(0, address)
    q.bcm_l2_traverse(0, callback('bcm_l2_traverse_cb', lambda unit, info, data: 0), None)
    q.bcm_vlan_port_add(0, 1, [1, 2], [])
    q.bcm_port_stat_multi_get(0, 1, 1, array('int', [0]), array('uint64', 1))
    print(q.errorString(q.bcm_port_speed_get(0, 1, speed)))
    return checked(q.bcm_port_speed_get, 0, 1, OUT) + 1
"""


@unittest.skipUnless(MYPY, 'there is no mypy here')
class Checked(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # With what mypy has worked out of the stubs, which takes it seconds.
        cls.directory = tempfile.mkdtemp()

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.directory)

    def mypy(self, *paths):
        """(file, line, what it says) of each error."""
        environment = dict((name, value) for name, value in os.environ.items() if name != 'LD_PRELOAD')
        environment.pop('PYTHONPATH')
        process = subprocess.Popen(
            [MYPY, '--cache-dir', os.path.join(self.directory, 'cache'), '--check-untyped-defs',
             '--follow-imports=silent', '--disable-error-code=var-annotated', '--no-error-summary', '--config-file=']
            + list(paths),
            env=dict(environment, MYPYPATH=LIBRARIES), stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        output = process.communicate()[0]
        errors = re.findall(r'(?m)^(.+?):(\d+): error: (.*)$', output)
        self.assertEqual(bool(errors), process.returncode != 0, output)
        return [(os.path.basename(file), int(line), text) for file, line, text in errors]

    def write(self, name, body):
        path = os.path.join(self.directory, name)
        with open(path, 'w') as file:
            file.write('import QuorelApiNew as q\nfrom quorel import OUT, array, callback, cell, checked\n\n\n'
                       'def use():\n' + body)
        return path

    def test_the_stubs_themselves_and_the_examples_have_no_mistakes(self):
        stubs = [os.path.join(LIBRARIES, name) for name in os.listdir(LIBRARIES) if name.endswith('.pyi')]
        examples = glob.glob(os.path.join(EXAMPLES, '*.py'))
        self.assertGreater(len(stubs), 2)
        self.assertGreater(len(examples), 5)
        self.assertEqual(self.mypy(self.write('good.py', GOOD), *(stubs + examples)), [])

    def test_mistakes_are_found_where_they_are(self):
        path = self.write('mistakes.py', MISTAKES)
        with open(path) as file:
            wrong = set(number for number, line in enumerate(file, 1) if '  # ' in line)
        self.assertGreater(len(wrong), 20)
        errors = self.mypy(path)
        self.assertEqual(set(line for _, line, _ in errors), wrong, errors)


if __name__ == '__main__':
    unittest.main()
