"""LAG members through the helpers that make the SDK's record."""
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import recording

add, remove = q.soc_ppd_lag_member_add_wrapper, q.soc_ppd_lag_member_remove_wrapper
LAG = 3


class LagMembers(unittest.TestCase):
    def add(self, port, place, lag=LAG):
        """Status; what was added goes again after the test."""
        status = add(0, lag, port, place)
        if status == q.BCM_E_NONE:
            self.addCleanup(remove, 0, lag, port, place)
        return status

    def test_the_sdk_sees_the_members(self):
        self.assertEqual(self.add(100, 0), q.BCM_E_NONE)
        for port, place, lag in ((100, 0, LAG), (101, 0, LAG), (100, 1, LAG), (100, 1, LAG + 1)):
            self.assertEqual(self.add(port, place, lag), q.BCM_E_EXISTS)
        for lag, port, place in ((LAG, 100, 1), (LAG, 101, 0), (LAG + 1, 100, 0)):
            self.assertEqual(remove(0, lag, port, place), q.BCM_E_NOT_FOUND)
        self.assertEqual(remove(0, LAG, 100, 0), q.BCM_E_NONE)
        self.assertEqual(remove(0, LAG, 100, 0), q.BCM_E_NOT_FOUND)

    def test_failures_are_the_return_code_and_nothing_more(self):
        self.assertEqual(add(1, LAG, 100, 0), q.BCM_E_UNIT)
        for lag, port, place in ((256, 1, 1), (1, 1 << 24, 1), (1, 1, 256), (2 ** 32 - 1, 1, 1)):
            self.assertEqual(add(0, lag, port, place), q.BCM_E_PARAM)
        for place in range(64):
            self.assertEqual(self.add(200 + place, place), q.BCM_E_NONE)
        self.assertEqual(self.add(500, 64), q.BCM_E_FULL)

    def test_wrong_arguments_call_nothing(self):
        for call in (add, remove):
            with recording() as calls:
                for position, (value, exception) in enumerate((('x', TypeError), (-1, OverflowError),
                                                               (2 ** 32, OverflowError), (None, TypeError))):
                    values = [0, 1, 1, 1]
                    values[position] = value
                    text = "in method '%s', argument %d of type '%s'" % (
                        call.__name__, position + 1, 'uint32' if position else 'int')
                    self.assertEqual(error_of(call, *values), (exception, text))
            self.assertEqual(calls(), [])


if __name__ == '__main__':
    unittest.main()
