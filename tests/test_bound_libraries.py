"""zlib, SQLite and libpcap, bound from their headers as they are, by tools/bind: real jobs, in one process.

The modules know of each other and of QuorelApiNew: a type that two of them have is the same.
"""
import ctypes
import gzip
import os
import shutil
import subprocess
import sys
import unittest
import zlib as reference

import QuorelApiNew as q
from files import FolderTest
from test_constructs import FLAGS, SOURCES, bind

LIBRARIES = (('zlib', 'z', 'zl'), ('sqlite', 'sqlite3', 'sq'), ('pcap', 'pcap', 'pc'))


def library_file(name):
    command = [os.environ.get('CC', 'cc'), '-print-file-name=lib%s.so' % name] + FLAGS
    return os.path.realpath(subprocess.check_output(command, env=dict(os.environ, LD_PRELOAD='')).strip())


class BoundLibraries(FolderTest):
    @classmethod
    def make(cls):
        cls.logs = {}
        sys.path.insert(0, cls.directory)
        for family, library, module in LIBRARIES:
            interface = cls.path(family)
            os.mkdir(interface)
            shutil.copy(os.path.join(SOURCES, 'tests/libraries', family + '.toml'), interface)
            with open(os.path.join(interface, 'binding.toml'), 'w') as file:
                file.write('families = ["%s"]\nstrict = false\n' % family)
            cls.logs[family] = bind(cls.directory, '--module=' + module, '--library=' + library_file(library),
                                    '--include=' + os.path.join(SOURCES, 'tests/libraries'),
                                    '--interface=' + interface, '--output=.')
            with open(cls.path('report.tsv')) as file:
                cls.logs[family] = [line.rstrip('\n').split('\t') for line in file]
            os.remove(cls.path('report.tsv'))
            shutil.rmtree(cls.path('work'))
            setattr(cls, module, __import__(module))

    def refused(self, family):
        return [row[1] for row in self.logs[family] if row[3] == 'refused' and
                not row[4].startswith(('a variable number', 'no library exports')) and "'va_list'" not in row[4]]

    def test_all_that_can_be_is_bound(self):
        for family, _, _ in LIBRARIES:
            self.assertEqual(self.refused(family), [])

    def test_compress_and_expand(self):
        zl, data = self.zl, ''.join('line %d\n' % i for i in range(20000))
        file = zl.gzopen(self.path('data.gz'), 'wb9')
        self.assertEqual(zl.gzwrite(file, data), len(data))
        self.assertEqual(zl.gzclose(file), zl.Z_OK)
        self.assertEqual(gzip.open(self.path('data.gz')).read(), data)
        room = zl.new_byteArray(len(data))
        file = zl.gzopen(self.path('data.gz'), 'rb')
        self.assertEqual(zl.gzread(file, room, len(data)), len(data))
        self.assertEqual((zl.gzeof(file), zl.gzclose(file)), (0, zl.Z_OK))
        self.assertEqual(ctypes.string_at(int(room), len(data)), data)
        # Lengths are as wide as the host's long.
        size = zl.ulongp()
        size.assign(len(data))
        self.assertEqual(zl.compress2(room, size, data, 9), zl.Z_OK)
        self.assertEqual(reference.decompress(ctypes.string_at(int(room), size.value())), data)
        packed = ctypes.string_at(int(room), size.value())
        size.assign(len(data))
        self.assertEqual((zl.uncompress(room, size, bytearray(packed)), size.value()), (zl.Z_OK, len(data)))
        self.assertEqual(ctypes.string_at(int(room), len(data)), data)
        for checksum in 'crc32', 'crc32_z', 'adler32':
            self.assertEqual(getattr(zl, checksum)(1, data), getattr(reference, checksum.split('_')[0])(data, 1) & 0xffffffff)
        if ctypes.sizeof(ctypes.c_long) == 8:
            self.assertEqual(zl.compressBound(2 ** 40) > 2 ** 40, True)
        self.assertRaises(OverflowError, zl.compressBound, 2 ** 64)
        zl.delete_byteArray(room)

    def test_a_table_of_10000_rows(self):
        sq = self.sq
        status, database = sq.sqlite3_open(':memory:')
        self.assertEqual(status, sq.SQLITE_OK)

        def execute(sql, call=None):
            status = sq.sqlite3_exec(database, sql, call, None)
            self.assertEqual(status, sq.SQLITE_OK, sq.sqlite3_errmsg(database))
        execute('create table ports (id integer primary key, name text, rate real, bytes integer); begin')
        status, insert = sq.sqlite3_prepare_v2(database, 'insert into ports values (?, ?, ?, ?)', -1, None)
        for i in range(10000):
            sq.sqlite3_bind_int(insert, 1, i)
            name = 'port %d' % i
            sq.sqlite3_bind_text(insert, 2, name, -1, None)
            sq.sqlite3_bind_double(insert, 3, i / 4.0)
            sq.sqlite3_bind_int64(insert, 4, i << 30)
            self.assertEqual(sq.sqlite3_step(insert), sq.SQLITE_DONE)
            sq.sqlite3_reset(insert)
        sq.sqlite3_finalize(insert)
        rows = []
        execute('commit; select id, name, rate, bytes, null from ports', lambda values, names: rows.append((values, names)))
        self.assertEqual(len(rows), 10000)
        self.assertEqual(rows[9], (['9', 'port 9', '2.25', str(9 << 30), None], ['id', 'name', 'rate', 'bytes', 'null']))
        status, query = sq.sqlite3_prepare_v2(database, 'select sum(bytes), avg(rate) from ports', -1, None)
        self.assertEqual(sq.sqlite3_step(query), sq.SQLITE_ROW)
        self.assertEqual(sq.sqlite3_column_int64(query, 0), sum(range(10000)) << 30)
        self.assertEqual(sq.sqlite3_column_double(query, 1), 4999.5 / 4)
        sq.sqlite3_finalize(query)
        with self.assertRaises(ZeroDivisionError):
            sq.sqlite3_exec(database, 'select 1', lambda values, names: 1 // 0, None)
        self.assertEqual(sq.sqlite3_close(database), sq.SQLITE_OK)

    def test_a_capture_with_a_filter(self):
        pc = self.pc
        frames = ['\x02\0\0\0\0\1' + '\x02\0\0\0\0\2' + type + chr(i) * 46
                  for i, type in enumerate(['\x08\0', '\x08\6', '\x08\0', '\x86\xdd'])]
        dead = pc.pcap_open_dead(pc.DLT_EN10MB, 65535)
        file = pc.pcap_dump_open(dead, self.path('some.pcap'))
        for i, frame in enumerate(frames):
            pc.pcap_write(file, 1000 + i, frame)
        pc.pcap_dump_close(file)
        program = pc.bpf_program()
        self.assertEqual(pc.pcap_compile(dead, program, 'ip', 1, 0), 0)
        self.assertTrue(program.bf_len > 1)
        pc.pcap_close(dead)
        capture = pc.pcap_open_offline(self.path('some.pcap'), '\0' * pc.PCAP_ERRBUF_SIZE)
        self.assertEqual(pc.pcap_setfilter(capture, program), 0)
        header, found = pc.pcap_pkthdr(), []
        while True:
            packet = pc.pcap_next(capture, header)
            if packet is None:
                break
            found.append((header.ts.tv_sec, ctypes.string_at(int(packet), header.caplen)))
        self.assertEqual(found, [(1000, frames[0]), (1002, frames[2])])
        pc.pcap_freecode(program)
        pc.pcap_close(capture)

    def test_types_are_shared(self):
        room = self.zl.new_byteArray(2)
        q.uint8Array_setitem(room, 1, 7)
        self.assertEqual((self.zl.byteArray_getitem(room, 1), q.uint8Array_getitem(room, 1)), (7, 7))
        q.delete_uint8Array(room)
        self.assertRaises(TypeError, q.uint8Array_getitem, self.zl.z_stream(), 0)


if __name__ == '__main__':
    unittest.main()
