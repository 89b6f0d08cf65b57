#include "scheduler.h"

#include <algorithm>

namespace sim {

namespace {

std::size_t highest_strict(const Scheduler::Candidates &candidates)
{
    for (std::size_t i = Scheduler::queues; i-- > 0;) {
        if (candidates[i].can_send && candidates[i].weight == 0) {
            return i;
        }
    }
    return Scheduler::none;
}

bool any(const Scheduler::Candidates &candidates)
{
    return std::any_of(candidates.begin(), candidates.end(),
                       [](const Candidate &each) { return each.can_send; });
}

}  // namespace

std::size_t Scheduler::highest(const Candidates &candidates)
{
    for (std::size_t i = queues; i-- > 0;) {
        if (candidates[i].can_send) {
            return i;
        }
    }
    return none;
}

void Scheduler::next_turn()
{
    turn_ = (turn_ + 1) % queues;
    has_begun_ = false;
}

std::size_t Scheduler::by_packets(const Candidates &candidates)
{
    const std::size_t strict = highest_strict(candidates);
    if (strict != none || !any(candidates)) {
        return strict;
    }
    for (;;) {
        const Candidate &own = candidates[turn_];
        if (!has_begun_) {
            left_[turn_] = own.weight;
            has_begun_ = true;
        }
        if (own.can_send && left_[turn_] != 0) {
            --left_[turn_];
            return turn_;
        }
        next_turn();
    }
}

std::size_t Scheduler::by_bytes(const Candidates &candidates)
{
    const std::size_t strict = highest_strict(candidates);
    if (strict != none || !any(candidates)) {
        return strict;
    }
    for (std::size_t turns = 0;; ++turns) {
        const Candidate &own = candidates[turn_];
        if (!own.can_send) {
            left_[turn_] = 0;
        } else {
            if (!has_begun_) {
                left_[turn_] += own.weight;
                has_begun_ = true;
            }
            if (left_[turn_] >= own.length) {
                left_[turn_] -= own.length;
                return turn_;
            }
        }
        next_turn();
        if (turns % queues == queues - 1) {
            // A whole round without any: those rounds in which none could send either are gone through at once.
            std::uint64_t rounds = ~std::uint64_t{0};
            for (std::size_t i = 0; i < queues; ++i) {
                if (candidates[i].can_send) {
                    const std::uint64_t missing = candidates[i].length - left_[i];
                    rounds =
                        std::min(rounds, (missing + candidates[i].weight - 1) / candidates[i].weight - 1);
                }
            }
            for (std::size_t i = 0; i < queues; ++i) {
                left_[i] += candidates[i].can_send ? rounds * candidates[i].weight : 0;
            }
        }
    }
}

std::size_t Scheduler::by_fairness(const Candidates &candidates)
{
    constexpr std::uint64_t parts = 1 << 20;  // of a byte's time
    const std::size_t strict = highest_strict(candidates);
    if (strict != none || !any(candidates)) {
        return strict;
    }
    std::size_t first = none;
    for (std::size_t i = queues; i-- > 0;) {
        if (!candidates[i].can_send) {
            continue;
        }
        if (!is_awaited_[i]) {
            finished_[i] = std::max(finished_[i], now_) + candidates[i].length * parts / candidates[i].weight;
            is_awaited_[i] = true;
        }
        if (first == none || finished_[i] < finished_[first]) {
            first = i;
        }
    }
    now_ = finished_[first];
    is_awaited_[first] = false;
    return first;
}

}  // namespace sim
