from typing import Any, Optional, Union

# To Python 2.7 text in quotes is bytes, and what is made here goes with either.
Frame = Union[bytes, str, bytearray, memoryview]

def ethernet(to: str, source: str, payload: Frame = ..., kind: int = ..., vlan: Optional[int] = ...,
             priority: int = ..., tpid: int = ...) -> Any: ...
def tagged(frame: Frame, vlan: int, priority: int = ..., tpid: int = ...) -> Any: ...
def udp4(source: str, to: str, source_port: int = ..., to_port: int = ..., data: Frame = ..., ttl: int = ...,
         dscp: int = ...) -> Any: ...
