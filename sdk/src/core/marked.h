/// Has a flag set while it lives.
#pragma once

namespace sim {

class Marked {
public:
    explicit Marked(bool &flag) : flag_(flag) { flag_ = true; }
    ~Marked() { flag_ = false; }
    Marked(const Marked &) = delete;
    Marked &operator=(const Marked &) = delete;

private:
    bool &flag_;
};

}  // namespace sim
