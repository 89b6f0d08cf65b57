/// An interface as the host administers it: there or not, up or down, and used by one process only.
#pragma once

#include "descriptor.h"

#include <string>

#include <net/if.h>

namespace sim {

/// Works in the network namespace that the thread was in which made it.
class HostLink {
public:
    /// Takes the name for this process, whether there is such an interface yet or not. Throws a Refusal,
    /// BCM_E_BUSY if another has it.
    explicit HostLink(std::string name);

    /// Finds the interface. Throws a Refusal, BCM_E_NOT_FOUND if there is none.
    void find();

    /// Becomes readable when something has changed.
    int descriptor() const { return events_.get(); }
    /// Reads what has changed.
    void update();

    const std::string &name() const { return name_; }
    int index() const { return index_; }
    bool exists() const { return exists_; }
    bool is_up() const { return flags_ & IFF_UP; }
    /// Whether it is up and its other end too.
    bool is_running() const { return is_up() && (flags_ & IFF_RUNNING); }

    /// From now on nothing is asked of the host any more.
    void forget() { exists_ = false; }

    /// False if the host refuses.
    bool set_up(bool up);
    /// Bytes of its frames' payloads.
    int mtu() const;

private:
    bool request(unsigned long what, ifreq &with) const;
    void note_flags(unsigned flags) { flags_ = flags; }

    std::string name_;
    Descriptor claim_, events_;
    int index_ = 0;
    bool exists_ = false;
    unsigned flags_ = 0;
};

}  // namespace sim
