from typing import Any, Callable, Tuple

STATUS_GROUPS: Tuple[str, ...]

def status_name(status: int) -> str: ...

class StatusError(Exception):
    function: Callable[..., Any]
    arguments: Tuple[Any, ...]
    status: int
    def __init__(self, function: Callable[..., Any], arguments: Tuple[Any, ...], status: int) -> None: ...
    @property
    def name(self) -> str: ...
