// Which access method serves which external PHY.
#pragma once

#include "quorel_api/ham.h"
#include "quorel_api/ids.h"
#include "quorel_api/managed_phy.h"

// The platform gives these to programs of all kinds, hence at global scope. The caller holds the activity
// lock; they throw Vey::InternalException if not.

/// Installs the access method of a PHY in place of an earlier one; null removes it. The platform keeps a
/// reference to it, and gives up the one to the earlier when the activity lock is released. Throws
/// Vey::InternalException if there is no such managed kind.
void QuorelApiSetExtMdioAccess(Hardware::QuorelApi::UnitId unit, Hardware::QuorelApi::ExternalPhyId phyId,
                               MdioHamImpl::HamImpl::Ptr access, Hardware::PhyBcm::ManagedPhy managedPhy);

/// The access method installed for a PHY of that kind, or null.
MdioHamImpl::HamImpl::Ptr QuorelApiGetExtMdioAccess(Hardware::QuorelApi::UnitId unit,
                                                    Hardware::QuorelApi::ExternalPhyId phyId,
                                                    Hardware::PhyBcm::ManagedPhy managedPhy);

/// Notes the firmware version that a PHY runs with, for when this standby takes over.
void standbyBcm84328VersionIs(Hardware::QuorelApi::UnitId unit, Hardware::QuorelApi::ExternalPhyId phyId,
                              unsigned int rev);
