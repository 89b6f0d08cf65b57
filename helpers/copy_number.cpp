#include "copy_number.h"

#include <Python.h>

extern "C" {
#include <soc/control.h>
}

namespace {

/// Null, with an exception set, if there is no such unit.
const soc_control_t *control_of(int unit)
{
    constexpr int units = sizeof soc_control / sizeof soc_control[0];
    if (unit < 0 || unit >= units) {
        PyErr_Format(PyExc_ValueError, "Unit %d is outside the units (0 to %d)", unit, units - 1);
        return nullptr;
    }
    if (!soc_control[unit]) {
        PyErr_Format(PyExc_ValueError, "Unit %d is not attached", unit);
    }
    return soc_control[unit];
}

int copy_of_core(int unit, int core, soc_core_blocks_t soc_control_t::*blocks)
{
    const soc_control_t *control = control_of(unit);
    if (!control) {
        return -1;
    }
    constexpr int cores = sizeof control->egq.block / sizeof control->egq.block[0];
    if (core >= 0 && core < cores) {
        return (control->*blocks).block[core];
    }
    return core == SOC_CORE_BROADCAST ? (control->*blocks).broadcast : -1;
}

}  // namespace

int get_copyno_any(int unit, int block)
{
    const soc_control_t *control = control_of(unit);
    if (!control) {
        return -1;
    }
    constexpr int blocks = sizeof control->block_copyno / sizeof control->block_copyno[0];
    if (block < 0 || block >= blocks) {
        PyErr_Format(PyExc_ValueError, "Block %d is outside the copy-number table (0 to %d)", block,
                     blocks - 1);
        return -1;
    }
    return control->block_copyno[block];
}

int get_copyno_egq(int unit, int core)
{
    return copy_of_core(unit, core, &soc_control_t::egq);
}

int get_copyno_ihb(int unit, int core)
{
    return copy_of_core(unit, core, &soc_control_t::ihb);
}

int get_copyno_ihp(int unit, int core)
{
    return copy_of_core(unit, core, &soc_control_t::ihp);
}

int get_copyno_iqm(int unit, int core)
{
    return copy_of_core(unit, core, &soc_control_t::iqm);
}
