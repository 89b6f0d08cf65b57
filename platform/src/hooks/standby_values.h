// What was set for standby operation.
#pragma once

#include "quorel_api/integers.h"

#include <map>
#include <optional>

class StandbyValues {
public:
    void turn(bool on) { on_ = on; }
    void setDeviceCount(U32 count) { device_count_ = count; }
    void setDeviceId(int unit, U32 id);
    void setRevisionId(int unit, U32 id);

    /// Nothing while standby operation is off, and for what was not set.
    std::optional<U32> deviceCount() const { return on_ ? device_count_ : std::nullopt; }
    std::optional<U32> deviceId(int unit) const { return find(device_ids_, unit); }
    std::optional<U32> revisionId(int unit) const { return find(revision_ids_, unit); }

private:
    std::optional<U32> find(const std::map<int, U32> &ids, int unit) const;

    bool on_ = false;
    std::optional<U32> device_count_;
    std::map<int, U32> device_ids_, revision_ids_;
};

StandbyValues &standbyValues();
