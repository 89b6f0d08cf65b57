/// One interface of the host: where frames come from and go to. Units are locked whenever one is worked on.
#pragma once

#include "host_link.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace sim {

/// Who gets the frames that an interface received.
struct FrameSink {
    void (*take)(void *datum, const unsigned char *frame, std::size_t length);
    void *datum;
};

class Interface {
public:
    explicit Interface(HostLink host_link) : link(std::move(host_link)) {}
    virtual ~Interface() = default;
    Interface(const Interface &) = delete;
    Interface &operator=(const Interface &) = delete;

    /// What becomes readable when there is something to receive.
    virtual int descriptor() const = 0;

    /// Gives at most so many received frames to the sink, padded to the shortest that there may be.
    virtual void receive(std::size_t most, FrameSink sink) = 0;

    /// Takes a frame, which is copied if it goes later.
    virtual void send(const unsigned char *frame, std::size_t length) = 0;
    /// What was taken goes now.
    virtual void flush() {}

    /// Whether there is somebody who could receive now.
    virtual bool is_connected() const = 0;
    /// Shows on the host whether the port is enabled.
    virtual void show(bool enabled) = 0;

    HostLink link;
    std::uint64_t sent = 0, not_sent = 0, not_received = 0;
};

/// Frames, without checksum, are at least that long where they arrive.
constexpr std::size_t shortest_frame = 60;

/// Both throw a Refusal.
std::unique_ptr<Interface> make_tap(HostLink link);
std::unique_ptr<Interface> make_packet_socket(HostLink link);

}  // namespace sim
