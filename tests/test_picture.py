"""Pictures of ports, VLANs and a packet's way say what the switch does."""
import os
import tempfile
import unittest
import xml.etree.ElementTree

import QuorelApiNew as q
from quorel import StatusError, checked, picture, sim

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
SVG = '{http://www.w3.org/2000/svg}'


def drawn(made, kind):
    """Elements of the drawing, which has to be well-formed."""
    return xml.etree.ElementTree.fromstring(made.svg).findall('.//' + SVG + kind)


def words(made):
    return [element.text for element in drawn(made, 'text')]


class Pictures(sim.TestCase):
    def vlan(self, vid, ports, untagged):
        checked(q.bcm_vlan_create, 0, vid)
        checked(q.bcm_vlan_port_add, 0, vid, ports, untagged)
        for port in untagged:
            checked(q.bcm_port_untagged_vlan_set, 0, port, vid)

    def test_ports_show_link_speed_and_vlan(self):
        self.vlan(20, [3, 4], [3])
        self.switch.pull(2)
        checked(q.bcm_port_enable_set, 0, 4, 0)
        made = picture.ports(0, [1, 2, 3, 4, 33])
        self.assertEqual(str(made), '\n'.join([
            'unit 0: 3 of 5 ports have a link', '',
            'port      1     2     3     4    33',
            '       100G  down  100G   off   10G',
            '         v1    v1   v20    v1    v1']))
        self.assertEqual([title.text for title in drawn(made, 'title')],
                         ['port 1, VLAN 1, 100G', 'port 2, VLAN 1, down', 'port 3, VLAN 20, 100G', 'port 4, VLAN 1, off',
                          'port 33, VLAN 1, 10G'])
        fills = [box.get('fill') for box in drawn(made, 'rect')]
        self.assertEqual([fill == fills[0] for fill in fills[:5]], [True, True, False, True, True])
        self.assertEqual([dot.get('class') for dot in drawn(made, 'circle')], ['up', 'down', 'up', 'down', 'up'])
        self.assertTrue(set(['VLAN 1', 'VLAN 20']) <= set(words(made)))
        self.assertIn('v20\033[0m', made.coloured)

    def test_all_ports_are_on_the_front_once_and_beside_each_other(self):
        made = picture.ports(0)
        boxes = [(int(box.get('x')), int(box.get('y')), int(box.get('width'))) for box in drawn(made, 'rect')][:64]
        self.assertEqual(len(set(boxes)), 64)
        for x, y, side in boxes:
            self.assertEqual([other for other in boxes
                              if other[:2] != (x, y) and abs(other[0] - x) < side and abs(other[1] - y) < side], [])
        self.assertEqual(str(made).split('\n')[2].split()[1:],
                         ['%d' % port for port in range(1, 17)])
        self.assertRaises(StatusError, picture.ports, 15)
        self.assertRaises(StatusError, picture.ports, 0, [99])

    def test_vlans_are_a_matrix_of_what_is_not_usual(self):
        self.vlan(10, [4, 5, 6], [4, 5])
        self.vlan(200, [6, 7], [])
        checked(q.bcm_vlan_port_remove, 0, 1, [4, 5])
        made = picture.vlans(0)
        self.assertEqual(str(made), '\n'.join([
            'VLAN     4   5   6   7',
            '   1     .   .   U   U',
            '  10     U   U   T   .',
            ' 200     .   .   T   T']))
        self.assertEqual(words(made)[1:], ['4', '5', '6', '7', '1', 'U', 'U', '10', 'U', 'U', 'T', '200', 'T', 'T'])
        self.assertEqual(str(picture.vlans(0, [9])), 'VLAN     9\n   1     U\n  10     .\n 200     .')
        for vid in (10, 200, 1):
            checked(q.bcm_vlan_port_remove, 0, vid, range(1, 65))
        self.assertEqual(str(picture.vlans(0)).split('\n')[1].split(), ['1'] + 64 * ['.'])

    def test_a_way_says_what_the_trace_says_and_marks_its_end(self):
        frame = sim.ethernet(B, A)
        made = picture.way(self.switch, 1, frame)
        lines = str(made).split('\n')
        self.assertEqual(lines[0].split()[:5], ['unit', '0', 'port', '1', 'arrive'])
        self.assertEqual(lines[-1].split(None, 5), ['unit', '0', 'port', '2-64', 'leave', '64 bytes, without tag'])
        self.assertEqual(len(drawn(made, 'line')), len(lines) - 1)
        trace = self.switch.trace(1, frame)
        for step in self.switch.steps(1, frame):
            self.assertIn('unit %d port %d %s: ' % step[:3] + step[4], trace)
        made = picture.way(self.switch, 1, sim.ethernet(B, A, vlan=9))
        self.assertIn('[vlan_unknown]', str(made).split('\n')[-1])
        self.assertEqual([box.get('class') for box in drawn(made, 'rect')], ['box', 'drop'])

    def test_it_is_saved_as_it_is(self):
        file = os.path.join(tempfile.mkdtemp(), 'ports.svg')
        try:
            picture.ports(0, []).save(file)
            with open(file) as saved:
                self.assertEqual(saved.read(), picture.ports(0, []).svg)
        finally:
            os.remove(file)
            os.rmdir(os.path.dirname(file))
        self.assertRaises(IOError, picture.ports(0, [1]).save, file)


if __name__ == '__main__':
    unittest.main()
