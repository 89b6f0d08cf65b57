"""Packets of the CPU: what it is given and why, who takes it, and what it sends."""
import ctypes
import sys
import unittest
import zlib

import QuorelApiNew as q
from quorel import OUT, StatusError, array, as_dict, callback, checked, sim
from type_table import pointer_at

A, B, C = ['02:00:00:00:00:0%d' % number for number in (1, 2, 3)]
CPU = 0


def bytes_of(packet):
    block = packet.pkt_data
    return ctypes.string_at(int(block.data), block.len)


def reasons_of(packet):
    return [name[len('bcmRxReason'):] for name in as_dict(packet)['rx_reasons']]


kept = []  # what records point to


def packet_of(frame, **members):
    data = array('uint8', frame)
    block = q.bcm_pkt_blk_t(data=data, len=len(data))
    kept.append((data, block))
    return q.bcm_pkt_s(pkt_data=block, blk_count=1, **members)


class CpuTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.seen = []
        del kept[:]

    def receive(self, function=None, priority=10, answer=q.BCM_RX_HANDLED, **queue):
        """A callback that notes what it is given; reception runs."""
        def take(unit, packet, cookie):
            self.seen.append((packet.rx_port, bytes_of(packet), reasons_of(packet)))
            return answer
        made = callback('bcm_rx_cb_f', function or take)
        self.register(made, priority, **queue)
        if not q.bcm_rx_active(0):
            checked(q.bcm_rx_start, 0, None)
        return made

    def register(self, made, priority, cosq=None):
        if cosq is None:
            checked(q.bcm_rx_register, 0, 'test', made, priority, None, 0)
        else:
            checked(q.bcm_rx_queue_register, 0, 'test', cosq, made, priority, None, 0)

    def to_cpu(self, **members):
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, B, 1)
        for name, value in dict(members, flags=members.get('flags', 0) | q.BCM_L2_STATIC).items():
            setattr(address, name, value)
        checked(q.bcm_l2_addr_add, 0, address)


class Reception(CpuTest):
    def test_why_packets_come(self):
        self.receive()
        checked(q.bcm_vlan_port_add, 0, 1, [CPU], [])
        cases = [('01:80:c2:00:00:00', 0x0026, ['Bpdu']), ('01:80:c2:00:00:02', 0x8809, ['SlowProtocol', 'Lacp']),
                 ('01:80:c2:00:00:03', 0x888e, ['Eapol']), ('01:80:c2:00:00:0e', 0x88cc, ['Lldp']),
                 ('01:80:c2:00:00:05', 0x88b5, ['ReservedMulticast']), ('ff:ff:ff:ff:ff:ff', 0x88b5, ['Control']),
                 ('01:00:5e:00:00:01', 0x88b5, ['MulticastMiss']), (C, 0x88b5, ['L2DestMiss'])]
        for address, kind, reasons in cases:
            frame = sim.ethernet(address, A, kind=kind, payload=b'\1' * 46)
            left = self.switch.send(1, frame)
            self.assertEqual(self.seen, [(1, dict(left)[CPU], reasons)])
            del self.seen[:]
        self.to_cpu(port=CPU)
        self.switch.send(1, sim.ethernet(B, A))
        self.to_cpu(port=5, flags=q.BCM_L2_COPY_TO_CPU)
        self.assertEqual([port for port, _ in self.switch.send(1, sim.ethernet(B, A))], [CPU, 5])
        self.assertEqual([reasons for _, _, reasons in self.seen], [['Control'], ['L2DestMarked']])

    def test_copies_of_protocols(self):
        self.receive()

        def ip4(protocol, carried):
            return 0x800, b'\x45\0\0\x40' + b'\0' * 5 + bytearray([protocol]) + b'\0' * 10 + carried

        def ip6(carried, before=b''):
            return 0x86dd, b'\x60\0\0\0\0\x20' + before[:1] + b'\x40' + b'\0' * 32 + before[1:] + carried
        ports = {'dhcp': b'\0\x44\0\x43', 'rip': b'\2\x08\2\x08', 'bgp': b'\x90\0\0\xb3', 'dhcp6': b'\2\x22\2\x23'}
        hop_by_hop = b'\0\x3a\0\5\2\0\0\1\0'
        cases = [(q.bcmSwitchArpRequestToCpu, (0x806, b'\0\1\x08\0\6\4\0\1'), 'Arp'),
                 (q.bcmSwitchArpReplyToCpu, (0x806, b'\0\1\x08\0\6\4\0\2'), 'ArpReply'),
                 (q.bcmSwitchDhcpPktToCpu, ip4(17, ports['dhcp']), 'Dhcp'),
                 (q.bcmSwitchRipPktToCpu, ip4(17, ports['rip']), 'Rip'),
                 (q.bcmSwitchBgpPktToCpu, ip4(6, ports['bgp']), 'Bgp'),
                 (q.bcmSwitchIgmpQueryToCpu, ip4(2, b'\x11'), 'IgmpQuery'),
                 (q.bcmSwitchIgmpPktToCpu, ip4(2, b'\x16'), 'IgmpReport'),
                 (q.bcmSwitchIgmpReportLeaveToCpu, ip4(2, b'\x17'), 'IgmpLeave'),
                 (q.bcmSwitchOspfPktToCpu, ip4(89, b''), 'Ospf'), (q.bcmSwitchPimPktToCpu, ip4(103, b''), 'Pim'),
                 (q.bcmSwitchVrrpPktToCpu, ip4(112, b''), 'Vrrp'),
                 (q.bcmSwitchNdPktToCpu, ip6(b'\x87', b'\x3a'), 'NeighborSolicit'),
                 (q.bcmSwitchMldPktToCpu, ip6(b'\x8f', hop_by_hop), 'MldReport'),
                 (q.bcmSwitchDhcp6PktToCpu, ip6(ports['dhcp6'], b'\x11'), 'Dhcp6')]
        self.switch.send(2, sim.ethernet(C, B))
        frames = [sim.ethernet(B, A, bytes(payload), kind) for _, (kind, payload), _ in cases]
        for frame in frames:
            self.switch.arrive(1, frame)
        self.assertEqual(self.seen, [])
        for (control, _, reason), frame in zip(cases, frames):
            checked(q.bcm_switch_control_set, 0, control, 1)
            self.assertEqual(checked(q.bcm_switch_control_get, 0, control, OUT), 1)
            self.assertEqual([port for port, _ in self.switch.send(1, frame)], [CPU, 2])
            checked(q.bcm_switch_control_set, 0, control, 0)
            self.assertEqual(self.seen.pop()[2], [reason])
            for other in frames:
                self.switch.arrive(1, other)
            self.assertEqual(self.seen, [])

    def test_copies_of_unknown_destinations(self):
        self.receive()
        unicast, group = sim.ethernet(B, A), sim.ethernet('01:00:5e:00:00:01', A)
        for control, copied, reason in ((q.bcmSwitchUnknownUcastToCpu, unicast, 'L2DestMiss'),
                                        (q.bcmSwitchUnknownMcastToCpu, group, 'MulticastMiss')):
            checked(q.bcm_switch_control_set, 0, control, 1)
            for frame in (unicast, group, sim.ethernet('ff:ff:ff:ff:ff:ff', A)):
                self.switch.arrive(1, frame)
            checked(q.bcm_switch_control_set, 0, control, 0)
            self.assertEqual([reasons for _, _, reasons in self.seen], [[reason]])
            del self.seen[:]

    def test_the_record(self):
        records = []

        def take(unit, packet, cookie):
            records.append((packet.unit, packet.src_port, packet.rx_port, packet.vlan, packet.vlan_pri,
                            packet.rx_untagged, packet.pkt_len, packet.tot_len, packet.dest_port, packet.opcode, packet.flags,
                            packet.rx_timestamp))
            return q.BCM_RX_HANDLED
        self.receive(take)
        self.to_cpu(port=CPU)
        sim.advance(0.5)
        at = int(sim.now() * 1e9) & 0xffffffff
        self.switch.arrive(3, sim.ethernet(B, A))
        self.switch.arrive(4, sim.ethernet(B, A, vlan=1, priority=6))
        checked(q.bcm_vlan_port_add, 0, 1, [CPU], [CPU])
        self.switch.arrive(3, sim.ethernet(B, A))
        untagged = q.BCM_PKT_F_NO_VTAG
        self.assertEqual([record[:-1] for record in records],
                         [(0, 3, 3, 1, 0, 1, 64, 64, CPU, q.BCM_PKT_OPCODE_CPU, 0),
                          (0, 4, 4, 1, 6, 0, 60, 60, CPU, q.BCM_PKT_OPCODE_CPU, 0),
                          (0, 3, 3, 1, 0, 1, 60, 60, CPU, q.BCM_PKT_OPCODE_CPU, untagged)])
        self.assertTrue(all(abs(record[-1] - at) < 1000 for record in records))

    def test_callbacks_by_priority(self):
        asked = []

        def asks(name, answer):
            def take(unit, packet, cookie):
                asked.append(name)
                return answer
            return take
        self.receive(asks('low', q.BCM_RX_HANDLED), 1)
        second = self.receive(asks('second', q.BCM_RX_NOT_HANDLED), 9)
        self.receive(asks('third', q.BCM_RX_NOT_HANDLED), 9)
        self.receive(asks('high', q.BCM_RX_NOT_HANDLED), 255)
        self.receive(asks('other queue', q.BCM_RX_HANDLED), 200, cosq=4)
        bpdu = sim.ethernet('01:80:c2:00:00:00', A)
        self.switch.arrive(1, bpdu)
        self.assertEqual(asked, ['high', 'second', 'third', 'low'])
        self.assertEqual(q.bcm_rx_register(0, 'again', second, 9, None, 0), q.BCM_E_EXISTS)
        checked(q.bcm_rx_unregister, 0, second, 9)
        self.assertEqual(q.bcm_rx_unregister(0, second, 9), q.BCM_E_NOT_FOUND)
        del asked[:]
        checked(q.bcm_rx_stop, 0, None)
        self.switch.arrive(1, bpdu)
        self.assertEqual((asked, q.bcm_rx_active(0)), ([], 0))

    def test_a_callback_changes_the_list(self):
        asked = []

        def first(unit, packet, cookie):
            asked.append('first')
            q.bcm_rx_unregister(0, second, 5)
            q.bcm_rx_register(0, 'third', third, 1, None, 0)
            return q.BCM_RX_NOT_HANDLED

        def note(name):
            return lambda unit, packet, cookie: asked.append(name) or q.BCM_RX_NOT_HANDLED
        self.receive(first, 9)
        second, third = self.receive(note('second'), 5), callback('bcm_rx_cb_f', note('third'))
        bpdu = sim.ethernet('01:80:c2:00:00:00', A)
        self.switch.arrive(1, bpdu)
        self.assertEqual(asked, ['first'])
        self.switch.arrive(1, bpdu)
        self.assertEqual(asked, ['first', 'first', 'third'])

    def test_a_callback_ends_reception_or_the_unit(self):
        for end in (lambda: q.bcm_rx_clear(0), lambda: q.bcm_rx_init(0), lambda: q.bcm_detach(0),
                    lambda: q.bcm_clear(0)):
            self.switch.fresh()

            def take(unit, packet, cookie):
                self.seen.append(end())
                return q.BCM_RX_NOT_HANDLED
            self.receive(take, 9)
            kept = self.receive(priority=1)
            self.switch.arrive(1, sim.ethernet('01:80:c2:00:00:00', A))
            self.assertEqual(self.seen, [0])
            del self.seen[:]
            q.bcm_attach(0, '', '', 0)
            self.switch.arrive(1, sim.ethernet('01:80:c2:00:00:00', A))
            self.assertEqual((self.seen, q.bcm_rx_unregister(0, kept, 1)), ([], q.BCM_E_NOT_FOUND))

    def test_what_is_handed_over(self):
        self.receive()
        self.to_cpu(port=CPU)
        frame = sim.ethernet(B, A, payload=b'\7' * 80)
        tagged = sim.tagged(frame, 1)
        checksum = array('uint8', list(bytearray.fromhex('%08x' % (zlib.crc32(frame) & 0xffffffff)))[::-1])
        for control, value, expected in [(q.bcmRxControlVlanTagStrip, 1, frame),
                                         (q.bcmRxControlCrcKeep, 1, frame + bytes(checksum)),
                                         (q.bcmRxControlTruncateLength, 20, None)]:
            checked(q.bcm_rx_control_set, 0, control, value)
            self.assertEqual(checked(q.bcm_rx_control_get, 0, control, OUT), value)
            self.switch.arrive(1, frame)
            if expected is not None:
                self.assertEqual(self.seen[-1][1], expected)
        self.assertEqual(self.seen[-1][1][:20], frame[:20])
        self.assertEqual(len(self.seen[-1][1]), 24)
        checked(q.bcm_rx_init, 0)
        self.receive()
        self.switch.arrive(1, frame)
        self.assertEqual(self.seen[-1][1], tagged)
        self.assertEqual(q.bcm_rx_control_set(0, q.bcmRxControlErrorAccept, 1), q.BCM_E_UNAVAIL)
        self.assertEqual(q.bcm_rx_control_set(0, q.bcmRxControlCount, 1), q.BCM_E_PARAM)

    def test_buffers(self):
        out = []
        alive = callback('bcm_rx_alloc_f', lambda *arguments: q.BCM_E_MEMORY)
        freed = callback('bcm_rx_free_f', lambda *arguments: 0)
        config = checked(q.bcm_rx_cfg_get, 0, OUT)
        config.rx_alloc = alive
        self.assertEqual(q.bcm_rx_start(0, config), q.BCM_E_PARAM)
        config.rx_free = freed
        checked(q.bcm_rx_start, 0, config)
        self.assertEqual(q.bcm_rx_start(0, None), q.BCM_E_BUSY)
        self.receive()
        self.switch.arrive(1, sim.ethernet('01:80:c2:00:00:00', A))
        self.assertEqual(self.seen, [])
        checked(q.bcm_rx_init, 0)

        # Those that callbacks keep come back by bcm_rx_free.
        def keep(unit, packet, cookie):
            out.append(int(packet.alloc_ptr))
            return q.BCM_RX_HANDLED_OWNED
        self.receive(keep)
        for _ in range(3):
            self.switch.arrive(1, sim.ethernet('01:80:c2:00:00:00', A))
        self.assertEqual((len(set(out)), q.bcm_rx_pool_setup_done(), q.bcm_rx_pool_setup(5, 5)),
                         (3, 1, q.BCM_E_BUSY))
        checked(q.bcm_rx_stop, 0, None)
        self.assertEqual(q.bcm_rx_pool_cleanup(), q.BCM_E_BUSY)
        library = ctypes.CDLL('libQuorelApiNew.so.0')
        for address in out:
            self.assertEqual(library.bcm_rx_free(0, ctypes.c_void_p(address)), q.BCM_E_NONE)
            self.assertEqual(library.bcm_rx_free(0, ctypes.c_void_p(address)), q.BCM_E_PARAM)
        self.assertEqual((q.bcm_rx_pool_cleanup(), q.bcm_rx_pool_setup_done()), (0, 0))

    def test_queues_and_channels(self):
        made = self.receive()
        self.assertEqual(checked(q.bcm_rx_queue_max_get, 0, OUT), 47)
        self.assertEqual(checked(q.bcm_rx_channels_running, 0, OUT), 2)
        checked(q.bcm_rx_queue_channel_set, 0, 0, 3)
        self.switch.arrive(1, sim.ethernet('01:80:c2:00:00:00', A))
        self.assertEqual((self.seen, checked(q.bcm_rx_queue_packet_count_get, 0, 0, OUT)), ([], 1))
        checked(q.bcm_rx_queue_channel_set, 0, 0, 1)
        self.assertEqual((len(self.seen), checked(q.bcm_rx_queue_packet_count_get, 0, 0, OUT)), (1, 0))
        for status, function, arguments in [
                (q.BCM_E_PARAM, q.bcm_rx_queue_channel_set, (0, 48, 1)),
                (q.BCM_E_PARAM, q.bcm_rx_queue_channel_set, (0, 1, 8)),
                (q.BCM_E_UNIT, q.bcm_rx_start, (9, None)), (q.BCM_E_PARAM, q.bcm_rx_queue_register,
                                                            (0, 'x', 48, made, 1, None, 0)),
                (q.BCM_E_PARAM, q.bcm_rx_register, (0, 'x', made, 1, None, 8))]:
            self.assertEqual(function(*arguments), status, (function.__name__, arguments))


class Sending(CpuTest):
    def left(self, packet, *more):
        """(port, frame) of what leaves while the packet is sent."""
        seen = []
        with self.switch.watched(lambda port, frame: seen.append((port, frame))):
            checked(q.bcm_tx, 0, packet, None, *more)
        return seen

    def test_to_ports(self):
        tagged, frame = sim.ethernet(B, A, vlan=1, priority=3), sim.ethernet(B, A)
        self.assertEqual(self.left(packet_of(tagged, tx_pbmp=[3, 64], tx_upbmp=[64])), [(3, tagged), (64, frame)])
        # No table is asked: neither whether the VLAN exists nor whether the port forwards.
        checked(q.bcm_stg_stp_set, 0, 1, 3, q.BCM_STG_STP_BLOCK)
        given = packet_of(frame, tx_pbmp=[3, 4], tx_upbmp=[4], flags=q.BCM_PKT_F_NO_VTAG, vlan=99, vlan_pri=5)
        self.assertEqual(self.left(given), [(3, sim.tagged(frame, 99, priority=5)), (4, frame)])
        self.switch.pull(3)
        self.assertEqual([port for port, _ in self.left(packet_of(frame, tx_pbmp=[3, 4]))], [4])
        self.assertEqual(checked(q.bcm_stat_get, 0, 3, q.snmpIfOutDiscards, OUT), 1)

    def test_to_the_pipeline(self):
        self.switch.send(7, sim.ethernet(A, B))
        forwarded = dict(flags=q.BCM_TX_ETHER)
        frame = sim.ethernet(B, C)
        self.assertEqual(self.left(packet_of(frame, **forwarded)), [(7, frame)])  # of the VLAN of port 0
        self.assertEqual(self.left(packet_of(sim.ethernet(B, C, vlan=1), **forwarded)), [(7, sim.ethernet(B, C))])

    def test_checksums_and_lengths(self):
        frame = sim.ethernet(B, A, payload=b'\5' * 60)
        good = frame + bytes(bytearray.fromhex('%08x' % (zlib.crc32(frame) & 0xffffffff))[::-1])
        for octets, flags, sent in [(frame, 0, frame), (frame, q.BCM_TX_CRC_APPEND, frame),
                                    (good, q.BCM_TX_CRC_NONE, frame), (frame + b'junk', q.BCM_TX_CRC_REGEN, frame),
                                    (frame[:14], 0, frame[:14].ljust(60, b'\0'))]:
            self.assertEqual(self.left(packet_of(octets, flags=flags, tx_pbmp=[1])), [(1, sent)])
        self.assertEqual(self.left(packet_of(frame + b'more', pkt_len=len(frame), tx_pbmp=[1])), [(1, frame)])
        for status, packet in [(q.BCM_E_UNAVAIL, packet_of(frame + b'junk', flags=q.BCM_TX_CRC_NONE, tx_pbmp=[1])),
                               (q.BCM_E_PARAM, packet_of(frame[:13], tx_pbmp=[1])),
                               (q.BCM_E_PARAM, packet_of(frame)), (q.BCM_E_PORT, packet_of(frame, tx_pbmp=[65])),
                               (q.BCM_E_PARAM, packet_of(frame, tx_pbmp=[1], pkt_len=len(frame) + 1)),
                               (q.BCM_E_UNAVAIL, packet_of(frame, tx_pbmp=[1], flags=q.BCM_PKT_F_TIMESYNC)),
                               (q.BCM_E_PARAM, q.bcm_pkt_s()), (q.BCM_E_PARAM, None)]:
            self.assertEqual(q.bcm_tx(0, packet, None), status)

    def test_several_and_who_is_told(self):
        told = []
        each = callback('bcm_pkt_cb_f', lambda unit, packet, cookie: told.append(packet.vlan))
        done = callback('bcm_pkt_cb_f', lambda unit, packet, cookie: told.append('all'))
        packets = [packet_of(sim.ethernet(B, A), tx_pbmp=[port], vlan=port, call_back=each) for port in (3, 2, 1)]
        for packet, following in zip(packets, packets[1:]):
            packet.next = following
        seen = []
        with self.switch.watched(lambda port, frame: seen.append(port)):
            checked(q.bcm_tx_list, 0, packets[0], done, None)
            checked(q.bcm_tx_array, 0, array('bcm_pkt_t *', packets), 2, None, None)
        self.assertEqual((seen, told), ([3, 2, 1, 3, 2], [3, 2, 1, 'all', 3, 2]))
        # All or none.
        packets[2].tx_pbmp = [65]
        del told[:]
        self.assertEqual(q.bcm_tx_list(0, packets[0], done, None), q.BCM_E_PORT)
        packets[2].next = packets[0]
        self.assertEqual(q.bcm_tx_list(0, packets[0], done, None), q.BCM_E_PARAM)
        self.assertEqual(told, [])

    def test_a_callback_that_is_no_function(self):
        data = ctypes.create_string_buffer(8)
        nowhere = [pointer_at(address, '_p_f_int_p_bcm_pkt_s_p_void__void')
                   for address in (1, 0x12345678, ctypes.addressof(data), 2 ** (8 * ctypes.sizeof(ctypes.c_void_p) - 1))]
        good = packet_of(sim.ethernet(B, A), tx_pbmp=[1])
        for function in nowhere:
            packet = packet_of(sim.ethernet(B, A), tx_pbmp=[1], call_back=function)
            good.next = packet
            with self.switch.watched(lambda port, frame: self.fail('something was sent')):
                self.assertEqual(q.bcm_tx(0, packet, None), q.BCM_E_PARAM)
                self.assertEqual(q.bcm_tx_list(0, good, None, None), q.BCM_E_PARAM)
                good.next = None
                self.assertEqual(q.bcm_tx_list(0, good, function, None), q.BCM_E_PARAM)

    def test_map_by_tables(self):
        packet = packet_of(sim.ethernet(B, A))
        self.switch.arrive(7, sim.ethernet(A, B))
        checked(q.bcm_tx_pkt_l2_map, 0, packet, B, 1)
        self.assertEqual((packet.dest_port, packet.tx_pbmp, packet.tx_upbmp), (7, [7], [7]))
        checked(q.bcm_tx_pkt_l2_map, 0, packet, C, 1)
        self.assertEqual((packet.dest_port, packet.tx_pbmp), (-1, range(1, 65)))
        self.assertEqual(q.bcm_tx_pkt_l2_map(0, packet, B, 9), q.BCM_E_NOT_FOUND)

    def test_an_answer_belongs_to_what_was_asked(self):
        answer = sim.ethernet(A, C)

        def take(unit, packet, cookie):
            return q.bcm_tx(0, packet_of(answer, tx_pbmp=[packet.rx_port]), None) or q.BCM_RX_HANDLED
        self.receive(take)
        self.to_cpu(port=CPU)
        self.assertEqual([port for port, _ in self.switch.send(1, sim.ethernet(B, A))], [CPU, 1])
        # One that it answers without end comes to the limit of a storm.
        def loop(unit, packet, cookie):
            self.seen.append(1)
            return q.bcm_tx(0, packet_of(answer, tx_pbmp=[CPU]), None) or q.BCM_RX_HANDLED
        checked(q.bcm_rx_init, 0)
        self.receive(loop)
        with self.assertRaises(StatusError) as raised:
            self.switch.send(1, sim.ethernet(B, A))
        self.assertEqual((raised.exception.name, len(self.seen)), ('BCM_E_RESOURCE', 1000))


class Packets(CpuTest):
    def test_memory(self):
        packet = checked(q.bcm_pkt_alloc, 0, 100, q.BCM_PKT_F_NO_VTAG, OUT)
        self.assertEqual((packet.flags, packet.pkt_len, packet.blk_count, packet.pkt_data.len), (1, 100, 1, 100))
        data = array('uint8', range(50))
        checked(q.bcm_pkt_memcpy, packet, 50, data, 50)
        self.assertEqual(bytes_of(packet)[50:], bytes(data))
        self.assertEqual(q.bcm_pkt_memcpy(packet, 51, data, 50), q.BCM_E_PARAM)
        checked(q.bcm_pkt_free, 0, packet)
        self.assertEqual(q.bcm_pkt_free(0, packet), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_pkt_free(0, q.bcm_pkt_s()), q.BCM_E_PARAM)
        for size in (-1, 65536):
            self.assertRaises(StatusError, checked, q.bcm_pkt_alloc, 0, size, 0, OUT)

    def test_blocks(self):
        first, second = array('uint8', range(10)), array('uint8', range(10, 30))
        blocks = array('bcm_pkt_blk_t', [q.bcm_pkt_blk_t(data=first, len=10), q.bcm_pkt_blk_t(data=second, len=20)])
        packet = checked(q.bcm_pkt_clear, 0, None, blocks, 2, 0, OUT)
        self.assertEqual((packet.pkt_len, packet.blk_count), (30, 2))
        for n, expected in [(0, (10, 0)), (9, (1, 0)), (10, (20, 1)), (29, (1, 1))]:
            self.assertEqual(checked(q.bcm_pkt_byte_index, packet, n, OUT, OUT, OUT)[:2], expected)
        for n in (-1, 30):
            self.assertRaises(StatusError, checked, q.bcm_pkt_byte_index, packet, n, OUT, OUT, OUT)
        checked(q.bcm_pkt_memcpy, packet, 8, array('uint8', [200] * 5), 5)
        self.assertEqual((first[8:], second[:4]), ([200, 200], [200, 200, 200, 13]))
        checked(q.bcm_pkt_free, 0, packet)


def word(record, place=0):
    """A pointer or the like within a record."""
    return ctypes.c_size_t.from_address(int(record.this) + place * ctypes.sizeof(ctypes.c_void_p))


def point(record, target, address):
    """Makes the record's pointer to the target one to another address."""
    words = [word(record, place) for place in range(800 // ctypes.sizeof(ctypes.c_void_p))]
    pointer = next(pointer for pointer in words if pointer.value == int(target.this))
    pointer.value = address


class WrongRecords(CpuTest):
    """Records whose pointers and lengths are not so."""
    NOWHERE = 16

    def setUp(self):
        CpuTest.setUp(self)
        self.receive()
        self.frame = sim.ethernet(B, A)

    def refused(self, packet, memory=True):
        self.assertEqual(q.bcm_tx(0, packet, None), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_tx_list(0, packet, None, None), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_tx_array(0, array('bcm_pkt_t *', [packet]), 1, None, None), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_tx_pkt_setup(0, packet), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_rx_remote_pkt_enqueue(0, packet), q.BCM_E_PARAM)
        if memory:
            self.assertEqual(q.bcm_pkt_memcpy(packet, 0, array('uint8', [1]), 1), q.BCM_E_PARAM)
        self.assertEqual((self.seen, q.bcm_pkt_free(0, packet)), ([], q.BCM_E_PARAM))

    def test_blocks(self):
        self.refused(q.bcm_pkt_s())
        for length in (-1, sys.maxint & 0x7fffffff):
            packet = packet_of(self.frame, tx_pbmp=[1])
            packet.pkt_data.len = length
            self.refused(packet, length < 0)
        packet = packet_of(self.frame, tx_pbmp=[1])
        word(packet.pkt_data).value = self.NOWHERE  # its data
        self.refused(packet)
        packet = packet_of(self.frame, tx_pbmp=[1])
        point(packet, packet.pkt_data, self.NOWHERE)
        self.refused(packet)
        self.assertEqual(q.bcm_pkt_flags_len_setup(0, packet, 10, 10, 0), q.BCM_E_PARAM)
        # What follows in memory is anybody's, and need not be wrong.
        packet = packet_of(self.frame, tx_pbmp=[1])
        packet.blk_count = 255
        self.assertIn(q.bcm_tx(0, packet, None), (0, q.BCM_E_PARAM))
        self.assertIn(q.bcm_rx_remote_pkt_enqueue(0, packet), (0, q.BCM_E_PARAM))

    def test_lists(self):
        first, second = [packet_of(self.frame, tx_pbmp=[port]) for port in (1, 2)]
        first.next = second
        point(first, second, self.NOWHERE)
        self.assertEqual(q.bcm_tx_list(0, first, None, None), q.BCM_E_PARAM)
        two = array('bcm_pkt_t *', [second, second])
        ctypes.c_size_t.from_address(int(two.this)).value = self.NOWHERE
        self.assertEqual(q.bcm_tx_array(0, two, 2, None, None), q.BCM_E_PARAM)
        for count in (-1, 0x7fffffff):
            self.assertEqual(q.bcm_tx_array(0, array('bcm_pkt_t *', [second]), count, None, None), q.BCM_E_PARAM)

    def test_what_is_given_back(self):
        packet = checked(q.bcm_pkt_alloc, 0, 100, 0, OUT)
        packet.alloc_ptr = array('uint8', [1])  # freed is what was allocated
        checked(q.bcm_pkt_free, 0, packet)
        packets = checked(q.bcm_pkt_blk_alloc, 0, 2, 100, 0, OUT)
        self.assertEqual(q.bcm_pkt_blk_free(0, packets, 3), q.BCM_E_PARAM)
        checked(q.bcm_pkt_blk_free, 0, packets, 2)
        self.assertEqual(q.bcm_pkt_blk_free(0, packets, 2), q.BCM_E_PARAM)


if __name__ == '__main__':
    unittest.main()
