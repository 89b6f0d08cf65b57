/// Where the bytes of a frame are while it is in the switch.
///
/// All copies of a frame share one buffer, which counts them and goes back to a store with the last one, so that
/// in the long run nothing is allocated for a packet. The bytes have room in front, where each copy's own
/// beginning is written when it leaves, and zeros behind, with which short frames are filled up.
#pragma once

#include "packet.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace sim {

/// The beginning of a copy, in place of as many bytes of the shared frame.
class Head {
public:
    static constexpr std::size_t longest = 64;

    /// Without content yet; size is at most `longest`.
    void start(std::size_t replaced, std::size_t size)
    {
        replaces_ = replaced;
        size_ = size;
    }

    unsigned char *bytes() { return end() - size_; }
    std::size_t size() const { return size_; }
    std::size_t replaces() const { return replaces_; }  ///< bytes of the shared frame, from its start

    /// Writes it so that it ends there, where there is room for the longest before.
    void write_before(unsigned char *place) const
    {
        for (std::size_t done = 0; done < size_; done += step) {
            std::memcpy(place - done - step, end() - done - step, step);
        }
    }

private:
    static constexpr std::size_t step = 16;

    unsigned char *end() { return bytes_.data() + longest; }
    const unsigned char *end() const { return bytes_.data() + longest; }

    std::size_t replaces_;
    std::size_t size_;
    std::array<unsigned char, longest> bytes_;  // at the end
};

class FrameBuffer {
public:
    FrameBuffer() = default;

    /// Of one that has none: a copy of the frame, which is at most as long as the longest. std::bad_alloc
    void fill(ByteView frame)
    {
        store_ = free_ != nullptr ? free_ : made();
        free_ = store_->next_free;
        store_->users = 1;
        store_->size = frame.size;
        unsigned char *bytes = store_->bytes.data() + room_in_front;
        std::memcpy(bytes, frame.data, frame.size);
        // A frame can shrink by all of its head.
        std::memset(bytes + frame.size, 0, frame_min);
    }
    FrameBuffer(const FrameBuffer &other) : store_(other.store_)
    {
        if (store_ != nullptr) {
            ++store_->users;
        }
    }
    FrameBuffer(FrameBuffer &&other) noexcept : store_(std::exchange(other.store_, nullptr)) {}
    FrameBuffer &operator=(FrameBuffer other) noexcept
    {
        std::swap(store_, other.store_);
        return *this;
    }
    ~FrameBuffer()
    {
        if (store_ != nullptr && --store_->users == 0) {
            store_->next_free = free_;
            free_ = store_;
        }
    }

    ByteView bytes() const { return {store_->bytes.data() + room_in_front, store_->size}; }

    /// The same, to be changed for all copies.
    unsigned char *shared() { return store_->bytes.data() + room_in_front; }

    /// The copy with that beginning, in the buffer itself: good until the next is written. Shorter ones than the
    /// least are filled up.
    ByteView written(const Head &head) const
    {
        unsigned char *shared = store_->bytes.data() + room_in_front + head.replaces();
        head.write_before(shared);
        return {shared - head.size(), std::max(store_->size - head.replaces() + head.size(), shortest)};
    }

private:
    static constexpr std::size_t shortest = frame_min - checksum_bytes;
    static constexpr std::size_t room_in_front = Head::longest;

    struct Store {
        unsigned users;
        std::size_t size;
        Store *next_free;
        std::array<unsigned char, room_in_front + frame_longest + frame_min> bytes;
    };

    static Store *made();

    static Store *free_;  ///< as many as were in use at once, for ever

    Store *store_ = nullptr;
};

}  // namespace sim
