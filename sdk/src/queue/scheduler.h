/// Which of a port's queues sends next.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sim {

/// A queue as its scheduler sees it.
struct Candidate {
    bool can_send = false;     // it has a packet that may leave now
    std::uint32_t length = 0;  // of that packet, with checksum
    std::uint32_t weight = 0;  // 0: strict priority
};

/// Remembers whose turn it is.
class Scheduler {
public:
    static constexpr std::size_t queues = 8;
    static constexpr std::size_t none = queues;
    using Candidates = std::array<Candidate, queues>;

    /// The queue that sends, or none. Those of strict priority come first, the highest first. Others take turns:
    /// by packets each has so many in a row as its weight says.
    std::size_t by_packets(const Candidates &candidates);

    /// Deficit round robin: each has so many bytes more at its turn as its weight says.
    std::size_t by_bytes(const Candidates &candidates);

    /// Weighted fair queueing, self-clocked: the packet that a server of all queues at once would be done with first.
    std::size_t by_fairness(const Candidates &candidates);

    /// Nothing is remembered any more.
    void forget() { *this = Scheduler(); }

    /// The highest of those that can send, or none.
    static std::size_t highest(const Candidates &candidates);

private:
    void next_turn();

    std::size_t turn_ = 0;
    bool has_begun_ = false;                       // the turn
    std::array<std::uint64_t, queues> left_ = {};  // packets or bytes of the turn
    std::array<std::uint64_t, queues> finished_ =
        {};                                     // virtual times, of the last packet or the one that waits
    std::array<bool, queues> is_awaited_ = {};  // for whose head that has been worked out
    std::uint64_t now_ = 0;                     // virtual
};

}  // namespace sim
