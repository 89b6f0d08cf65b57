"""The property store and its file."""
import ctypes
import os
import resource
import shutil
import tempfile
import time
import unittest

import QuorelApiNew as q
from console import printed, properties, run, text_cells, text_in
from recording import library


class Config(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(self.reset)
        q.sal_config_init()
        self.before = properties()
        self.path = os.path.join(self.directory, 'config')

    def reset(self):
        for name, _ in properties():
            library.sal_config_set(name, None)
        for name, value in self.before:
            q.sal_config_set(name, value)
        q.sal_config_file_set('', '')
        shutil.rmtree(self.directory)

    def test_defaults_fill_in_what_is_missing(self):
        (name, default), (other, other_default) = self.before[:2]
        self.assertEqual(q.sal_config_set(name, 'mine'), 0)
        self.assertEqual(library.sal_config_set(other, None), 0)
        self.assertIsNone(q.sal_config_get(other))
        q.sal_config_init_defaults()
        self.assertEqual((q.sal_config_get(name), q.sal_config_get(other)), ('mine', other_default))

    def write(self, text, path=None):
        with open(path or self.path, 'wb') as out:
            out.write(text)

    def read(self, path=None):
        with open(path or self.path, 'rb') as text:
            return text.read()

    def test_properties_are_set_replaced_and_removed(self):
        self.assertIs(q.sal_config_get('absent'), None)
        for value in ('1', '', 'two words', 'x' * 1023):
            self.assertEqual(q.sal_config_set('some', value), q.BCM_E_NONE)
            self.assertEqual(q.sal_config_get('some'), value)
        self.assertEqual(library.sal_config_set('some', None), q.BCM_E_NONE)
        self.assertEqual(library.sal_config_set('some', None), q.BCM_E_NOT_FOUND)
        self.assertIs(q.sal_config_get('some'), None)
        for name in ('', 'two words', 'a=b', '#a', 'x' * 128, 'a\n'):
            self.assertEqual(q.sal_config_set(name, '1'), q.BCM_E_PARAM, name)
        for value in (' 1', '1\n', 'a\nb=c', 'x' * 1024, '\x01'):
            self.assertEqual(q.sal_config_set('some', value), q.BCM_E_PARAM, value)
        self.assertEqual(properties(), self.before)

    def test_the_store_is_gone_through_while_it_changes(self):
        for name in ('zz3', 'zz1', 'zz2'):
            q.sal_config_set(name, name.upper())
        self.assertEqual(properties()[-3:], [('zz1', 'ZZ1'), ('zz2', 'ZZ2'), ('zz3', 'ZZ3')])
        with text_cells(2) as (name, value):
            while text_in(name) != 'zz1':
                self.assertEqual(q.sal_config_get_next(name, value), q.BCM_E_NONE)
            for removed in ('zz1', 'zz2'):
                library.sal_config_set(removed, None)
            self.assertEqual(q.sal_config_get_next(name, value), q.BCM_E_NONE)
            self.assertEqual((text_in(name), text_in(value)), ('zz3', 'ZZ3'))
        with text_cells(2) as (name, value):
            ctypes.memset(int(name), 16, 8)
            self.assertEqual(q.sal_config_get_next(name, value), q.BCM_E_PARAM)

    def test_a_unit_sees_its_own_value_first(self):
        q.sal_config_set('colour', 'red')
        q.sal_config_set('colour.3', 'blue')
        for unit, colour in ((0, 'red'), (3, 'blue'), (33, 'red')):
            self.assertEqual(run('config get colour', unit), (q.CMD_OK, colour + '\n'))
        self.assertIs(q.sal_config_get('colour.0'), None)

    def test_files_are_read_whole_or_not_at_all(self):
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_CONFIG)
        q.sal_config_file_set(self.path, '')
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_NOT_FOUND)
        self.write('# comment\n\n  speed = 5 \r\nname=a=b\nspeed=6\nempty=')
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_NONE)
        read = properties()
        self.assertEqual([q.sal_config_get(name) for name in ('speed', 'name', 'empty', 'l2_age_timer')],
                         ['6', 'a=b', '', '300'])
        for damage in ('speed', '=5', 'two words=1', 'a=\x00', 'a=' + 'x' * 1024, '\xff' * 4096):
            self.write('first=1\n' + damage + '\nlast=1\n')
            self.assertEqual(q.sal_config_refresh(), q.BCM_E_CONFIG, damage[:20])
            self.assertEqual(properties(), read)
        for path in (self.directory, '/dev/zero'):
            q.sal_config_file_set(path, '')
            self.assertEqual(q.sal_config_refresh(), q.BCM_E_FAIL)
        self.assertEqual(properties(), read)

    def test_flush_writes_what_refresh_reads(self):
        beside = os.path.join(self.directory, 'beside')
        q.sal_config_file_set(self.path, beside)
        with text_cells(2) as (file_name, other_name):
            self.assertEqual(q.sal_config_file_get(file_name, other_name), q.BCM_E_NONE)
            self.assertEqual((text_in(file_name), text_in(other_name)), (self.path, beside))
        q.sal_config_set('kept', 'as it is')
        self.assertEqual(q.sal_config_flush(), q.BCM_E_NONE)
        self.assertEqual(os.listdir(self.directory), ['config'])
        written = properties()
        q.sal_config_set('kept', 'otherwise')
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_NONE)
        self.assertEqual(properties(), written)
        os.remove(self.path)
        self.assertEqual(q.sal_config_flush(), q.BCM_E_NONE)
        self.assertFalse(os.path.exists(self.path))
        self.assertEqual(printed(q.sal_config_show)[1], ''.join('%s=%s\n' % pair for pair in written))

    def test_save_by_pattern_and_append(self):
        for name in ('port_a', 'port_b', 'other'):
            q.sal_config_set(name, '1')
        self.assertEqual(q.sal_config_save(self.path, 'port_[ab]', 0), q.BCM_E_NONE)
        self.assertEqual(self.read(), 'port_a=1\nport_b=1\n')
        self.write('no line end')
        os.chmod(self.path, 0o640)
        self.assertEqual(q.sal_config_save(self.path, 'oth?r', 1), q.BCM_E_NONE)
        self.assertEqual(self.read(), 'no line end\nother=1\n')
        self.assertEqual(os.stat(self.path).st_mode & 0o777, 0o640)
        self.assertEqual(q.sal_config_save(self.path, 'nothing', 0), q.BCM_E_NOT_FOUND)
        self.assertEqual(q.sal_config_save('', '', 0), q.BCM_E_PARAM)
        link = os.path.join(self.directory, 'link')
        os.symlink(self.path, link)
        self.assertEqual(q.sal_config_save(link, '', 0), q.BCM_E_NONE)
        self.assertTrue(os.path.islink(link))
        self.assertEqual(self.read(), printed(q.sal_config_show)[1])

    def test_a_failing_write_leaves_the_old_file(self):
        q.sal_config_set('long', 'x' * 1000)
        self.write('old=1\n')
        q.sal_config_file_set(self.path, '')
        limits = resource.getrlimit(resource.RLIMIT_FSIZE)
        resource.setrlimit(resource.RLIMIT_FSIZE, (100, limits[1]))
        try:
            self.assertEqual(q.sal_config_flush(), q.BCM_E_FAIL)
            self.assertEqual(q.sal_config_save(self.path, '', 1), q.BCM_E_FAIL)
        finally:
            resource.setrlimit(resource.RLIMIT_FSIZE, limits)
        self.assertEqual((self.read(), os.listdir(self.directory)), ('old=1\n', ['config']))
        for path in (self.directory, os.path.join(self.directory, 'no', 'file'), '/dev/null'):
            self.assertEqual(q.sal_config_save(path, '', 0), q.BCM_E_FAIL, path)

    def test_the_second_name_may_be_the_file_itself(self):
        names = [self.path] + [os.path.join(self.directory, name) for name in ('hard', 'soft', 'folder/config')]
        os.symlink('.', os.path.join(self.directory, 'folder'))
        limits = resource.getrlimit(resource.RLIMIT_FSIZE)
        for number, beside in enumerate(names):
            self.write('old=1\n')
            for link, make in ((names[1], os.link), (names[2], os.symlink)):
                if beside == link:
                    make(self.path, link)
            q.sal_config_file_set(self.path, beside)
            self.assertEqual(q.sal_config_refresh(), 0)
            q.sal_config_set('new', str(number) * 1000)
            before = sorted(os.listdir(self.directory))
            resource.setrlimit(resource.RLIMIT_FSIZE, (100, limits[1]))
            try:
                self.assertEqual(q.sal_config_flush(), q.BCM_E_FAIL, beside)
            finally:
                resource.setrlimit(resource.RLIMIT_FSIZE, limits)
            self.assertEqual(self.read(), 'old=1\n', beside)
            self.assertEqual([name for name in os.listdir(self.directory) if name not in before], [])
            self.assertEqual(q.sal_config_flush(), q.BCM_E_NONE, beside)
            self.assertIn('new=%d' % number, self.read())
            self.assertEqual([name for name in os.listdir(self.directory) if name not in before], [])

    def test_the_second_name_is_never_a_device_or_a_folder(self):
        self.write('old=1\n')
        pipe = os.path.join(self.directory, 'pipe')
        os.mkfifo(pipe)
        for beside in (pipe, self.directory):
            kind = os.stat(beside).st_mode
            q.sal_config_file_set(self.path, beside)
            self.assertEqual(q.sal_config_refresh(), 0)
            q.sal_config_set('new', '1')
            self.assertEqual(q.sal_config_flush(), q.BCM_E_FAIL)
            self.assertEqual((self.read(), os.stat(beside).st_mode), ('old=1\n', kind))

    def test_a_byte_order_mark_is_no_part_of_a_name(self):
        self.write('\xef\xbb\xbffirst=1\nsecond=2\n')
        q.sal_config_file_set(self.path, '')
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_NONE)
        self.assertEqual((q.sal_config_get('first'), q.sal_config_get('second')), ('1', '2'))
        self.write('\n\xef\xbb\xbffirst=3\n')
        self.assertEqual(q.sal_config_refresh(), q.BCM_E_NONE)
        self.assertEqual(q.sal_config_get('\xef\xbb\xbffirst'), '3')

    def test_going_through_takes_time_by_the_number_of_properties(self):
        def seconds(count):
            for number in range(count):
                q.sal_config_set('p%06d' % number, '1')
            name, value = ctypes.c_char_p(), ctypes.c_char_p()
            begun = time.clock()
            while library.sal_config_get_next(ctypes.byref(name), ctypes.byref(value)) == 0:
                pass
            return time.clock() - begun
        few = min(seconds(1000) for _ in range(3))
        # Sixteen times as many; by their square it would be 256 times as long.
        self.assertLess(seconds(16000), few * 80)


if __name__ == '__main__':
    unittest.main()
