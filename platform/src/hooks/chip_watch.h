// Where accesses to the chips are seen.
#pragma once

/// From now on the shadow and the trace see accesses to the chips. Cheap, and may be called again.
void watchChips();

/// Nothing that is read from chips is traced while it lives.
class QuietReads {
public:
    QuietReads();
    ~QuietReads();
    QuietReads(const QuietReads &) = delete;
    QuietReads &operator=(const QuietReads &) = delete;

private:
    bool before_;
};
