/// The pool of buffers for received packets, which all units share.
#pragma once

#include <bcm/rx.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

namespace sim {

class BufferPool {
public:
    bool is_set_up() const { return !memory_.empty(); }

    /// So many buffers of so many bytes, in place of none. std::bad_alloc
    void set_up(std::size_t count, std::size_t bytes)
    {
        std::vector<std::unique_ptr<std::uint8_t[]>> memory(count);
        for (auto &buffer : memory) {
            buffer = std::make_unique<std::uint8_t[]>(bytes);
            free_.push_back(buffer.get());
        }
        memory_ = std::move(memory);
        bytes_ = bytes;
    }

    bool has_some_out() const { return !out_.empty(); }

    void clean_up()
    {
        free_.clear();
        memory_.clear();
    }

    std::size_t bytes() const { return bytes_; }

    /// Null if none is left.
    void *take()
    {
        if (free_.empty()) {
            return nullptr;
        }
        std::uint8_t *buffer = free_.back();
        out_.insert(buffer);
        free_.pop_back();
        return buffer;
    }

    /// False if it is no buffer of the pool that is out.
    bool give_back(void *buffer)
    {
        const auto found = out_.find(static_cast<std::uint8_t *>(buffer));
        if (found == out_.end()) {
            return false;
        }
        free_.push_back(*found);
        out_.erase(found);
        return true;
    }

private:
    std::size_t bytes_ = 0;
    std::vector<std::unique_ptr<std::uint8_t[]>> memory_;
    std::vector<std::uint8_t *> free_;
    std::set<std::uint8_t *> out_;
};

/// Made on first use and never destroyed, as units are.
BufferPool &rx_pool();

/// A buffer of the kind that the configuration says, and its return: errors of its functions, or the pool's, which are
/// BCM_E_INIT before setup, BCM_E_PARAM (larger than the pool's, or none that is out) and BCM_E_MEMORY.
int take_buffer(const bcm_rx_cfg_t &config, int unit, int size, uint32 flags, void **buffer);
int give_buffer(const bcm_rx_cfg_t &config, int unit, void *buffer);

}  // namespace sim
