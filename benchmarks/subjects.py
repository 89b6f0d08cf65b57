"""Builds what is compared: the SWIG wrapper of the same headers, the floor, the obvious code, and the module
itself once more where the building is what is measured."""
import os
import re
import resource
import shutil
import subprocess

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
RELEASE_BUILD = os.path.join(TOP, 'build', 'release')
RELEASE = os.path.join(RELEASE_BUILD, 'lib')
BUILT = os.path.join(TOP, 'build', 'benchmark')
SDK_INCLUDE = os.path.join(TOP, 'sdk', 'include')
PYTHON_INCLUDE = os.environ['PYTHON2_INCLUDE_DIR']  # as tools/python2 names it

# For the same systems as the module is.
with open(os.path.join(RELEASE_BUILD, 'target_flags')) as flags:
    TARGET_FLAGS = flags.read().split()
COMPILE = ['gcc', '-O2', '-DNDEBUG', '-fPIC'] + TARGET_FLAGS

# The same pointer classes and arrays as interface/pointers.toml declares.
_SWIG_INTERFACE = '''\
%%module swig_sdk
// A member of this name would hide Python's own in the classes that SWIG writes.
%%rename(property_) property;
%%{
%(includes)s
%%}
%%include <cpointer.i>
%%include <carrays.i>
%%import <shared/bitop.h>
%%import <shared/pbmp.h>
%(wrapped)s
%(pointers)s
%(arrays)s
'''


class CommandFailed(Exception):
    pass


def run(command):
    """Runs a command and returns the processor seconds that it and its children took."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=TOP)
    log, _ = process.communicate()
    if process.returncode != 0:
        raise CommandFailed('%s\n%s' % (' '.join(command), log))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def extension(source, name):
    """Compiles one C file into an extension module; returns the processor seconds."""
    target = os.path.join(BUILT, name + '.so')
    unlinked = os.path.join(BUILT, name + '.o')
    include = ['-I' + SDK_INCLUDE, '-isystem', PYTHON_INCLUDE]
    seconds = run(COMPILE + include + ['-fno-strict-aliasing', '-c', source, '-o', unlinked])
    return seconds + run(['gcc', '-shared', unlinked, '-o', target, '-L' + RELEASE, '-lQuorelApiNew',
                          '-Wl,-rpath,' + RELEASE] + TARGET_FLAGS)


def floor_and_obvious():
    for name in ('floor', 'obvious'):
        extension(os.path.join(TOP, 'benchmarks', name + '.c'), name)


def packets():
    """Links the program that sends packets with the simulated switch alone; returns its path."""
    program = os.path.join(BUILT, 'packets')
    run(['g++', '-std=c++17', '-O2', '-DNDEBUG', '-I' + SDK_INCLUDE, os.path.join(TOP, 'benchmarks', 'packets.cpp'),
         '-o', program, '-Wl,--whole-archive', os.path.join(RELEASE, 'libsimulated_switch.a'),
         '-Wl,--no-whole-archive', '-pthread'])
    return program


def swig():
    """Makes swig_sdk.py and _swig_sdk.so; returns the processor seconds of generating and compiling."""
    interface = os.path.join(BUILT, 'swig_sdk.i')
    wrapper = os.path.join(BUILT, 'swig_sdk_wrap.c')
    with open(interface, 'w') as file:
        file.write(_swig_interface())
    seconds = run(['swig', '-python', '-I' + SDK_INCLUDE, '-outdir', BUILT, '-o', wrapper, interface])
    return seconds + extension(wrapper, '_swig_sdk')


def module_cpu_seconds():
    """Generates and compiles the module from nothing, one file after the other; the generator and the libraries
    that it is linked with are ready."""
    directory = os.path.join(BUILT, 'module')
    shutil.rmtree(directory, ignore_errors=True)
    # Linking with the ready SDK library leaves the simulated switch out of what is built.
    run(['cmake', '--preset', 'release', '-B', directory, '-DPYTHON2_INCLUDE_DIR=' + PYTHON_INCLUDE,
         '-DQUOREL_TARGET_FLAGS=' + ' '.join(TARGET_FLAGS),
         '-DQUOREL_SDK_INCLUDE_DIR=' + SDK_INCLUDE,
         '-DQUOREL_SDK_LIBRARY=' + os.path.join(RELEASE, 'libQuorelApiNew.so.0')])
    run(['cmake', '--build', directory, '--target', 'generate', 'python_mdio_access', 'quorel_types', 'vey'])
    return run(['cmake', '--build', directory, '--target', 'binding', '--parallel', '1'])


def stripped_size(module):
    copy = os.path.join(BUILT, 'stripped.so')
    run(['strip', '-o', copy, module])
    return os.path.getsize(copy)


def _swig_interface():
    headers, pointers, arrays = [], [], []
    with open(os.path.join(TOP, 'interface', 'binding.toml')) as file:
        families = re.findall(r'"(\w+)"', re.search(r'families = \[(.*?)\]', file.read(), re.S).group(1))
    for family in families:
        with open(os.path.join(TOP, 'interface', family + '.toml')) as file:
            text = file.read()
        listed = re.search(r'^headers = \[(.*?)\]', text, re.M | re.S)
        # Those of the platform are C++.
        headers += [header for header in re.findall(r'"([^"]+)"', listed.group(1) if listed else '')
                    if os.path.exists(os.path.join(SDK_INCLUDE, header))]
        pointers += re.findall(r'^(\w+) = \{ element = "([^"]+)"', text, re.M)
        section = text.partition('\n[arrays]\n')[2].partition('\n[')[0]
        arrays += re.findall(r'^(\w+) = "([^"]+)"', section, re.M)
    return _SWIG_INTERFACE % {
        'includes': '\n'.join('#include <%s>' % header for header in headers),
        'wrapped': '\n'.join('%%include <%s>' % header for header in headers),
        'pointers': '\n'.join('%%pointer_class(%s, %s)' % (element, name) for name, element in pointers),
        'arrays': '\n'.join('%%array_functions(%s, %s)' % (element, name) for name, element in arrays),
    }
