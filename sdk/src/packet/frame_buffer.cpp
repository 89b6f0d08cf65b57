#include "frame_buffer.h"

namespace sim {

FrameBuffer::Store *FrameBuffer::free_ = nullptr;

FrameBuffer::Store *FrameBuffer::made()
{
    auto *store = new Store;
    store->next_free = nullptr;
    return store;
}

}  // namespace sim
