"""What editors and type checkers are told is what is there, and finds the mistakes that people make."""
import distutils.spawn
import glob
import inspect
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew
import _QuorelApiNew
import _quorel
import _quorel_sim
import quorel.picture
import quorel.sim.lab

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


class Package(unittest.TestCase):
    """The stubs of the package, which are written by hand."""

    @staticmethod
    def stub_of(name):
        """{function or class: its parameters or {method: parameters}}; a property has none, but is there."""
        path = os.path.join(LIBRARIES, *name.split('.'))
        with open(os.path.join(path, '__init__.pyi') if os.path.isdir(path) else path + '.pyi') as file:
            text = re.sub(r',\n +', ', ', file.read())
        found, members = {}, None
        for indent, decorator, kind, word, rest in re.findall(
                r'(?m)^(    |)(@property\n    |)(def|class) (\w+)(.*)$', text):
            told = None if decorator else re.findall(r'(?:^\(|, )([*]*\w+)(?=: |, |\)|$)(?:[^,]*?( = [.]{3}))?',
                                                     re.sub(r'\[[^()]*?\](?=[,)\]]| =)', '', rest.split(' ->')[0]))
            if kind == 'class':
                members = found[word] = {}
            else:
                (members if indent else found)[word] = told
        return found

    @staticmethod
    def parameters_of(function):
        names, several, keywords, defaults = inspect.getargspec(function)
        first = len(names) - len(defaults or ())
        return ([(name, ' = ...' if place >= first else '') for place, name in enumerate(names)] +
                [(mark + name, '') for mark, name in (('*', several), ('**', keywords)) if name])

    def test_they_have_the_functions_classes_and_parameters_that_are_there(self):
        modules = [module for name, module in sorted(sys.modules.items())
                   if re.match('quorel[.](?!sim$)', name) and module and
                   os.path.exists(re.sub('[.]pyc?$', '.pyi', module.__file__))]
        self.assertGreater(len(modules), 10)
        functions = 0
        for module in modules:
            stub = self.stub_of(module.__name__)
            own = dict((name, value) for name, value in vars(module).items()
                       if getattr(value, '__module__', None) == module.__name__ and name[0] != '_' and
                       not re.match('mac_text|ip._text', name) and
                       inspect.getmodule(value) is module and (inspect.isfunction(value) or inspect.isclass(value)))
            self.assertEqual(sorted(stub), sorted(own), module.__name__)
            for name, value in own.items():
                if inspect.isfunction(value):
                    self.assertEqual(stub[name], self.parameters_of(value), name)
                    functions += 1
                    continue
                if issubclass(value, tuple):
                    continue
                for member, there in vars(value).items():
                    where = '%s.%s' % (name, member)
                    if isinstance(there, property):
                        self.assertEqual(stub[name].get(member, 'missing'), None, where)
                    elif inspect.isfunction(there) and (member[0] != '_' or member in stub[name]):
                        # What a decorator wraps says nothing of its parameters.
                        there = there.__closure__[0].cell_contents if there.__code__.co_name == 'helper' else there
                        self.assertEqual(stub[name].get(member), self.parameters_of(there), where)
                        functions += 1
                self.assertEqual([member for member in stub[name] if not hasattr(value, member)], [], name)
        self.assertGreater(functions, 80)

    def test_what_the_packages_offer_is_declared(self):
        for module in (quorel, quorel.sim):
            with open(os.path.join(os.path.dirname(module.__file__), '__init__.pyi')) as file:
                names = re.findall(r'(\w+) as \1', file.read())
            self.assertEqual(sorted(names), sorted(module.__all__))
        for module in (_quorel, _quorel_sim):
            stub = names_of_stub(module.__name__)
            there = set(vars(module)) - NOT_DECLARED
            self.assertEqual(sorted(there ^ set(name for name in stub if name not in
                                                NOT_THERE | set(['_Record', '_CType', '_Bytes']))), [])


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
    checked(q.bcm_port_speed_get(0, 1, speed))                  # called too early
    callback(q.bcm_l2_traverse, 3)                              # a number for a function
    array(4, 'int')                                             # the other way round
    name_of(-4)                                                 # without its group
    name_of(-4, 'BCM_E_')                                       # the other way round
    flags('BCM_L2_', 8) + 1                                     # text, where a number was given
    Chip(0).reg.CMIC_DEVICE_ID                                  # a misspelt attribute
    Chip(0).regs.NIF_PORT_CTRL['3']                             # a subscript that is no number
    Chip(0).regs.CMIC_LED_CTRL.REFRESH_RATE = '5'               # a field is a number
    ACL().add(match=dict(SrcIp='10.0.0.1'))                     # without a unit
    ACL(0).add(matches=dict(SrcIp='10.0.0.1'))                  # no such argument
    ACL(0).add(10, dict(SrcIp='10.0.0.1'), count=True).packet   # no such member
    sim.Switch().send('frame', 1)                               # in the wrong order
    sim.Switch().sends(1, 'frame')                              # no such method
    sim.ethernet('02:00:00:00:00:01')                           # without a source
    sim.TestCase('run').assertDrops(1, 'frame')                 # no such method
    search('age timer', 'all')                                  # a number, not a text
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
    for name, old, new in differences(address, as_dict(address)):
        print(name_of('BCM_E_', old, None), flags('BCM_L2_', 'STATIC') | 1, flags('BCM_L2_', new).split('|'))
    acl = ACL(0, stage='Ingress')
    rule = acl.add(priority=5, match=dict(InPorts='1-4'), actions=['Drop', ('RedirectPort', 0, 7)], count=True)
    print(len(acl.table()), [each.priority for each in acl], rule.packets)
    chip = Chip(0)
    chip.regs.NIF_PORT_CTRL[3].RX_ENABLE = 1
    print(chip.mems['IHP_MAC_TABLE'][0].VALID + 1, chip.regs.snapshot('NIF_*').differences())
    switch = sim.Switch()
    frame = sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01', 'abc', vlan=5)
    print([len(sent) for port, sent in switch.send(1, frame + 'more')], sim.dissect(frame)[0].name)
    with switch.captured('file', [1, 2]), events(q.bcm_l2_addr_register, 0) as told:
        unit, address, operation, _ = told.get(1)
    try:
        help(copy(address))
    except StatusError as error:
        print(error.status + 1, error.name.lower())
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
            file.write('import QuorelApiNew as q\nfrom quorel import *\nfrom quorel import sim\n\n\n'
                       'def use():\n' + body)
        return path

    def test_the_stubs_themselves_and_the_examples_have_no_mistakes(self):
        stubs = [path for folder in ('.', 'quorel', 'quorel/sim')
                 for path in glob.glob(os.path.join(LIBRARIES, folder, '*.pyi'))]
        examples = glob.glob(os.path.join(EXAMPLES, '*.py'))
        self.assertGreater(len(stubs), 15)
        self.assertGreater(len(examples), 5)
        self.assertEqual(self.mypy(self.write('good.py', GOOD), *(stubs + examples)), [])

    def test_mistakes_are_found_where_they_are(self):
        path = self.write('mistakes.py', MISTAKES)
        with open(path) as file:
            wrong = set(number for number, line in enumerate(file, 1) if '  # ' in line)
        self.assertGreater(len(wrong), 35)
        errors = self.mypy(path)
        self.assertEqual(set(line for _, line, _ in errors), wrong, errors)


if __name__ == '__main__':
    unittest.main()
