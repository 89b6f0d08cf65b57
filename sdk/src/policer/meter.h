/// How a policer colours packets: by one or two buckets, in the ways that bcm_policer_mode_t names.
#pragma once

#include "token_bucket.h"

#include <bcm/policer.h>

namespace sim {

class Meter {
public:
    Meter() = default;

    /// What a valid configuration asks for. The buckets are full or empty, as it says.
    explicit Meter(const bcm_policer_config_t &config);

    /// The colour of a packet of so many bytes that comes with one.
    bcm_color_t color(bcm_color_t came, std::size_t bytes);

private:
    bcm_color_t by_one(bcm_color_t came, std::uint64_t tokens);
    bcm_color_t by_single_rate(bcm_color_t came, std::uint64_t tokens);
    bcm_color_t by_two_rates(bcm_color_t came, std::uint64_t tokens);
    bcm_color_t by_two_buckets(bcm_color_t came, std::uint64_t tokens);

    /// What the committed bucket has no room for goes into the other.
    void couple();

    bcm_policer_mode_t mode_ = bcmPolicerModePassThrough;
    bool is_blind_ = false;
    bool counts_packets_ = false;
    TokenBucket committed_, other_;  // the only one is committed_
};

}  // namespace sim
