"""The version: one for the sources, with a digest of the headers for a build of them."""
import json
import os
import re
import subprocess
import unittest

import _QuorelApiNew
import QuorelApiNew

SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def found(pattern, *path):
    with open(os.path.join(SOURCES, *path)) as file:
        return re.search(pattern, file.read(), re.M).group(1)


class Version(unittest.TestCase):
    def test_the_file_of_the_module_says_it_too(self):
        notes = subprocess.check_output(['readelf', '-n', _QuorelApiNew.__file__])
        note = json.loads(re.search(r'^ +Packaging Metadata: (.*)$', notes, re.M).group(1))
        self.assertEqual(note, {'name': 'QuorelApiNew', 'version': QuorelApiNew.__version__})
        self.assertFalse(hasattr(_QuorelApiNew, '__version__'))

    def test_it_is_the_newest_of_the_change_log(self):
        project, digest = re.match(r'(\d+\.\d+\.\d+)\+sdk\.([0-9a-f]{16})$', QuorelApiNew.__version__).groups()
        self.assertEqual(project, found(r'^project\(\w+ VERSION ([\d.]+) ', 'CMakeLists.txt'))
        self.assertEqual(project, found(r'^## \[(\d[\d.]*)\] - \d{4}-\d\d-\d\d$', 'CHANGELOG.md'))


if __name__ == '__main__':
    unittest.main()
