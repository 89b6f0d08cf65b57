"""Traversals as iterables and registrations as streams of events."""
from __future__ import absolute_import

import QuorelApiNew
from _quorel import callback, checked, copy, parameters
from quorel.errors import StatusError


def _kept(value):
    """What a callback may keep of an argument: of a record a copy."""
    return copy(value) if hasattr(type(value), '__swig_destroy__') else value


def _with_callback(function, arguments, called):
    """All arguments of `function`: `called` and no cookie between those that are given."""
    given = iter(arguments)
    complete = []
    for name, _, way, _ in parameters(function):
        if way == 'callback' or called.type in name:
            complete.append(called)
        elif way == 'any_pointer':
            complete.append(None)
        else:
            try:
                complete.append(next(given))
            except StopIteration:
                raise TypeError('%s: an argument %s is missing' % (function.__name__, name))
    if list(given):
        raise TypeError('%s: too many arguments' % function.__name__)
    return complete


def _item(arguments):
    """What of a callback's arguments is told: not the unit before them nor the cookie after."""
    kept = tuple(_kept(argument) for argument in arguments[1:-1])
    return kept[0] if len(kept) == 1 else kept


def traverse(function, *arguments):
    """Iterates over what a traversal visits: `for addr in traverse(q.bcm_l2_traverse, 0)`.

    arguments: those of the function, without the callback and its cookie. Gives copies of records, or a tuple
    where a visit has several arguments. The whole table is read before the first is given, so it may be changed
    meanwhile. Raises StatusError.
    """
    found = []
    called = callback(function, lambda *visited: found.append(_item(visited)))
    checked(function, *_with_callback(function, arguments, called))
    return iter(found)


def _simulated_clock():
    """The module that has it; None where the SDK is not the simulated one."""
    try:
        import _quorel_sim
    except ImportError:
        return None
    # Who calls back may be another thread.
    _quorel_sim.wait_without_interpreter_lock()
    return _quorel_sim


class events(object):
    """What a registered callback is told: `with events(q.bcm_linkscan_register, 0) as changes:`.

    arguments: those of the function, without the callback and its cookie. The registration lasts as long as the
    block. Iterating waits for the next event and never ends by itself; get() has a limit. Who waits lets the time of a
    simulated switch pass, as functions of the SDK do that wait. Raises StatusError.
    """

    def __init__(self, function, *arguments):
        # To import them takes longer than to import all of this package.
        import collections
        import threading
        self._queue = collections.deque()
        self._filled = threading.Condition()
        self._register = function
        name = function.__name__
        self._unregister = getattr(QuorelApiNew, name[:-len('_register')] + '_unregister', None)
        if not name.endswith('_register') or self._unregister is None:
            raise TypeError('events() takes a function that registers a callback, not %s' % name)
        self._callback = callback(function, self._note)
        self._arguments = _with_callback(function, arguments, self._callback)

    def _note(self, *arguments):
        with self._filled:
            self._queue.append(tuple(_kept(argument) for argument in arguments))
            self._filled.notify()

    def __enter__(self):
        checked(self._register, *self._arguments)
        return self

    def __exit__(self, *raised):
        named = dict(zip([row[0] for row in parameters(self._register)], self._arguments))
        try:
            checked(self._unregister, *[named.get(row[0], self._callback if row[2] == 'callback' else None)
                                        for row in parameters(self._unregister)])
        except StatusError:
            # A unit that was reset has forgotten it; what the block raised says why.
            if raised[0] is None:
                raise

    def __iter__(self):
        return self

    def next(self):
        return self.get()

    __next__ = next

    def get(self, timeout=None):
        """The next event, the tuple of the callback's arguments; None if none comes for `timeout` seconds."""
        # A wait without a limit could not be interrupted.
        longest = 10 ** 8 if timeout is None else timeout
        if not self._queue and not self._wait_by_simulated_clock(longest):
            with self._filled:
                if not self._queue:
                    self._filled.wait(longest)
        with self._filled:
            return self._queue.popleft() if self._queue else None

    def _wait_by_simulated_clock(self, longest):
        """Whether there is one, and it can be waited for."""
        clock = _simulated_clock()
        if clock is None:
            return False
        end = clock.sim_clock_now() + int(longest * 1e9)
        while not self._queue and clock.sim_clock_now() < end:
            if clock.sim_clock_wait(end - clock.sim_clock_now()) < 0:
                return False
        return True

    def waiting(self):
        """Takes and returns the events that there are, a list."""
        with self._filled:
            taken = list(self._queue)
            self._queue.clear()
        return taken
