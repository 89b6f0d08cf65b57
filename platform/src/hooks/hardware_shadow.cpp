#include "chip_watch.h"
#include "dynamic_shadow.h"
#include "shadows.h"
#include "trace_lines.h"

#include <array>

extern "C" {
#include <soc/register.h>
}

using Hardware::HardwareShadow;

namespace {

constexpr U32 pci_config_words = 64, word_bytes = 4;

struct UnitShadow {
    HardwareShadow::Ptr shadow;
    bool of_initialisation = false;
    std::array<U32, pci_config_words> pci_config = {};
};

struct State {
    std::array<UnitShadow, unit_max> units;
    const ibde_t *bus = nullptr;
};

State &state()
{
    // Never destroyed, as the chips are not.
    static State &all = *new State;
    return all;
}

UnitShadow *at(int unit)
{
    return isShadowUnit(unit) ? &state().units[static_cast<std::size_t>(unit)] : nullptr;
}

UnitShadow *at(uint32 unit)
{
    return unit < static_cast<uint32>(unit_max) ? &state().units[unit] : nullptr;
}

/// What a device's PCI configuration space holds without a bus that can be asked: only who it is.
U32 ownPciConfig(const Device &device, U32 word)
{
    constexpr U32 class_of_network_controllers = 0x02800000;
    if (word == 0) {
        return device.deviceId << 16;
    }
    return word == 2 ? class_of_network_controllers | device.revisionId : 0;
}

U32 readPciConfig(int unit, U32 word)
{
    const ibde_t *bus = state().bus;
    return bus && bus->pci_conf_read ? bus->pci_conf_read(unit, word * word_bytes)
                                     : ownPciConfig(*deviceList().at(unit), word);
}

}  // namespace

HardwareShadow::~HardwareShadow() = default;

void HardwareShadow::write(U32 address, U32 const *words, std::size_t count)
{
    for (std::size_t word = 0; word < count; ++word) {
        words_[address + static_cast<U32>(word)] = words[word];
    }
}

bool HardwareShadow::read(U32 address, U32 *words, std::size_t count) const
{
    for (std::size_t word = 0; word < count; ++word) {
        if (!words_.count(address + static_cast<U32>(word))) {
            return false;
        }
    }
    for (std::size_t word = 0; word < count; ++word) {
        words[word] = words_.find(address + static_cast<U32>(word))->second;
    }
    return true;
}

const HardwareShadow::Ptr &shadowOf(int unit)
{
    static const HardwareShadow::Ptr &none = *new HardwareShadow::Ptr;
    UnitShadow *found = at(unit);
    return found ? found->shadow : none;
}

const HardwareShadow::Ptr &makeShadow(int unit)
{
    UnitShadow *found = at(unit);
    if (found && !found->shadow) {
        watchChips();
        found->shadow = new HardwareShadow;
    }
    return shadowOf(unit);
}

int readHardware(int unit, U32 address, U32 *word)
{
    const ibde_t *bus = state().bus;
    if (!bus || !bus->read) {
        return soc_reg32_read(unit, address, word);
    }
    *word = bus->read(unit, address);
    return SOC_E_NONE;
}

U32 shadowedPciConfig(int unit, U32 offset)
{
    UnitShadow *found = at(unit);
    return found && offset / word_bytes < pci_config_words ? found->pci_config[offset / word_bytes] : 0;
}

void resetShadows()
{
    state() = State();
    forgetDynamicShadows();
}

HardwareShadow::Ptr getHwShadow(int unit)
{
    trace("getHwShadow(%d)", unit);
    return makeShadow(unit);
}

void configureHwShadow(ibde_t *bus)
{
    trace("configureHwShadow(%s)", bus && bus->name ? bus->name : "");
    state().bus = bus;
    for (int unit = 0; unit < deviceList().size(); ++unit) {
        makeShadow(unit);
    }
}

void configureHwPciConfigShadow()
{
    trace("configureHwPciConfigShadow()");
    for (int unit = 0; unit < deviceList().size(); ++unit) {
        for (U32 word = 0; word < pci_config_words; ++word) {
            at(unit)->pci_config[word] = readPciConfig(unit, word);
        }
    }
}

void setupShadowForHwInit(uint32 unit, bool isDiags)
{
    trace("setupShadowForHwInit(%u, %d)", unit, isDiags);
    UnitShadow *found = at(unit);
    if (!found) {
        return;
    }
    watchChips();
    found->shadow = new HardwareShadow;
    found->of_initialisation = true;
    if (!isDiags) {
        fillFromHardware(static_cast<int>(unit), *found->shadow);
    }
}

void teardownShadowForHwInit(uint32 unit)
{
    trace("teardownShadowForHwInit(%u)", unit);
    UnitShadow *found = at(unit);
    if (!found || !found->of_initialisation) {
        return;
    }
    found->shadow = nullptr;
    found->of_initialisation = false;
}

bool initShadowDestroyed(uint32 unit)
{
    const UnitShadow *found = at(unit);
    return !found || !found->of_initialisation;
}
