"""The code of the guides, run as it stands: sessions, scripts with what they print, and commands."""
import glob
import os
import re
import subprocess
import sys
import tempfile
import unittest

from quorel.sim import lab

SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DOCS = os.path.join(SOURCES, 'docs')
# What has tests of its own.
ELSEWHERE = 'scripting.md', 'simulated-switch.md', 'architecture.md', 'contributing.md', 'binding.md', 'interface-files.md'
GUIDES = sorted(set(map(os.path.basename, glob.glob(os.path.join(DOCS, '*.md')))) - set(ELSEWHERE))


def blocks(name):
    with open(os.path.join(DOCS, name)) as file:
        return re.findall(r'(?ms)^```(\w*)\n(.*?)^```$', file.read())


class Guides(unittest.TestCase):
    def test_each_block_is_of_a_kind_that_is_tested(self):
        self.assertGreater(len(GUIDES), 7)
        for name in GUIDES:
            before = None
            for kind, text in blocks(name):
                self.assertIn(kind, ('python', 'text', 'sh'), name)
                # What a script prints stands behind it.
                self.assertEqual(kind == 'text', before == 'script', '%s: %s' % (name, text))
                before = 'script' if kind == 'python' and not text.startswith('>>> ') else kind

    def test_sessions_show_what_they_show(self):
        for name in GUIDES:
            sessions = [text for kind, text in blocks(name) if kind == 'python' and text.startswith('>>> ')]
            if not sessions:
                continue
            with tempfile.NamedTemporaryFile(suffix='.txt') as file:
                file.write('\n'.join(sessions))
                file.flush()
                process = subprocess.Popen([sys.executable, '-m', 'doctest', '-v', file.name], stdout=subprocess.PIPE)
                output = process.communicate()[0]
            self.assertEqual(process.returncode, 0, '%s\n%s' % (name, output[-3000:]))
            self.assertEqual(output.count('Trying:\n'), len(re.findall('(?m)^>>> ', '\n'.join(sessions))), name)

    def run_script(self, name, script):
        with tempfile.NamedTemporaryFile(suffix='.py') as file:
            file.write(script)
            file.flush()
            command, options = [sys.executable, '-B', file.name], {'stdout': subprocess.PIPE}
            if 'unittest' in script:
                command.append('-v')
                options['stderr'] = subprocess.STDOUT
            if 'quorel.sim import lab' not in script:
                return subprocess.Popen(command, **options).communicate()[0]
            return None if lab.refusal() else lab.inside(command, **options).communicate()[0]

    def test_scripts_print_what_stands_behind_them(self):
        count = 0
        for name in GUIDES:
            found = blocks(name)
            for (kind, script), (after, wanted) in zip(found, found[1:]):
                if kind != 'python' or after != 'text':
                    continue
                printed = self.run_script(name, script)
                if printed is None:
                    continue
                count += 1
                if 'unittest' in script:
                    # Of tests, which of them failed.
                    printed = ''.join(re.findall(r'(?m)^\w+ \(.*?\) \.\.\. \w+\n', printed))
                self.assertEqual(printed, wanted, name)
        self.assertGreater(count, 3)

    def test_commands_are_there_with_their_options(self):
        """Of what is installed or takes long only the names are looked at."""
        with open(os.path.join(SOURCES, 'CMakeLists.txt')) as file:
            described = file.read()
        for path in glob.glob(os.path.join(SOURCES, 'cmake', '*.cmake')) + glob.glob(os.path.join(SOURCES, '*', 'CMakeLists.txt')):
            with open(path) as file:
                described += file.read()
        # Tools are run as they are, without a sanitizer.
        environment = dict(os.environ, LD_PRELOAD='')
        count = 0
        for name in GUIDES:
            for kind, text in blocks(name):
                if kind != 'sh':
                    continue
                for tool, rest in re.findall(r'\b(tools/\w+)([^)"\n]*)', text):
                    usage = subprocess.check_output([os.path.join(SOURCES, tool), '--help'], env=environment)
                    usage = usage.partition('\n')[0]
                    for option in re.findall(r'--\w+', rest):
                        self.assertIn(option, usage, tool)
                    count += 1
                for option in re.findall(r'-D(\w+)', text):
                    self.assertIn(option, described)
                    count += 1
                for file in re.findall(r'\bexamples/\S+', text):
                    self.assertTrue(os.path.exists(os.path.join(SOURCES, file)), file)
        self.assertGreater(count, 10)

    def test_links_between_them_lead_somewhere(self):
        for name in GUIDES + list(ELSEWHERE):
            with open(os.path.join(DOCS, name)) as file:
                text = file.read()
            for link in re.findall(r'\]\(([^)]+)\)', re.sub(r'(?ms)^```.*?^```$', '', text)):
                path, _, place = link.partition('#')
                target = os.path.normpath(os.path.join(DOCS, path)) if path else os.path.join(DOCS, name)
                self.assertTrue(path.startswith('http') or os.path.exists(target), '%s: %s' % (name, link))
                if place:
                    with open(target) as file:
                        headings = [re.sub(r'[^\w\- ]', '', heading.lower()).replace(' ', '-')
                                    for heading in re.findall(r'(?m)^#+ (.*)$', file.read())]
                    self.assertIn(place, headings, '%s: %s' % (name, link))


if __name__ == '__main__':
    unittest.main()
