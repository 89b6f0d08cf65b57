"""The errors that the SDK's headers promise, asked of each function that is answered.

`QUOREL_PROMISES=list ctest --preset release -V -R '^promised_errors$'` lists the promises that nothing here provokes.
"""
import collections
import os
import unittest

import QuorelApiNew as q
import promised_errors
from simulator import status_name


class PromisedErrors(unittest.TestCase):
    maxDiff = None

    def test_each_is_given(self):
        sdk = promised_errors.Sdk()
        asked, not_asked, broken, missed = collections.Counter(), collections.Counter(), [], []
        for function in sdk.functions:
            answers = sdk.ask(function)
            for error in sdk.promises(function):
                results = [(what, status) for name, what, status in answers if name == error]
                broken += ['%s, %s: %s instead of BCM_%s' % (function.name, what, status_name(status), error)
                           for what, status in results if status != getattr(q, 'BCM_' + error)]
                (asked if results else not_asked)[error] += 1
                if not results and sdk.is_said_of(function, error) and not promised_errors.asked_elsewhere(function, error):
                    missed.append('%s BCM_%s' % (function.name, error))
        for error in sorted(set(asked) | set(not_asked)):
            print('BCM_%s: %d promises asked, %d that nothing here provokes' % (error, asked[error], not_asked[error]))
        if os.environ.get('QUOREL_PROMISES') == 'list':
            print('\n'.join(missed))
        self.assertEqual(broken, [])
        self.assertEqual(missed, [])
        # What is read, made and found has to be enough for these.
        for error, least in (('E_UNIT', 1150), ('E_INIT', 950), ('E_PARAM', 1000), ('E_PORT', 390), ('E_NOT_FOUND', 1600),
                             ('E_EXISTS', 30)):
            self.assertGreater(asked[error], least, error)


if __name__ == '__main__':
    unittest.main()
