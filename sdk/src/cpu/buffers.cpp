#include "buffers.h"

#include "begin.h"
#include "cpu.h"
#include "sim_rx.h"

namespace sim {

BufferPool &rx_pool()
{
    static BufferPool &pool = *new BufferPool;
    return pool;
}

namespace {

int take_of_pool(int size, void **buffer)
{
    BufferPool &pool = rx_pool();
    if (!pool.is_set_up()) {
        return BCM_E_INIT;
    }
    if (size < 0 || static_cast<std::size_t>(size) > pool.bytes()) {
        return BCM_E_PARAM;
    }
    void *taken = pool.take();
    if (taken == nullptr) {
        return BCM_E_MEMORY;
    }
    *buffer = taken;
    return BCM_E_NONE;
}

int give_to_pool(void *buffer)
{
    return rx_pool().give_back(buffer) ? BCM_E_NONE : BCM_E_PARAM;
}

}  // namespace

int take_buffer(const bcm_rx_cfg_t &config, int unit, int size, uint32 flags, void **buffer)
{
    return config.rx_alloc != nullptr ? config.rx_alloc(unit, size, flags, buffer)
                                      : take_of_pool(size, buffer);
}

int give_buffer(const bcm_rx_cfg_t &config, int unit, void *buffer)
{
    return config.rx_free != nullptr ? config.rx_free(unit, buffer) : give_to_pool(buffer);
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_rx_pool_setup(int pkt_count, int bytes_per_pkt)
{
    const UnitsLock lock;
    if (pkt_count < 1 || bytes_per_pkt < 1) {
        return BCM_E_PARAM;
    }
    if (rx_pool().is_set_up()) {
        return BCM_E_BUSY;
    }
    // What a switch can reach of the host's memory has an end.
    constexpr std::int64_t bytes_max = std::int64_t{256} << 20;
    if (std::int64_t{pkt_count} * bytes_per_pkt > bytes_max) {
        return BCM_E_MEMORY;
    }
    rx_pool().set_up(static_cast<std::size_t>(pkt_count), static_cast<std::size_t>(bytes_per_pkt));
    return BCM_E_NONE;
}

int sim_bcm_rx_pool_setup_done(void)
{
    const UnitsLock lock;
    return rx_pool().is_set_up();
}

int sim_bcm_rx_pool_cleanup(void)
{
    const UnitsLock lock;
    if (rx_pool().has_some_out()) {
        return BCM_E_BUSY;
    }
    rx_pool().clean_up();
    return BCM_E_NONE;
}

int sim_bcm_rx_pool_alloc(int unit, int size, uint32, void **pool)
{
    return begin(unit, given(pool)).then([&]() -> int { return take_of_pool(size, pool); });
}

int sim_bcm_rx_pool_free(int unit, void *pool)
{
    return begin(unit, given(pool)).then([&]() -> int { return give_to_pool(pool); });
}

int sim_bcm_rx_alloc(int unit, int pkt_size, uint32 flags, void **buf)
{
    return begin(unit, given(buf)).then([&](Switch &sw) -> int {
        return pkt_size < 0 ? static_cast<int>(BCM_E_PARAM)
                            : take_buffer(cpu_of(sw).config, unit, pkt_size, flags, buf);
    });
}

int sim_bcm_rx_free(int unit, void *pkt_data)
{
    return begin(unit, given(pkt_data)).then([&](Switch &sw) -> int {
        return give_buffer(cpu_of(sw).config, unit, pkt_data);
    });
}

int sim_bcm_rx_free_enqueue(int unit, void *pkt_data)
{
    return sim_bcm_rx_free(unit, pkt_data);
}

}  // extern "C"
