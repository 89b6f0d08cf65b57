#include "ext_phys.h"

ExtPhys &extPhys()
{
    // Never destroyed: an access object would give up its Python object after the interpreter has ended.
    static ExtPhys &phys = *new ExtPhys;
    return phys;
}
