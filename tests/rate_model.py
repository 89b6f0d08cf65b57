"""Slow and obvious models of what measures rates, against which the switch is tested."""
from fractions import Fraction

SECOND = 10 ** 9


class Bucket(object):
    """Tokens that come at a rate per second, up to a depth."""

    def __init__(self, rate, depth, full=True):
        self.rate, self.depth = rate, depth
        self.tokens = Fraction(depth if full else 0)

    def pass_time(self, nanoseconds):
        self.tokens = min(Fraction(self.depth), self.tokens + Fraction(nanoseconds * self.rate, SECOND))

    def take(self, tokens):
        """Whether so many whole ones were there; they are gone then."""
        if int(self.tokens) < tokens:
            return False
        self.tokens -= tokens
        return True


class PortModel(object):
    """A port whose queues are full: in which order they are emptied. Weights of 0 are strict priority."""

    def __init__(self, mode, weights):
        self.mode = mode
        self.weights = [0] * 8 if mode == 'strict' else [1] * 8 if mode == 'round robin' else weights
        self.queues = [[] for _ in range(8)]

    def arrive(self, queue, length, name):
        self.queues[queue].append((length, name))

    def all_in_order(self):
        """The names of what is sent, to the last."""
        strict = [queue for queue in reversed(range(8)) if self.weights[queue] == 0]
        order = [name for queue in strict for _, name in self.queues[queue]]
        return order + {'by bytes': self._by_bytes, 'fair': self._fair}.get(self.mode, self._by_packets)()

    def _shared(self):
        return [queue for queue in range(8) if self.weights[queue] != 0]

    def _by_packets(self):
        order = []
        while any(self.queues[queue] for queue in self._shared()):
            for queue in self._shared():
                turn, self.queues[queue] = (self.queues[queue][:self.weights[queue]],
                                            self.queues[queue][self.weights[queue]:])
                order += [name for _, name in turn]
        return order

    def _by_bytes(self):
        order, deficits = [], [0] * 8
        while any(self.queues[queue] for queue in self._shared()):
            for queue in self._shared():
                packets = self.queues[queue]
                deficits[queue] = deficits[queue] + self.weights[queue] if packets else 0
                while packets and packets[0][0] <= deficits[queue]:
                    deficits[queue] -= packets[0][0]
                    order.append(packets.pop(0)[1])
        return order

    def _fair(self):
        # All are there from the beginning, so that a packet's end depends on those before it in its queue only.
        ends = []
        for queue in self._shared():
            end = 0
            for place, (length, name) in enumerate(self.queues[queue]):
                end += length * 2 ** 20 // self.weights[queue]
                ends.append((end, -queue, place, name))
        return [name for _, _, _, name in sorted(ends)]


class Meter(object):
    """Colours packets as the RFCs say, for times in which whole tokens come; tokens are bits.

    'single rate' (2697), 'two rates' (2698), 'differentiated' (4115), 'coupled', and 'committed' with one bucket.
    """

    def __init__(self, kind, rate, burst, other_rate, other_burst):
        self.kind, self.rate = kind, rate
        self.committed = Bucket(rate, burst)
        self.other = Bucket(0 if kind == 'single rate' else other_rate, other_burst)

    def pass_time(self, nanoseconds):
        for millisecond in range(nanoseconds // 10 ** 6):
            room = self.committed.depth - self.committed.tokens
            self.committed.pass_time(10 ** 6)
            self.other.pass_time(10 ** 6)
            if self.kind in ('single rate', 'coupled'):
                spilt = max(0, self.rate // 1000 - room)
                self.other.tokens = min(self.other.depth, self.other.tokens + spilt)

    def color(self, came, bits):
        if self.kind == 'two rates':
            if came == 'Red' or not self.other.take(bits):
                return 'Red'
            return 'Green' if came == 'Green' and self.committed.take(bits) else 'Yellow'
        if self.kind == 'committed':
            return came if came != 'Red' and self.committed.take(bits) else 'Red'
        if came == 'Green' and self.committed.take(bits):
            return 'Green'
        return 'Yellow' if came != 'Red' and self.other.take(bits) else 'Red'
