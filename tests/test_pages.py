"""The pages of the reference, as Sphinx gets them, of our SDK and of one that nothing of ours knows."""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

import _QuorelApiNew
import quorel

TESTS = os.path.dirname(os.path.abspath(__file__))
PAGES = os.path.join(TESTS, os.pardir, 'pages')
sys.path.insert(0, PAGES)
import facts
import figures

LIBRARIES = os.environ['QUOREL_LIBRARIES']
OTHER = os.path.join(os.environ['QUOREL_OTHER_SDK'], 'generated', 'reference.tsv')
# Tools of the host; what a sanitizer has loaded into this process is not for them.
ENVIRONMENT = dict((name, value) for name, value in os.environ.items() if name not in ('LD_PRELOAD', 'PYTHONPATH'))


def python3(*arguments):
    process = subprocess.Popen(('python3', '-B') + arguments, env=ENVIRONMENT, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    output = process.communicate()[0]
    if process.returncode != 0:
        raise AssertionError(output)
    return output


class Made(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def make(self, reference, facts, *options):
        """{page: its text}, and what the search knows: (name, kind, page and place, what is told)."""
        path = os.path.join(self.directory, 'facts')
        with open(path, 'w') as file:
            json.dump(facts, file)
        output = os.path.join(self.directory, 'pages')
        python3(os.path.join(PAGES, 'pages.py'), '--reference=' + reference, '--facts=' + path, '--output=' + output,
                *options)
        texts = {}
        for folder, _, names in os.walk(output):
            for name in names:
                with open(os.path.join(folder, name)) as file:
                    texts[os.path.relpath(os.path.join(folder, name), output)] = file.read().decode('utf-8')
        index = json.loads(re.match(r'quorelIndex\((.*)\);$', texts.pop('find-index.js')).group(1))
        return texts, index

    def places(self, texts):
        """{page: the places in it that links can lead to}"""
        found = {}
        for name, text in texts.items():
            headings = [re.sub('[^a-z0-9]+', '-', heading.replace('\\', '').lower()).strip('-')
                        for heading in re.findall(r'(?m)^(\S.*)\n[=~-]+$', text)]
            page = re.sub('rst$', 'html', name)
            identities = re.findall(r' id="([^"]+)"', text)
            self.assertEqual(len(identities), len(set(identities)), page)
            found[page] = set(identities + headings + [''])
        return found

    def check_links(self, texts, index):
        places = self.places(texts)
        count = 0
        for name, text in texts.items():
            for link in re.findall(r' href="([^"]+)"', text):
                page, _, place = link.partition('#')
                page = os.path.normpath(os.path.join(os.path.dirname(name), page)) if page else re.sub('rst$', 'html', name)
                self.assertIn(place, places.get(page, ()), '%s: %s' % (name, link))
                count += 1
        for name, _, link, _ in index:
            page, _, place = link.partition('#')
            self.assertIn(place, places[page], name)
        return count

    def test_all_that_is_bound_stands_somewhere_and_links_lead_there(self):
        values = dict((name, value) for name, value in vars(_QuorelApiNew).items() if isinstance(value, int))
        layout = os.path.join(self.directory, 'layout')
        with open(layout, 'w') as file:
            subprocess.check_call([os.environ['QUOREL_LAYOUT']], stdout=file, env=ENVIRONMENT)
        texts, index = self.make(
            os.path.join(LIBRARIES, 'quorel', 'reference.tsv'), {'values': values}, '--package', '--layout=' + layout,
            '--answers=' + os.path.join(LIBRARIES, 'quorel', 'answers.tsv'))
        self.assertGreater(self.check_links(texts, index), 20000)
        names = set(name for name, _, _, _ in index)
        with open(os.environ['QUOREL_BINDING']) as report:
            rows = [line.rstrip('\n').split('\t') for line in report]
        bound = (set(row[2].partition('(')[0] for row in rows if row[0] == 'function') |
                 set(row[2] for row in rows if row[0] in ('constant', 'pointer_class', 'array')) |
                 set('%s.%s' % (row[2], row[3]) for row in rows if row[0] == 'member'))
        self.assertEqual(sorted(bound - names), [])
        self.assertGreater(len(bound), 10000)
        l2 = texts['reference/l2.rst']
        self.assertIn('<a href="../reference/error.html#BCM_E_NOT_FOUND">BCM_E_NOT_FOUND</a>', l2)
        self.assertIn('<tr id="BCM_L2_STATIC"><td><code>BCM_L2_STATIC</code></td><td>32 <span class="hex">0x20</span></td>'
                      '<td>neither ages nor moves; without it an entry is dynamic</td></tr>', l2)
        self.assertRegexpMatches(l2, r'id="bcm_l2_addr_t.mac">.*?bcm_mac_t.*?title="offset, size">8, 6<')
        self.assertIn('Bound by <code>interface/l2.toml</code>', l2)
        self.assertIn('bcm_l2_addr_add', re.search(r'id="BCM_E_FULL".*?</tr>', texts['errors.rst'], re.S).group())
        self.assertIn('>not simulated</span>', texts['reference/cosq.rst'])

    def test_of_another_sdk_nothing_of_ours_is_told(self):
        texts, index = self.make(OTHER, {'values': {'OTHER_E_DARK': -3}}, '--title=The other SDK')
        self.check_links(texts, index)
        text = '\n'.join(texts.values())
        self.assertIn('The other SDK\n=============', text)
        self.assertIn('A laser, 0..2.', text)
        self.assertIn(['other_laser_t.label', 'member'], [row[:2] for row in index])
        for word in ('OUT', 'simulated', 'quorel', 'interface/'):
            self.assertNotIn(word, text)


    def test_the_package_and_the_shell_are_told_as_they_are(self):
        path = os.path.join(self.directory, 'asked')
        facts.main('_QuorelApiNew', path, 'chip')
        with open(path) as file:
            asked = json.load(file)
        texts, index = self.make(OTHER, asked)
        self.check_links(texts, index)
        package = texts['package.rst']
        for name in quorel.__all__:
            if callable(getattr(quorel, name)) and name != 'OUT':
                self.assertIn(' id="quorel.%s"' % name, package)
        self.assertIn('<b>name_of</b>(group, value, default=', package)
        self.assertIn('<b>as_dict</b>(record)</code>', package)
        self.assertIn(' id="quorel.sim.Switch.watched"', package)
        self.assertIn('<b>watched</b>(function)', package)
        shell = texts['shell.rst']
        self.assertIn("> port 1-4 speed=40000 enable=on", shell)
        self.assertIn('vlan add ID PORTS [untagged]', shell)
        self.assertRegexpMatches(shell, r'> l2 add .* static; l2 show\n.*02:00:5e:00:00:01')
        self.assertGreater(texts['registers.rst'].count('<svg'), 150)

    def test_a_link_that_leads_nowhere_is_found(self):
        for name, text in (('a.html', '<a href="b.html#there">x</a><a href="b.html#gone">x</a><p id="one"><p id="one">'),
                           ('b.html', '<p id="there"><a href="c.html">x</a><a href="#there">x</a><img src="no.svg">')):
            with open(os.path.join(self.directory, name), 'w') as file:
                file.write(text)
        script = 'import json, sys; sys.path.insert(0, sys.argv[1]); import check; ' \
                 'print(json.dumps(check.broken_links(sys.argv[2])))'
        self.assertEqual(json.loads(python3('-c', script, PAGES, self.directory)), [[
            'a.html: two places are called one', 'a.html: b.html#gone leads to no place',
            'b.html: c.html leads to no file', 'b.html: no.svg leads to no file'], 5, 2])


class Bits(unittest.TestCase):
    def test_each_bit_is_drawn_once_and_fields_are_where_they_are(self):
        script = '''
import json, re, sys
sys.path.insert(0, sys.argv[1])
import bits
fields = [dict(name='LOW', bits=[0, 1], writable=True), dict(name='WIDE<', bits=list(range(20, 40)), writable=False),
          dict(name='TORN', bits=[3, 63], writable=True)]
drawn = bits.drawing('REGISTER', fields, 64)
boxes = re.findall('<rect class="([^"]+)" x="([0-9]+)[^"]*" y="([0-9]+)[^"]*" width="([0-9]+)"', drawn)
print(json.dumps([boxes, re.findall('<title>(.*?)</title>', drawn), drawn]))
'''
        boxes, titles, drawn = json.loads(python3('-c', script, PAGES))
        width = 22
        covered = []
        for kind, x, y, length in boxes:
            first = 31 - (int(x) // width) + 32 * (int(y) < 50)
            covered += [(first - place, kind) for place in range(int(length) // width)]
        self.assertEqual(sorted(bit for bit, _ in covered), list(range(64)))
        self.assertEqual(sorted(bit for bit, kind in covered if kind == 'field'), [0, 1, 3, 63])
        self.assertEqual(sorted(bit for bit, kind in covered if kind == 'field read-only'), list(range(20, 40)))
        self.assertEqual(titles, ['TORN, bits 63 to 63', 'WIDE&lt;, bits 32 to 39', 'WIDE&lt;, bits 20 to 31',
                                  'TORN, bits 3 to 3', 'LOW, bits 0 to 1'])
        self.assertNotIn('WIDE<', drawn)


class Figures(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def drawn(self, name, text):
        """The page's drawings in their order, each well-formed."""
        links = re.findall(r'\(figures/(.*?)\)', text)
        self.assertEqual(sorted(links), sorted(os.listdir(self.directory)))
        return [xml.etree.ElementTree.parse(os.path.join(self.directory, link)).getroot() for link in links]

    def test_what_examples_print_is_drawn_behind_them(self):
        text = figures.with_drawings(
            "Text\n\n```python\n>>> import quorel\n>>> from quorel import picture, sim\n```\n\nMore\n\n```python\n"
            ">>> print(picture.vlans(0, [1, 2]))\nVLAN     1   2\n   1     U   U\n>>> one = picture.ports(0)\n```\n\nEnd",
            self.directory, 'page')
        picture, = self.drawn('page', text)
        self.assertTrue(text.endswith('```\n\n![what this shows, drawn](figures/page-1.svg)\n\nEnd'), text)
        self.assertEqual(len(picture.findall('{http://www.w3.org/2000/svg}rect')), 2)
        self.assertRaises(SystemExit, figures.with_drawings, '```python\n>>> 1\n2\n```\n', self.directory, 'page')

    def test_each_group_of_measurements_is_drawn(self):
        with open(figures.record.RECORDED) as file:
            recorded = file.read()
        drawings = self.drawn('recorded', figures.with_bars(recorded, self.directory))
        rows = [line for line, key in figures.record.tables(recorded) if len(key) == 3]
        kinds = [bar.get('class') for drawing in drawings for bar in
                 drawing.findall('{http://www.w3.org/2000/svg}rect')]
        self.assertEqual([kind == 'met' for kind in kinds], [line.endswith('| met |') for line in rows])
        self.assertEqual(len(drawings), 5)


if __name__ == '__main__':
    unittest.main()
