#include "frame_buffer.h"

#include <cstring>

namespace sim {

void FrameBuffer::fill(ByteView frame)
{
    store_ = taken();
    store_->users = 1;
    store_->size = frame.size;
    unsigned char *bytes = store_->bytes.data() + room_in_front;
    std::memcpy(bytes, frame.data, frame.size);
    // A frame can shrink by all of its head.
    std::memset(bytes + frame.size, 0, frame_min);
}

FrameBuffer::Store *FrameBuffer::free_ = nullptr;

FrameBuffer::Store *FrameBuffer::taken()
{
    Store *store = free_;
    if (store == nullptr) {
        return new Store;
    }
    free_ = store->next_free;
    return store;
}

void FrameBuffer::give_back(Store *store)
{
    store->next_free = free_;
    free_ = store;
}

}  // namespace sim
