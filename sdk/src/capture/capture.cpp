/// Packets to files and from files, by <sim/capture.h>.
#include "begin.h"
#include "units_lock.h"
#include "capture_file.h"
#include "clock.h"
#include "front_port.h"
#include "path.h"
#include "whole_file.h"

#include <sim/capture.h>
#include <sim/clock.h>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace sim;

namespace {

/// Never destroyed, as units are.
std::string &latest_problem()
{
    static std::string &text = *new std::string;
    return text;
}

int failed(const std::string &problem)
{
    latest_problem() = problem;
    return BCM_E_FAIL;
}

std::string interface_name(int unit, int port)
{
    return "unit" + std::to_string(unit) + "/" + port_name(port);
}

class Capture : public Tap {
public:
    CaptureWriter file;

    void watch(int unit, int port, int directions)
    {
        std::optional<Watched> &place =
            watched_[static_cast<std::size_t>(unit)][static_cast<std::size_t>(port)];
        if (!place) {
            place = Watched{interfaces_++, 0};
            file.add_interface(interface_name(unit, port));
        }
        place->directions = directions;
    }

    void passed(int unit, int port, Direction direction, ByteView frame) override
    {
        const auto &place = watched_[static_cast<std::size_t>(unit)][static_cast<std::size_t>(port)];
        const bool sent = direction == Direction::sent;
        if (place && place->directions & (sent ? SIM_CAPTURE_SENT : SIM_CAPTURE_RECEIVED) && file.is_good()) {
            file.add_packet(place->interface, clock_now(), sent, frame);
        }
    }

private:
    struct Watched {
        std::uint32_t interface;
        int directions;
    };

    std::array<std::array<std::optional<Watched>, port_max + 1>, unit_max> watched_;
    std::uint32_t interfaces_ = 0;
};

std::map<int, std::unique_ptr<Capture>> &captures()
{
    static auto &all = *new std::map<int, std::unique_ptr<Capture>>;
    return all;
}

Capture *capture_of(int number)
{
    const auto found = captures().find(number);
    return found != captures().end() ? found->second.get() : nullptr;
}

/// A port of some unit.
using Place = std::pair<int, int>;

/// The front ports of attached units by the names of their interfaces.
std::map<std::string, Place> places_by_name()
{
    std::map<std::string, Place> places;
    for (int unit = 0; unit < unit_max; ++unit) {
        for (int port = cpu_port + 1; attached(unit) != nullptr && port <= port_max; ++port) {
            places[interface_name(unit, port)] = {unit, port};
        }
    }
    return places;
}

}  // namespace

extern "C" {

int sim_capture_open(const char *file, int format, int *capture)
{
    const sim::UnitsLock lock;
    latest_problem().clear();
    if (file == nullptr || capture == nullptr || (format != simCapturePcapng && format != simCapturePcap)) {
        return BCM_E_PARAM;
    }
    auto made = std::make_unique<Capture>();
    if (!made->file.open(file, static_cast<sim_capture_format_t>(format))) {
        return failed(made->file.problem());
    }
    int number = 1;
    while (capture_of(number) != nullptr) {
        ++number;
    }
    add_tap(*made);
    captures()[number] = std::move(made);
    *capture = number;
    return BCM_E_NONE;
}

int sim_capture_port(int capture, int unit, bcm_port_t port, int directions)
{
    const sim::UnitsLock lock;
    latest_problem().clear();
    Capture *found = capture_of(capture);
    if (found == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    return begin(unit, own_port(port)).then([&](int own) -> int {
        if (directions & ~(SIM_CAPTURE_RECEIVED | SIM_CAPTURE_SENT)) {
            return BCM_E_PARAM;
        }
        found->watch(unit, own, directions);
        return found->file.is_good() ? static_cast<int>(BCM_E_NONE) : failed(found->file.problem());
    });
}

int sim_capture_count(int capture, int *packets)
{
    const sim::UnitsLock lock;
    const Capture *found = capture_of(capture);
    if (found == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    if (packets == nullptr) {
        return BCM_E_PARAM;
    }
    *packets = found->file.packets();
    return BCM_E_NONE;
}

int sim_capture_close(int capture)
{
    const sim::UnitsLock lock;
    latest_problem().clear();
    Capture *found = capture_of(capture);
    if (found == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    remove_tap(*found);
    const int rc = found->file.close() ? static_cast<int>(BCM_E_NONE) : failed(found->file.problem());
    captures().erase(capture);
    return rc;
}

int sim_replay(const char *file, int unit, bcm_port_t port, int timed, int *replayed, int *refused)
{
    latest_problem().clear();
    if (file == nullptr) {
        return BCM_E_PARAM;
    }
    std::vector<CapturedPacket> packets;
    int own = 0;
    int status = begin(unit, own_port(port)).then([&](int front) -> int {
        own = front;
        std::string text, problem;
        const int rc = front == cpu_port ? static_cast<int>(BCM_E_PORT) : read_file(file, &text);
        if (rc == BCM_E_NONE && !read_capture(text, &packets, &problem)) {
            return failed(file + (": " + problem));
        }
        return rc == BCM_E_FAIL ? failed(std::string(file) + ": cannot be read") : rc;
    });
    if (status != BCM_E_NONE) {
        return status;
    }
    const std::map<std::string, Place> places = places_by_name();
    int taken = 0;
    std::uint64_t before = packets.empty() ? 0 : packets.front().time;
    for (const CapturedPacket &packet : packets) {
        if (timed && packet.time > before) {
            sim_clock_advance(packet.time - before);
            before = packet.time;
        }
        const auto named = places.find(packet.interface);
        const auto [to_unit, to_port] = named != places.end() ? named->second : Place(unit, own);
        const auto *bytes = reinterpret_cast<const unsigned char *>(packet.frame.data());
        const int rc = sim_packet_arrive(to_unit, to_port, bytes, static_cast<int>(packet.frame.size()));
        taken += rc == BCM_E_NONE || rc == BCM_E_RESOURCE;
    }
    if (replayed != nullptr) {
        *replayed = taken;
    }
    if (refused != nullptr) {
        *refused = static_cast<int>(packets.size()) - taken;
    }
    return BCM_E_NONE;
}

const char *sim_capture_problem(void)
{
    return latest_problem().c_str();
}

}  // extern "C"
