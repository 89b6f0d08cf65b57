"""What calls raise."""
import QuorelApiNew


def status_name(status):
    """The name of a status, such as 'BCM_E_PARAM'; the number as text where there is none."""
    for name, value in vars(QuorelApiNew).items():
        if value == status and name.startswith('BCM_E_'):
            return name
    return str(status)


class StatusError(Exception):
    """A function of the SDK returned another status than BCM_E_NONE.

    function:  the function.
    arguments: what it was called with, a tuple; outputs are OUT.
    status:    the number; `name` is its name, such as 'BCM_E_PARAM'.
    """

    def __init__(self, function, arguments, status):
        Exception.__init__(self, function, arguments, status)
        self.function, self.arguments, self.status = function, arguments, status

    @property
    def name(self):
        return status_name(self.status)

    def __str__(self):
        function = getattr(self.function, '__name__', None) or repr(self.function)
        name = self.name
        return '%s(%s) returned %s' % (function, ', '.join(repr(argument) for argument in self.arguments),
                                       name if name == str(self.status) else '%s (%d)' % (name, self.status))
