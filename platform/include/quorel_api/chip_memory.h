// The memories (tables) of a chip as the platform knows them.
#pragma once

#include "quorel_api/integers.h"
#include "vey/ptr.h"

#include <string>

namespace Hardware {

/// A place in a chip's address space: an address of the SDK's, and the entry counted from there.
struct ChipAddress {
    U32 address;
    U32 entry;
};
static_assert(sizeof(ChipAddress) == 8, "callers carry it as eight bytes");

/// One memory of a chip, or one of an array of memories, in one block.
class ChipMemory : public Vey::PtrInterface {
public:
    using Ptr = Vey::Ptr<ChipMemory>;

    ChipMemory(std::string name, int unit, int mem, int core, int arrayIndex, U32 baseAddr, U32 entryBytes,
               U32 entries)
        : name_(std::move(name)),
          unit_(unit),
          mem_(mem),
          core_(core),
          arrayIndex_(arrayIndex),
          baseAddr_(baseAddr),
          entryBytes_(entryBytes),
          entries_(entries)
    {
    }

    const std::string &name() const noexcept { return name_; }
    int unit() const noexcept { return unit_; }
    int mem() const noexcept { return mem_; }
    int core() const noexcept { return core_; }
    int arrayIndex() const noexcept { return arrayIndex_; }
    U32 baseAddr() const noexcept { return baseAddr_; }
    U32 entryBytes() const noexcept { return entryBytes_; }
    U32 entries() const noexcept { return entries_; }
    U32 sizeBytes() const noexcept { return entryBytes_ * entries_; }

protected:
    ~ChipMemory() override;

private:
    std::string name_;
    int unit_, mem_, core_, arrayIndex_;
    U32 baseAddr_, entryBytes_, entries_;
};

}  // namespace Hardware

namespace QuorelApi {

/// The memory with that SDK identifier in which so many bytes from an address on lie; null if there is none.
Hardware::ChipMemory::Ptr findChipMemory(int unit, int mem, Hardware::ChipAddress sca, U32 sizeBytes);

/// The memory with that SDK identifier which begins at a base address; null if there is none.
Hardware::ChipMemory::Ptr findChipMemory(int unit, int mem, int baseAddr);

/// Where a memory begins in the first block that has it, for an array that of the index; 0 if there is none.
U32 tableBaseAddr(int unit, int mem, int arrayIndex);

}  // namespace QuorelApi
