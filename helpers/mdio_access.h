// External MDIO access through Python objects, and what else of the platform's PHY access needs the platform's
// activity lock.
//
// None lets a C++ exception out: it becomes a Python exception with its text. A value out of range is a
// ValueError, a failure of the lock an OSError with its number, anything else a RuntimeError; the result then
// means nothing.
//
// They hold that lock for their own duration, unless this thread holds it already. They wait for it with the
// interpreter lock held: a thread that holds the activity lock must not wait for the interpreter.
#pragma once

#include <Python.h>

#include "quorel_api/ext_mdio_access.h"

/// Has the object carry out the MDIO accesses of one unit's external PHY, in place of whatever did so before.
/// The platform keeps a reference to it until another takes its place.
void QuorelApiSetExtMdioAccessWrapper(int unit, int phyId, PyObject *pythonHam,
                                      Hardware::PhyBcm::ManagedPhy managedPhy);

/// The same for a PHY of the kind 84328.
void QuorelApiSetExt84328MdioAccessWrapper(int unit, int phyId, PyObject *pythonHam);

/// The platform's functions of these names.
MdioHamImpl::HamImpl::Ptr QuorelApiGetExtMdioAccessWrapper(Hardware::QuorelApi::UnitId unit,
                                                           Hardware::QuorelApi::ExternalPhyId phyId,
                                                           Hardware::PhyBcm::ManagedPhy managedPhy);
void standbyBcm84328VersionIsWrapper(Hardware::QuorelApi::UnitId unit,
                                     Hardware::QuorelApi::ExternalPhyId phyId, unsigned int rev);
