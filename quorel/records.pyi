from typing import Any, Dict, List, Tuple, Union

from _QuorelApiNew_stubs.base import Proxy, SwigPyObject

_Values = Union[Proxy, SwigPyObject, Dict[str, Any]]

def differences(before: _Values, after: _Values) -> List[Tuple[str, Any, Any]]: ...
