"""Instructions of Python 2.7 code, counted by valgrind's callgrind.

The same code takes the same number of instructions on a busy machine as on an idle one, so two modules can be
compared to a per cent with a single run of each.
"""
import os
import re
import subprocess

# The program behind whatever script or link started this process: callgrind counts one process, no wrappers.
PYTHON = os.readlink('/proc/self/exe')
# Without the site module: what an installation adds at start-up is none of the benchmark's business.
PYTHON_FLAGS = ['-S', '-E']

_LOOP = '''\
import sys
sys.path[:0] = %(path)r
%(setup)s
def loop(count):
%(locals)s
    %(loop)s
%(body)s
loop(%(count)d)
'''


class Work(object):
    """One pass of a loop.

    body:   the statements of the pass.
    setup:  statements that run once before, at module level.
    names:  names that setup makes and body uses; the loop has them as local variables, the cheapest kind.
    in_c:   the body makes all passes at once: `count` says how many.
    """

    def __init__(self, body, setup='', names='', in_c=False):
        self.body = body
        self.setup = setup
        self.names = names.split()
        self.loop = 'if True:' if in_c else 'for _ in xrange(count):'

    def program(self, path, count):
        """Source text that runs `count` passes, with modules found along `path`."""
        return _LOOP % {
            'path': path,
            'setup': self.setup,
            'locals': _indented(['pass'] + ["%s = globals()['%s']" % (name, name) for name in self.names], 4),
            'loop': self.loop,
            'body': _indented(self.body.splitlines(), 8),
            'count': count,
        }


def _indented(lines, width):
    return '\n'.join(' ' * width + line for line in lines)


def instructions(program):
    """Instructions of a whole Python process that runs the source text."""
    return process_instructions([PYTHON] + PYTHON_FLAGS + ['-c', program])


def process_instructions(arguments):
    """Instructions of a whole process."""
    command = ['valgrind', '--tool=callgrind', '--callgrind-out-file=/dev/null', '--vgdb=no'] + arguments
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=_environment())
    _, log = process.communicate()
    collected = re.search(r'Collected : (\d+)', log)
    if process.returncode != 0 or not collected:
        raise RuntimeError('this program failed:\n%s\n%s' % (' '.join(arguments), log))
    return int(collected.group(1))


def _environment():
    # Sizes of variables shift the stack, and with it alignments; these are all that is needed.
    kept = ('PATH', 'LD_LIBRARY_PATH')
    return dict((name, os.environ[name]) for name in kept if name in os.environ)
