#include "phy_registers.h"

#include "phy_controls.h"
#include "phy_standard_registers.h"

#include <soc/phy_access.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace sim {

namespace {

constexpr int clause22 = 0;
constexpr uint32 clause22_registers = 32;
constexpr uint32 standard_clause22_registers = 16;
constexpr int device_shift = 16;
constexpr uint32 device_mask = 0x1f;

constexpr int devices[] = {SOC_PHY_DEVICE_PMA_PMD, SOC_PHY_DEVICE_PCS, SOC_PHY_DEVICE_PHY_XS,
                           SOC_PHY_DEVICE_AN, SOC_PHY_DEVICE_VENDOR1};

// The maker's device: control n in two registers, lower half first; program memory through a window.
constexpr uint16 first_control = 0x8000;
constexpr uint16 firmware_address_low = 0x0100, firmware_address_high = 0x0101, firmware_word = 0x0102;

constexpr uint16 no_device = 0xffff;

bool has_device(int device)
{
    return device == clause22
           || std::find(std::begin(devices), std::end(devices), device) != std::end(devices);
}

/// The control behind a register; below 0 for none.
int control_at(const RegisterAddress &address)
{
    const int control = (address.number - first_control) / 2;
    const bool is_control = address.device == SOC_PHY_DEVICE_VENDOR1 && address.number >= first_control
                            && control < SOC_PHY_CONTROL_COUNT;
    return is_control ? control : -1;
}

bool is_upper_half(const RegisterAddress &address)
{
    return address.number & 1;
}

/// Whether the register keeps what is written. Of the standard's range, only its own registers are there.
bool keeps(const RegisterAddress &address)
{
    if (address.device == clause22) {
        return address.number >= standard_clause22_registers;
    }
    return address.device == SOC_PHY_DEVICE_VENDOR1 || address.number >= first_control;
}

uint32 key_of(const RegisterAddress &address)
{
    return static_cast<uint32>(address.device) << device_shift | address.number;
}

uint16 kept(const Phy &phy, int lane, const RegisterAddress &address)
{
    const auto found = phy.line.registers.find({lane, key_of(address)});
    return found == phy.line.registers.end() ? uint16(0) : found->second;
}

uint16 firmware_at_window(const Phy &phy, int lane)
{
    const std::size_t low = kept(phy, lane, {SOC_PHY_DEVICE_VENDOR1, firmware_address_low});
    const std::size_t high = kept(phy, lane, {SOC_PHY_DEVICE_VENDOR1, firmware_address_high});
    const std::size_t byte = high << 16 | low;
    unsigned word = 0;
    for (std::size_t i = 0; i < 2 && byte + i < phy.firmware.size(); ++i) {
        word |= static_cast<unsigned>(phy.firmware[byte + i]) << 8 * i;
    }
    return static_cast<uint16>(word);
}

RegisterAddress other_half(const RegisterAddress &address)
{
    return {address.device, static_cast<uint16>(address.number ^ 1)};
}

uint16 half_at(const RegisterAddress &address, uint32 whole)
{
    return static_cast<uint16>(is_upper_half(address) ? whole >> 16 : whole);
}

/// One half of the value, and the other as it is.
uint32 with_half(const RegisterAddress &address, uint32 whole, uint16 half)
{
    return is_upper_half(address) ? (whole & 0xffff) | static_cast<uint32>(half) << 16
                                  : (whole & 0xffff0000) | half;
}

/// The halves of a value that reading changes are of one reading, in either order.
uint16 read_half(const ControlPlace &place, int control, const RegisterAddress &address)
{
    auto &held = place.side.halves_read;
    const auto own = held.find({place.lane, key_of(address)});
    if (own != held.end()) {
        const uint16 half = own->second;
        held.erase(own);
        return half;
    }
    uint32 whole = 0;
    get_control(place, control, &whole);
    if (begins_anew_when_read(control)) {
        const RegisterAddress other = other_half(address);
        held[{place.lane, key_of(other)}] = half_at(other, whole);
    }
    return half_at(address, whole);
}

/// A half that the control cannot take over with the other as it is waits until that is written too.
void write_half(const ControlPlace &place, int control, const RegisterAddress &address, uint16 half)
{
    auto &waiting = place.side.halves_written;
    uint32 now = 0;
    // A control that begins anew when read cannot be set.
    if (!begins_anew_when_read(control)) {
        get_control(place, control, &now);
    }
    const uint32 whole = with_half(address, now, half);
    const RegisterAddress other = other_half(address);
    const auto with = waiting.find({place.lane, key_of(other)});
    const bool done_with_it =
        with != waiting.end()
        && set_control(place, control, with_half(other, whole, with->second)) == SOC_E_NONE;
    waiting.erase({place.lane, key_of(other)});
    waiting.erase({place.lane, key_of(address)});
    if (!done_with_it && set_control(place, control, whole) != SOC_E_NONE) {
        waiting[{place.lane, key_of(address)}] = half;
    }
}

}  // namespace

bool decode(uint32 flags, uint32 addr, RegisterAddress *address)
{
    const uint32 device = addr >> device_shift;
    if (!(flags & SOC_PHY_CLAUSE45) && device == 0) {
        *address = {clause22, static_cast<uint16>(addr)};
        return addr < clause22_registers;
    }
    *address = {static_cast<int>(device), static_cast<uint16>(addr)};
    return device != 0 && device <= device_mask;
}

uint16 read_register(PhyPort &port, Phy &phy, int lane, const RegisterAddress &address)
{
    lane = std::max(lane, 0);
    if (!has_device(address.device)) {
        return no_device;
    }
    if (const RegisterView *view = standard_register(address)) {
        return view->read(port, phy);
    }
    const int control = control_at(address);
    if (control >= 0) {
        return read_half({port, phy, phy.line, lane}, control, address);
    }
    if (address.device == SOC_PHY_DEVICE_VENDOR1 && address.number == firmware_word) {
        return firmware_at_window(phy, lane);
    }
    return kept(phy, lane, address);
}

void write_register(PhyPort &port, Phy &phy, int lane, const RegisterAddress &address, uint16 value)
{
    if (const RegisterView *view = standard_register(address)) {
        if (view->write != nullptr) {
            view->write(port, phy, value);
        }
        return;
    }
    const int control = control_at(address);
    if (control >= 0) {
        write_half({port, phy, phy.line, lane}, control, address, value);
        return;
    }
    if (!has_device(address.device) || !keeps(address)) {
        return;
    }
    const int last = lane < 0 ? phy.kind.lanes - 1 : lane;
    for (int one = std::max(lane, 0); one <= last; ++one) {
        phy.line.registers[{one, key_of(address)}] = value;
    }
}

void print_registers(PhyPort &port, Phy &phy)
{
    std::printf("PHY registers of port %d:", port.number);
    for (uint16 number = 0; number < clause22_registers; ++number) {
        const char *separator = number % 8 == 0 ? "\n  " : " ";
        std::printf("%s%04x", separator,
                    static_cast<unsigned>(read_register(port, phy, 0, {clause22, number})));
    }
    std::printf("\n");
    std::fflush(stdout);
}

}  // namespace sim
