// Where accesses to the chips are seen.
#pragma once

/// From now on the shadow and the trace see accesses to the chips. Cheap, and may be called again.
void watchChips();

/// Nothing that is read from chips is traced while it lives.
class QuietReads {
public:
    QuietReads();
    ~QuietReads();
    QuietReads(QuietReads const &) = delete;
    QuietReads &operator=(QuietReads const &) = delete;

private:
    bool before_;
};
