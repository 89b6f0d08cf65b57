import unittest
from typing import Any, List, Mapping, Optional

from quorel.sim.frames import Frame
from quorel.sim.switch import Switch

PORTS: List[int]

class TestCase(unittest.TestCase):
    unit: int
    switch: Switch
    def setUp(self) -> None: ...
    # {port: frame or frames}
    def assertSends(self, port: int, frame: Frame, expected: Mapping[int, Any],
                    message: Optional[str] = ...) -> None: ...
    def assertDropped(self, port: int, frame: Frame, reason: Optional[str] = ...,
                      message: Optional[str] = ...) -> None: ...
    # {port: {statistic: by}, or all}
    def assertCounts(self, port: int, frame: Frame, expected: Mapping[int, Any],
                     message: Optional[str] = ...) -> None: ...
