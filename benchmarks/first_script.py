"""From a bare header to a first script that works: zlib's zError, with tools/bind, SWIG and cffi; commands and CPU seconds.

tools/benchmark --first-script starts this. What is written by hand are lines of interface, without the script of one line.
cffi is Debian's of Python 3, as it has none of 2.7; it does not read the header, but what is copied from it. The runtime
that tools/bind shares between modules is made anew in its first row, and is there in the second.
"""
from __future__ import print_function

import os
import resource
import shutil
import subprocess
import sys

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILT = os.path.join(TOP, 'build', 'benchmark', 'first_script')
LIBRARY = os.path.realpath(subprocess.check_output(['cc', '-print-file-name=libz.so']).decode().strip())
BIND = [os.path.join(TOP, 'tools', 'bind'), '--module=zl', '--library=' + LIBRARY, '--output=.', 'zlib.h', 'zconf.h']
SCRIPT = 'import %s as m; assert m.zError(-3) == "data error"'
SWIG = '''%module zs
%{
#include <zlib.h>
%}
#define __attribute__(x)
%ignore gzvprintf;
%include "/usr/include/zconf.h"
%include "/usr/include/zlib.h"
'''
CFFI = '''from cffi import FFI
ffi = FFI()
ffi.cdef("const char *zError(int);")
z = ffi.dlopen("%s")
assert ffi.string(z.zError(-3)) == b"data error"
''' % LIBRARY


def seconds(commands):
    """The processor seconds of the commands, in a folder of their own; compilers' caches are off."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    for command in commands:
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=BUILT,
                                   env=dict(os.environ, CCACHE_DISABLE='1', LC_ALL='C',
                                            QUOREL_RUNTIME=os.path.join(BUILT, 'runtime')))
        log = process.communicate()[0]
        if process.returncode != 0:
            sys.exit('%s\n%s' % (' '.join(command), log))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def main():
    shutil.rmtree(BUILT, ignore_errors=True)
    os.makedirs(BUILT)
    for name, text in ('zs.i', SWIG), ('script.py', CFFI):
        with open(os.path.join(BUILT, name), 'w') as file:
            file.write(text)
    ours = [BIND, [sys.executable, '-c', SCRIPT % 'zl']]
    swig = [['swig', '-python', 'zs.i'],
            ['cc', '-O2', '-w', '-shared', '-fPIC', '-fno-strict-aliasing', '-isystem', os.environ['PYTHON2_INCLUDE_DIR'],
             'zs_wrap.c', '-o', '_zs.so', LIBRARY],
            [sys.executable, '-c', SCRIPT % 'zs']]
    print('| First script by | commands | lines written | CPU seconds |\n|---|---:|---:|---:|')
    first = seconds(ours)
    shutil.rmtree(os.path.join(BUILT, 'work'))
    for name, commands, lines, spent in (('tools/bind, the first time', ours, 0, first), ('tools/bind', ours, 0, seconds(ours)),
                                         ('SWIG', swig, len(SWIG.splitlines()), seconds(swig)),
                                         ('cffi', [1], 3, seconds([['/usr/bin/python3', 'script.py']]))):
        print('| %s | %d | %d | %.1f |' % (name, len(commands), lines, spent))


if __name__ == '__main__':
    main()
