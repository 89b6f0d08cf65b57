"""What people would rather look at than read: ports, VLANs, and the way of a packet.

    >>> from quorel import picture
    >>> print(picture.ports(0, range(1, 5)))
    unit 0: 4 of 4 ports have a link
    <BLANKLINE>
    port      1     2     3     4
           100G  100G  100G  100G
             v1    v1    v1    v1

Each is a Picture: text for a terminal, and SVG, which save() writes to a file. ports() and vlans() ask the SDK, way()
is for the simulated switch.
"""
from __future__ import absolute_import

import QuorelApiNew as q
from _quorel import OUT, array, checked

_LINE = 16  # ports in a line, and in a row of a drawing
_COLOURS = ['#4c78a8', '#f58518', '#54a24b', '#b279a2', '#e45756', '#72b7b2', '#9d755d', '#eeca3b', '#ff9da6', '#7f7f7f']
# The same for terminals: numbers of their 256 colours.
_TERMINAL = [67, 208, 71, 139, 167, 73, 101, 179, 217, 244]
_STYLE = '''\
svg { background: #fff } text { font: 11px sans-serif; fill: #222 } .small { font-size: 9px } .title { font-size: 13px; font-weight: bold }
.on { fill: #fff } .box { fill: #f2f2f2; stroke: #999 } .up { fill: #2b8a3e } .down { fill: #bbb } circle { stroke: #fff } .line { stroke: #999 }
.drop { fill: #ffe3e3; stroke: #c92a2a } .grid { stroke: #ddd }
@media (prefers-color-scheme: dark) {
  svg { background: #131416 } text { fill: #ddd } .on { fill: #fff } .box { fill: #26282b; stroke: #666 } .up { fill: #69db7c } .down { fill: #555 }
  .drop { fill: #4a1f1f; stroke: #ff8787 } .grid { stroke: #3a3d40 }
}'''


class Picture(object):
    """Text and SVG of the same. str() is the text; `svg` the drawing, for dark and light backgrounds; `coloured` the text
    with the colours of the drawing, for terminals.
    """

    def __init__(self, lines, shapes, width, height, coloured=None):
        self._lines, self._coloured = lines, coloured or lines
        self.svg = ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 %d %d" width="%d" height="%d">\n'
                    '<style>%s</style>\n%s\n</svg>\n' % (width, height, width, height, _STYLE, '\n'.join(shapes)))

    def __str__(self):
        return '\n'.join(line.rstrip() for line in self._lines)

    @property
    def coloured(self):
        """The text (str) with the colours of a terminal."""
        return '\n'.join(self._coloured)

    def save(self, file):
        """Writes the drawing to a file. Raises IOError."""
        with open(file, 'w') as opened:
            opened.write(self.svg)


def _escaped(text):
    return str(text).replace('&', '&amp;').replace('<', '&lt;').replace('>', '&gt;')


def _text(x, y, text, kind='', anchor='start'):
    return '<text x="%d" y="%d" class="%s" text-anchor="%s">%s</text>' % (x, y, kind, anchor, _escaped(text))


def _speed(megabits):
    return '%gG' % (megabits / 1000.0) if megabits >= 1000 else '%dM' % megabits


class _Port(object):
    def __init__(self, unit, port):
        self.number = port
        self.enabled = bool(checked(q.bcm_port_enable_get, unit, port, OUT))
        self.link = bool(checked(q.bcm_port_link_status_get, unit, port, OUT))
        self.speed = checked(q.bcm_port_speed_get, unit, port, OUT)
        self.vlan = checked(q.bcm_port_untagged_vlan_get, unit, port)

    @property
    def state(self):
        return _speed(self.speed) if self.link else 'down' if self.enabled else 'off'


def _front_ports(unit, chosen):
    return sorted(checked(q.bcm_port_config_get, unit).e) if chosen is None else list(chosen)


def ports(unit, chosen=None):
    """The ports as they are on the front: link and speed, or `down`, or `off` where they are disabled; and the VLAN of
    packets without a tag, which colours them.

    chosen: a sequence of ports; all on the front if it is left out. Raises StatusError.
    """
    found = [_Port(unit, port) for port in _front_ports(unit, chosen)]
    vlans = sorted(set(port.vlan for port in found))
    title = 'unit %d: %d of %d ports have a link' % (unit, sum(port.link for port in found), len(found))
    lines, coloured = [title], [title]
    for start in range(0, len(found), _LINE):
        row = found[start:start + _LINE]
        numbers = 'port ' + ''.join('%6d' % port.number for port in row)
        states = '     ' + ''.join('%6s' % port.state for port in row)
        tags = '     ' + ''.join('%6s' % ('v%d' % port.vlan) for port in row)
        lines += ['', numbers, states, tags]
        coloured += ['', numbers, states, '     ' + ''.join(
            '\033[38;5;%dm%6s\033[0m' % (_TERMINAL[vlans.index(port.vlan) % len(_TERMINAL)], 'v%d' % port.vlan)
            for port in row)]
    return Picture(lines, *_drawn_ports(title, found, vlans), coloured=coloured)


def _drawn_ports(title, found, vlans):
    """Odd places above, even ones below, in blocks."""
    side, gap, top = 34, 4, 30
    shapes = [_text(8, 18, title, 'title')]
    across = (len(found) + 1) // 2
    columns = min(across, 2 * _LINE) or 1
    for place, port in enumerate(found):
        column, below = place // 2 % columns, place % 2
        block = place // 2 // columns
        x = 8 + column * (side + gap) + column // 8 * 8
        y = top + (2 * block + below) * (side + 18)
        colour = _COLOURS[vlans.index(port.vlan) % len(_COLOURS)]
        shapes.append('<g><title>port %d, VLAN %d, %s</title><rect x="%d" y="%d" width="%d" height="%d" rx="3" fill="%s"'
                      ' opacity="%s"/><circle cx="%d" cy="%d" r="3.5" class="%s"/>%s%s</g>' % (
                          port.number, port.vlan, port.state, x, y, side, side, colour, '1' if port.link else '.35',
                          x + side - 6, y + 7, 'up' if port.link else 'down',
                          _text(x + side // 2, y + 24, port.number, 'on', 'middle'),
                          _text(x + side // 2, y + side + 10, port.state, 'small', 'middle')))
    blocks = (across + columns - 1) // columns
    legend = top + 2 * blocks * (side + 18) + 10
    for place, vlan in enumerate(vlans):
        x, y = 8 + place % 8 * 80, legend + place // 8 * 18
        shapes.append('<rect x="%d" y="%d" width="10" height="10" rx="2" fill="%s"/>%s' % (
            x, y, _COLOURS[place % len(_COLOURS)], _text(x + 16, y + 9, 'VLAN %d' % vlan)))
    width = 16 + columns * (side + gap) + (columns - 1) // 8 * 8
    return shapes, max(width, 300), legend + (len(vlans) + 7) // 8 * 18 + 4


def _vlans(unit):
    """[(id, members, untagged members)]"""
    import ctypes
    first, count = checked(q.bcm_vlan_list, unit, OUT, OUT)
    if not count:
        return []
    try:
        size = count * len(bytes(array(q.bcm_vlan_data_t, 1)))
        listed = array(q.bcm_vlan_data_t, ctypes.string_at(int(first.this), size))
        return [(vlan.vlan_tag, list(vlan.port_bitmap), list(vlan.ut_port_bitmap)) for vlan in listed]
    finally:
        checked(q.bcm_vlan_list_destroy, unit, first, count)


def vlans(unit, chosen=None):
    """VLANs and their ports: `T` where packets of the VLAN leave with a tag, `U` where without.

    chosen: a sequence of ports; if it is left out, all on the front that are in another VLAN than the default one, or
    not in that. Raises StatusError.
    """
    found = _vlans(unit)
    if chosen is None:
        default = checked(q.bcm_vlan_default_get, unit, OUT)
        usual = set(port for vid, members, _ in found if vid == default for port in members)
        special = set(port for vid, members, _ in found if vid != default for port in members)
        chosen = [port for port in _front_ports(unit, None) if port in special or port not in usual]
    chosen = list(chosen)

    def mark(port, members, untagged):
        return 'U' if port in untagged else 'T' if port in members else '.'

    lines = ['VLAN  ' + ''.join('%4d' % port for port in chosen)]
    lines += ['%4d  ' % vid + ''.join('%4s' % mark(port, members, untagged) for port in chosen)
              for vid, members, untagged in found]
    side, left, top = 22, 48, 40
    shapes = [_text(8, 18, 'unit %d: VLANs and ports, T with tag, U without' % unit, 'title')]
    shapes += [_text(left + column * side + side // 2, top - 6, port, 'small', 'middle')
               for column, port in enumerate(chosen)]
    for row, (vid, members, untagged) in enumerate(found):
        y = top + row * side
        shapes.append(_text(left - 8, y + 15, vid, '', 'end'))
        for column, port in enumerate(chosen):
            x, letter = left + column * side, mark(port, members, untagged)
            fill = 'none' if letter == '.' else _COLOURS[row % len(_COLOURS)]
            shapes.append('<rect x="%d" y="%d" width="%d" height="%d" class="grid" fill="%s"/>%s' % (
                x, y, side, side, fill, _text(x + side // 2, y + 15, letter, 'on', 'middle') if letter != '.' else ''))
    return Picture(lines, shapes, max(left + len(chosen) * side + 8, 380), top + len(found) * side + 8)


def _told(steps):
    """[(where, stage, drop, text)]: steps of several ports that say the same are one."""
    told = []
    for unit, port, stage, drop, text in steps:
        if told and told[-1][0] == unit and told[-1][2:] == (stage, drop, text):
            told[-1][1].append(port)
        else:
            told.append((unit, [port], stage, drop, text))
    return [('unit %d port %s' % (unit, _runs(at)), stage, drop, text) for unit, at, stage, drop, text in told]


def _runs(numbers):
    runs = []
    for number in numbers:
        if runs and runs[-1][1] == number - 1:
            runs[-1][1] = number
        else:
            runs.append([number, number])
    return ','.join('%d' % first if first == last else '%d-%d' % (first, last) for first, last in runs)


def way(switch, port, frame):
    """The way of a frame that arrives at the port, stage by stage, as switch.trace() tells it: what several ports say
    alike is said once, and where it ends in red.

    switch: a quorel.sim.Switch. Raises as its send() does.
    """
    steps = _told(switch.steps(port, frame))
    widest = max([len(where) for where, _, _, _ in steps] or [0])
    stages = max([len(stage) for _, stage, _, _ in steps] or [0])
    lines = ['%-*s  %-*s  %s%s' % (widest, where, stages, stage, text, '' if drop == 'none' else '  [%s]' % drop)
             for where, stage, drop, text in steps]
    shapes, height, left, box = [], 34, 128, 92
    for place, (where, stage, drop, text) in enumerate(steps):
        y = 8 + place * height
        if place:
            shapes.append('<line x1="%d" y1="%d" x2="%d" y2="%d" class="line"/>' % (
                left + box // 2, y - height + 24, left + box // 2, y))
        shapes += [_text(left - 10, y + 16, where, 'small', 'end'),
                   '<rect x="%d" y="%d" width="%d" height="24" rx="4" class="%s"/>' % (
                       left, y, box, 'box' if drop == 'none' else 'drop'),
                   _text(left + box // 2, y + 16, stage, '', 'middle'),
                   _text(left + box + 12, y + 16, text + ('' if drop == 'none' else ' [%s]' % drop))]
    longest = max([len(text) + (0 if drop == 'none' else len(drop) + 3) for _, _, drop, text in steps] or [0])
    return Picture(lines, shapes, left + box + 20 + int(longest * 6.2), 8 + len(steps) * height)
