"""What the headers say, printed. What does so is loaded when it is first asked: scripts that run alone never do."""
from __future__ import absolute_import, print_function


def describe(what):
    """Prints what the headers say of something.

    >>> describe('BCM_E_PARAM')
    BCM_E_PARAM = -4 of bcm_error_t                                                      bcm/error.h
    <BLANKLINE>
        argument out of range, or a null pointer

    what: a function, a record or its class, a member of a class, or the name of one, of a constant, an enumeration,
    a C type or a header ('bcm_l2_addr_t.flags', 'bcm/l2.h'). Of a function it says what each argument may be, which
    errors its comment names, and how the simulated switch answers. Raises ValueError for what no header has, IOError
    where the file is missing that the build makes of them.
    """
    from quorel.describing import about
    print(about(what))


def search(words, most=20):
    """Prints what the words fit in the headers' names and comments, best first.

    >>> search('age timer', most=2)
    bcm_l2_age_timer_set  Seconds after which an unused dynamic entry goes, 0 for never
    bcm_l2_age_timer_get  Seconds after which an unused dynamic entry goes, 0 for never

    words: a text; of each word the beginning is enough. What has all of them comes alone, if there is such; what has
    them in its name before what tells of them.
    most: how many lines at most. Raises IOError as describe() does.
    """
    from quorel.reference import WIDTH
    from quorel.searching import found_by
    found = found_by(words)[:most]
    widest = max([len(name) for name, _ in found] or [0])
    for name, told in found:
        line = '%-*s  %s' % (widest, name, told)
        print(line if len(line) <= WIDTH else line[:WIDTH - 3] + '...')
    if not found:
        print('nothing in the headers fits %r' % words)


def help(*what):
    """The interpreter's help(), which of what the SDK's headers know shows what describe() prints.

    >>> help(q.bcm_l2_addr_t.station_flags)
    uint32 station_flags, member of bcm_l2_addr_t                                           bcm/l2.h
    <BLANKLINE>
        BCM_L2_STATION_*

    what: functions, records, their classes and members, or names, as describe() takes them; all else, and nothing, is
    the interpreter's affair. Raises nothing.
    """
    import pydoc
    from quorel.describing import about, is_told
    if len(what) == 1 and is_told(what[0]):
        pydoc.pager(about(what[0]) + '\n')
    else:
        pydoc.help(*what)
