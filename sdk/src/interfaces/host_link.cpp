#include "host_link.h"

#include "refusal.h"

#include <bcm/error.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace sim {

void refuse(const std::string &step)
{
    const int error = errno;
    const bool is_taken = error == EBUSY || error == EADDRINUSE;
    throw Refusal{is_taken          ? BCM_E_BUSY
                  : error == ENODEV ? BCM_E_NOT_FOUND
                                    : BCM_E_FAIL,
                  step + ": " + std::strerror(error)};
}

int require(int result, const std::string &step)
{
    if (result < 0) {
        refuse(step);
    }
    return result;
}

namespace {

ifreq request_for(const std::string &name)
{
    ifreq request = {};
    std::memcpy(request.ifr_name, name.data(), name.size());
    return request;
}

/// A name that one process of the network namespace can have, for as long as the socket is open.
Descriptor claimed(const std::string &name)
{
    Descriptor socket_of_claim(
        require(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0), "claiming the interface"));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    // Names that begin with a NUL are in no file system.
    const std::string text = std::string(1, '\0') + "simulated_switch:" + name;
    std::memcpy(address.sun_path, text.data(), text.size());
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size());
    if (bind(socket_of_claim.get(), reinterpret_cast<sockaddr *>(&address), size) != 0) {
        if (errno == EADDRINUSE) {
            throw Refusal{BCM_E_BUSY, "a port of a simulated switch has the interface " + name + " already"};
        }
        refuse("claiming the interface " + name);
    }
    return socket_of_claim;
}

Descriptor link_events()
{
    Descriptor events(require(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE),
                              "listening to the host"));
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK;
    require(bind(events.get(), reinterpret_cast<sockaddr *>(&address), sizeof address),
            "listening to the host");
    return events;
}

}  // namespace

HostLink::HostLink(std::string name) : name_(std::move(name)), claim_(claimed(name_)), events_(link_events())
{
}

bool HostLink::request(unsigned long what, ifreq &with) const
{
    return ioctl(events_.get(), what, &with) == 0;
}

void HostLink::find()
{
    ifreq asked = request_for(name_);
    if (!request(SIOCGIFINDEX, asked)) {
        refuse("the interface " + name_);
    }
    index_ = asked.ifr_ifindex;
    if (!request(SIOCGIFFLAGS, asked)) {
        refuse("the interface " + name_);
    }
    note_flags(static_cast<unsigned short>(asked.ifr_flags));
    exists_ = true;
}

bool HostLink::set_up(bool up)
{
    ifreq asked = request_for(name_);
    if (!request(SIOCGIFFLAGS, asked)) {
        return false;
    }
    asked.ifr_flags = static_cast<short>(up ? asked.ifr_flags | IFF_UP : asked.ifr_flags & ~IFF_UP);
    return request(SIOCSIFFLAGS, asked);
}

int HostLink::mtu() const
{
    ifreq asked = request_for(name_);
    return request(SIOCGIFMTU, asked) ? asked.ifr_mtu : 0;
}

void HostLink::update()
{
    alignas(nlmsghdr) std::array<char, 16384> buffer;
    ssize_t size;
    while ((size = recv(events_.get(), buffer.data(), buffer.size(), 0)) > 0) {
        auto left = static_cast<unsigned>(size);
        for (auto *message = reinterpret_cast<nlmsghdr *>(buffer.data()); NLMSG_OK(message, left);
             message = NLMSG_NEXT(message, left)) {
            const auto *about = static_cast<const ifinfomsg *>(NLMSG_DATA(message));
            const bool is_link = message->nlmsg_type == RTM_NEWLINK || message->nlmsg_type == RTM_DELLINK;
            if (!is_link || about->ifi_index != index_) {
                continue;
            }
            exists_ = exists_ && message->nlmsg_type == RTM_NEWLINK;
            note_flags(exists_ ? about->ifi_flags : 0);
        }
    }
    // What was lost when there was too much to tell is asked for.
    ifreq asked = request_for(name_);
    if (size < 0 && errno == ENOBUFS && request(SIOCGIFFLAGS, asked)) {
        note_flags(static_cast<unsigned short>(asked.ifr_flags));
    }
}

}  // namespace sim
