"""The recipes of docs/simulated-switch.md, run from top to bottom."""
import doctest
import os
import re
import subprocess
import sys
import textwrap
import unittest

import _quorel_sim  # counted references are those of its module too
from quorel import sim
from quorel.sim import lab

GUIDE = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), 'docs', 'simulated-switch.md')


class Recipes(unittest.TestCase):
    def setUp(self):
        self.addCleanup(sim.Switch().fresh)

    def test_they_do_what_they_show(self):
        with open(GUIDE) as file:
            test = doctest.DocTestParser().get_doctest(file.read(), {}, 'simulated-switch.md', GUIDE, 0)
        result = doctest.DocTestRunner(optionflags=doctest.ELLIPSIS, verbose=False).run(test, out=sys.stderr.write)
        self.assertEqual(result.failed, 0)
        self.assertGreater(result.attempted, 30)

    def test_hosts_reach_each_other_in_the_recipe_of_the_lab(self):
        if lab.refusal():
            self.skipTest('namespaces cannot be made here: ' + lab.refusal())
        with open(GUIDE) as file:
            recipe = re.search(r'^### 10.*?\n\n((?:    [^\n]*\n)+)', file.read(), re.S | re.M).group(1)
        process = lab.inside([sys.executable, '-c', textwrap.dedent(recipe)], stdout=subprocess.PIPE)
        self.assertEqual((process.communicate()[0], process.returncode), ('True\n', 0))


if __name__ == '__main__':
    unittest.main()
