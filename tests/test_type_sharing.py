"""Types shared with a module that the system's SWIG made, in both import orders, each in a process of its own."""
import os
import subprocess
import sys
import unittest

SCRIPT = '''
import sys
sys.path.insert(0, %r)
%s
import _QuorelApiNew, _second

# Pointers made by either are accepted by the other under the same type name.
ours, theirs = QuorelApiNew.bcm_l2_addr_t(), second.bcm_l2_addr_t()
ours.flags, theirs.flags = 5, 6
print second.read_flags(ours), QuorelApiNew.bcm_l2_addr_t_flags_get(theirs)
print _second.read_flags(ours.this), _QuorelApiNew.bcm_l2_addr_t_flags_get(theirs.this)
print second.read_flags(None)

# So are those that a cast joins: both modules have intp and its cast to int.
number, their_number = QuorelApiNew.intp(), second.intp()
number.assign(7)
their_number.assign(8)
print second.read_int(number), second.read_int(number.cast())
print QuorelApiNew.intp_value(their_number), QuorelApiNew.bcm_port_enable_get(0, 1, their_number), their_number.value()

# A class registered by either makes the results of both.
print QuorelApiNew.bcm_l2_addr_get(0, '02:00:00:00:00:01', 1)[1].__class__.__module__
print theirs.this.own(), ours.this.own(), (ours.this == theirs.this), type(ours.this).__name__

# A type of one module alone is no type of the other.
for call, argument in ((second.read_flags, QuorelApiNew.uint32p()), (QuorelApiNew.bcm_l2_addr_t_flags_get, second.only_here()),
                       (second.read_int, QuorelApiNew.uint32p())):
    try:
        print call(argument)
    except TypeError, error:
        print 'refused'

# Chains mix both kinds of object.
link = _QuorelApiNew.new_uint32p()
link.append(_second.new_bcm_l2_addr_t())
print _QuorelApiNew.bcm_l2_addr_t_flags_get(link), _second.read_flags(link)
# Who comes later finds both.
import type_table
print len(type_table.ring_sizes()), type_table.ring_sizes()[-1]
del ours, theirs, number, their_number, link, error
print 'end'
'''


class TypeSharing(unittest.TestCase):
    def check(self, imports, last_registered, options=''):
        script = SCRIPT % (os.environ['QUOREL_SECOND'], imports)
        # The class registered last frees what either module made; both heaps are the C library's.
        options = os.environ.get('ASAN_OPTIONS', '') + ':alloc_dealloc_mismatch=0' + options
        process = subprocess.Popen([sys.executable, '-c', script], env=dict(os.environ, ASAN_OPTIONS=options),
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        output = process.communicate()[0]
        self.assertEqual(process.returncode, 0, output)
        self.assertEqual(output.splitlines(), [
            '5 6', '5 6', '0', '7 7', '8 0 1', last_registered, 'True True False SwigPyObject',
            'refused', 'refused', 'refused', '0 0', '2 907', 'end'], output)

    def test_ours_first(self):
        # SWIG's own runtime loses the description of the class that was registered before.
        self.check('import QuorelApiNew\nimport second', 'second', ':detect_leaks=0')

    def test_theirs_first(self):
        self.check('import second\nimport QuorelApiNew', 'QuorelApiNew')

    def test_owned_objects_are_freed_after_the_others_capsule(self):
        script = '''
import sys
sys.path.insert(0, %r)
import second, QuorelApiNew as q
entry, number = q.bcm_l2_addr_t(), q.intp()
del sys.modules['swig_runtime_data4']
del entry, number
print 'freed'
''' % os.environ['QUOREL_SECOND']
        self.assertEqual(subprocess.check_output([sys.executable, '-c', script]), 'freed\n')

    def test_a_second_start_in_one_process_merges_nothing_twice(self):
        script = '''
import sys, ctypes
import QuorelApiNew as first
kept = first.bcm_l2_addr_t()
module = sys.modules.pop('_QuorelApiNew')
start = ctypes.PyDLL(module.__file__).init_QuorelApiNew
start.restype = None
for _ in range(3):
    start()
second = sys.modules['_QuorelApiNew']
kept.vid = 12
print second.bcm_l2_addr_t_vid_get(kept), first.bcm_l2_addr_t_vid_get(second.new_bcm_l2_addr_t())
print second.bcm_port_enable_get(0, 1, first.intp()), str(second.cvar) == str(first.cvar)
'''
        output = subprocess.check_output([sys.executable, '-c', script], stderr=subprocess.STDOUT)
        self.assertEqual(output.splitlines(), ['12 0', '0 True'])

    def test_what_a_second_start_makes_can_be_freed(self):
        # As after an import that failed, and when the interpreter has ended and begun again.
        script = '''
import ctypes, gc, sys
starts = []
for _ in range(3):
    for start in starts:
        start()
    import _QuorelApiNew, _quorel, quorel, QuorelApiNew as q
    entry, memory = q.bcm_l2_addr_t(vid=12), quorel.array('int', [1, 2])
    visit = quorel.callback(q.bcm_l2_traverse, lambda *arguments: 0)
    print entry.vid, list(memory), q.bcm_l2_traverse(0, visit, None)
    starts = starts or [ctypes.PyDLL(_QuorelApiNew.__file__).init_QuorelApiNew,
                        ctypes.PyDLL(_quorel.__file__).init_quorel]
    del _QuorelApiNew, _quorel, quorel, q, entry, memory, visit
    for name in [name for name in sys.modules if 'uorel' in name]:
        del sys.modules[name]
    gc.collect()
'''
        output = subprocess.check_output([sys.executable, '-c', script], stderr=subprocess.STDOUT)
        self.assertEqual(output.splitlines(), ['12 [1, 2] 0'] * 3)


if __name__ == '__main__':
    unittest.main()
