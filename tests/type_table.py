"""The shared type table, read from memory as another module of the runtime would, and pointer objects of any type."""
import ctypes

import QuorelApiNew as q
import swig_runtime_data4


class CastInfo(ctypes.Structure):
    pass


class TypeInfo(ctypes.Structure):
    _fields_ = [('name', ctypes.c_char_p), ('str', ctypes.c_char_p), ('dcast', ctypes.c_void_p),
                ('cast', ctypes.POINTER(CastInfo)), ('clientdata', ctypes.c_void_p), ('owndata', ctypes.c_int)]


CastInfo._fields_ = [('type', ctypes.POINTER(TypeInfo)), ('converter', ctypes.c_void_p),
                     ('next', ctypes.POINTER(CastInfo)), ('prev', ctypes.POINTER(CastInfo))]


class ModuleInfo(ctypes.Structure):
    _fields_ = [('types', ctypes.POINTER(ctypes.POINTER(TypeInfo))), ('size', ctypes.c_size_t),
                ('next', ctypes.c_void_p), ('type_initial', ctypes.c_void_p), ('cast_initial', ctypes.c_void_p),
                ('clientdata', ctypes.c_void_p)]


class PointerObject(ctypes.Structure):
    """What follows the object header."""
    _fields_ = [('ptr', ctypes.c_void_p), ('ty', ctypes.c_void_p), ('own', ctypes.c_int)]


def module_record():
    get = ctypes.pythonapi.PyCapsule_GetPointer
    get.restype, get.argtypes = ctypes.c_void_p, [ctypes.py_object, ctypes.c_char_p]
    address = get(swig_runtime_data4.type_pointer_capsule, 'swig_runtime_data4.type_pointer_capsule')
    return ModuleInfo.from_address(address)


def ring_sizes():
    """How many types each module of the ring has."""
    first = module_record()
    sizes, module = [first.size], ModuleInfo.from_address(first.next)
    while ctypes.addressof(module) != ctypes.addressof(first):
        sizes.append(module.size)
        module = ModuleInfo.from_address(module.next)
    return sorted(sizes)


def descriptors():
    """All descriptors of the module, in table order."""
    record = module_record()
    return [record.types[i].contents for i in range(record.size)]


_free = ctypes.CDLL(None).free


def freed_after(test, pointer):
    """The same pointer object, to a copy that no class in Python releases: it is freed after the test."""
    pointer.disown()
    test.addCleanup(_free, ctypes.c_void_p(int(pointer)))
    return pointer


_addresses = {}
BLOCK_SIZE = 8192


def pointer_of_type(mangled_name, size=BLOCK_SIZE):
    """A pointer object of that type to `size` zero bytes, to be freed as a uint8Array."""
    return retyped(q.new_uint8Array(size), mangled_name)


def retyped(pointer, mangled_name):
    """The same pointer object, of another type from now on."""
    if not _addresses:
        _addresses.update((info.name, ctypes.addressof(info)) for info in descriptors())
    PointerObject.from_address(id(pointer) + object.__basicsize__).ty = _addresses[mangled_name]
    return pointer


def pointer_at(address, mangled_name):
    """A pointer object of that type to an address, which it does not own."""
    pointer = q.new_uint32p()
    q.delete_uint32p(pointer)
    PointerObject.from_address(id(pointer) + object.__basicsize__).ptr = address
    return retyped(pointer, mangled_name)
