from typing import List, NamedTuple

from quorel.sim.frames import Frame

class Field(NamedTuple):
    name: str
    value: str
    start: int
    end: int

def dissect(frame: Frame) -> List[Field]: ...
def lines(frame: Frame) -> List[str]: ...
def difference(expected: Frame, found: Frame) -> List[str]: ...
