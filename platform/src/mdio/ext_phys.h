// What the platform knows of each external PHY. Guarded by the activity lock.
#pragma once

#include "quorel_api/ham.h"
#include "quorel_api/managed_phy.h"

#include <cstdint>
#include <map>
#include <utility>

struct ExtPhy {
    MdioHamImpl::HamImpl::Ptr access;
    Hardware::PhyBcm::ManagedPhy kind = Hardware::PhyBcm::managedPhyUnknown;
    unsigned int standby_version = 0;
};

/// By unit and PHY id.
using ExtPhys = std::map<std::pair<unsigned int, std::uint16_t>, ExtPhy>;

ExtPhys &extPhys();
