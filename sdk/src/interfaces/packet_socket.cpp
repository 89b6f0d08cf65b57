/// An interface of the host that is read and written beside its network stack. What it receives stands in a ring of
/// slots that the kernel fills; what it is to send is handed over many frames at a time.
#include "checksum.h"
#include "interface.h"
#include "refusal.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <vector>

#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <sys/mman.h>
#include <sys/socket.h>

#ifndef PACKET_IGNORE_OUTGOING
#define PACKET_IGNORE_OUTGOING 23
#endif

namespace sim {

namespace {

constexpr std::size_t tag_bytes = 4, addresses_bytes = 12;
constexpr std::size_t frame_longest = 16384;

/// The kernel's memory for received frames.
class Ring {
public:
    Ring(int socket_number, std::size_t slot_size) : slot_(slot_size)
    {
        tpacket_req request = {};
        request.tp_block_size = static_cast<unsigned>(block_size);
        request.tp_frame_size = static_cast<unsigned>(slot_size);
        request.tp_block_nr = blocks;
        request.tp_frame_nr = static_cast<unsigned>(count());
        require(setsockopt(socket_number, SOL_PACKET, PACKET_RX_RING, &request, sizeof request),
                "making a ring for received frames");
        void *memory =
            mmap(nullptr, blocks * block_size, PROT_READ | PROT_WRITE, MAP_SHARED, socket_number, 0);
        require(memory == MAP_FAILED ? -1 : 0, "mapping the ring for received frames");
        memory_ = static_cast<unsigned char *>(memory);
    }
    ~Ring()
    {
        if (memory_ != nullptr) {
            munmap(memory_, blocks * block_size);
        }
    }
    Ring(Ring &&other) noexcept
        : slot_(other.slot_), next_(other.next_), memory_(std::exchange(other.memory_, nullptr))
    {
    }

    /// The oldest frame that was received, or null.
    tpacket2_hdr *front() const
    {
        auto *header = reinterpret_cast<tpacket2_hdr *>(memory_ + next_ * slot_);
        const auto status = __atomic_load_n(&header->tp_status, __ATOMIC_ACQUIRE);
        return status & TP_STATUS_USER ? header : nullptr;
    }
    /// Gives its slot back.
    void pop(tpacket2_hdr *header)
    {
        __atomic_store_n(&header->tp_status, TP_STATUS_KERNEL, __ATOMIC_RELEASE);
        next_ = (next_ + 1) % count();
    }

private:
    static constexpr std::size_t block_size = 1 << 18, blocks = 16;

    std::size_t count() const { return blocks * block_size / slot_; }

    std::size_t slot_, next_ = 0;
    unsigned char *memory_ = nullptr;
};

/// Frames that wait to be handed over.
class Queue {
public:
    Queue()
    {
        for (std::size_t i = 0; i < most; ++i) {
            messages_[i].msg_hdr.msg_iov = &pieces_[i];
            messages_[i].msg_hdr.msg_iovlen = 1;
        }
    }

    /// Whether there is room for one more.
    bool can_take(std::size_t length) const { return count_ < most && used_ + length <= bytes_.size(); }

    void take(const unsigned char *frame, std::size_t length)
    {
        std::memcpy(bytes_.data() + used_, frame, length);
        pieces_[count_++] = {bytes_.data() + used_, length};
        used_ += length;
    }

    /// Hands all over; the number of those that were taken. The others are lost.
    std::size_t flush(int socket_number)
    {
        std::size_t next = 0, taken = 0;
        bool was_down = false;
        while (next < count_) {
            const int sent =
                sendmmsg(socket_number, &messages_[next], static_cast<unsigned>(count_ - next), MSG_DONTWAIT);
            if (sent > 0) {
                next += static_cast<std::size_t>(sent);
                taken += static_cast<std::size_t>(sent);
            } else if (errno == ENETDOWN && !was_down) {
                was_down = true;  // perhaps no longer: it is told once what happened before
            } else if (errno == EAGAIN || errno == ENOBUFS || errno == ENETDOWN) {
                break;
            } else {
                ++next;  // that one cannot go, such as one that is too long
            }
        }
        count_ = used_ = 0;
        return taken;
    }

    std::size_t count() const { return count_; }

private:
    static constexpr std::size_t most = 64;

    std::size_t count_ = 0, used_ = 0;
    std::array<iovec, most> pieces_ = {};
    std::array<mmsghdr, most> messages_ = {};
    std::vector<unsigned char> bytes_ = std::vector<unsigned char>(8 * frame_longest);
};

class PacketSocket : public Interface {
public:
    PacketSocket(HostLink host_link, Descriptor packet_socket, Ring ring)
        : Interface(std::move(host_link)),
          socket_(std::move(packet_socket)),
          ring_(std::move(ring)),
          was_up_(link.is_up()),
          is_shown_(was_up_)
    {
    }
    ~PacketSocket() override
    {
        if (link.exists() && is_shown_ != was_up_) {
            link.set_up(was_up_);
        }
    }

    int descriptor() const override { return socket_.get(); }

    void receive(std::size_t most, FrameSink sink) override
    {
        for (std::size_t i = 0; i < most; ++i) {
            tpacket2_hdr *header = ring_.front();
            if (header == nullptr) {
                break;
            }
            give(*header, sink);
            ring_.pop(header);
        }
    }

    void send(const unsigned char *frame, std::size_t length) override
    {
        if (!queue_.can_take(length)) {
            flush();
        }
        queue_.take(frame, length);
    }

    void flush() override
    {
        const std::size_t count = queue_.count(), done = queue_.flush(socket_.get());
        sent += done;
        not_sent += count - done;
    }

    /// While our end is down nothing can be said of the other.
    bool is_connected() const override { return !is_shown_ || link.is_running(); }

    void show(bool enabled) override
    {
        if (is_shown_ != enabled && link.set_up(enabled)) {
            is_shown_ = enabled;
        }
    }

private:
    void give(const tpacket2_hdr &header, FrameSink sink)
    {
        const auto *at = reinterpret_cast<const unsigned char *>(&header);
        const auto *from = reinterpret_cast<const sockaddr_ll *>(at + TPACKET_ALIGN(sizeof header));
        std::size_t length = header.tp_len;
        if (from->sll_pkttype == PACKET_OUTGOING) {
            return;
        }
        if (header.tp_snaplen != header.tp_len || length < addresses_bytes + 2 || length > frame_longest) {
            ++not_received;
            return;
        }
        const unsigned char *bytes = at + header.tp_mac;
        constexpr unsigned incomplete = TP_STATUS_VLAN_VALID | TP_STATUS_CSUMNOTREADY;
        if (length >= shortest_frame && !(header.tp_status & incomplete)) {
            sink.take(sink.datum, bytes, length);
        } else {
            length = completed(header, bytes, length);
            sink.take(sink.datum, frame_.data(), length);
        }
    }

    /// Puts into frame_ what the kernel leaves to others: a tag, which it has beside the frame, the checksum, and bytes
    /// up to the least length. The length then.
    std::size_t completed(const tpacket2_hdr &header, const unsigned char *bytes, std::size_t length)
    {
        unsigned char *place = frame_.data();
        std::memcpy(place, bytes, addresses_bytes);
        place += addresses_bytes;
        if (header.tp_status & TP_STATUS_VLAN_VALID) {
            const unsigned type =
                header.tp_status & TP_STATUS_VLAN_TPID_VALID ? header.tp_vlan_tpid : ETH_P_8021Q;
            const unsigned char tag[tag_bytes] = {static_cast<unsigned char>(type >> 8),
                                                  static_cast<unsigned char>(type),
                                                  static_cast<unsigned char>(header.tp_vlan_tci >> 8),
                                                  static_cast<unsigned char>(header.tp_vlan_tci)};
            std::memcpy(place, tag, sizeof tag);
            place += sizeof tag;
        }
        std::memcpy(place, bytes + addresses_bytes, length - addresses_bytes);
        length += static_cast<std::size_t>(place - frame_.data()) - addresses_bytes;
        if (header.tp_status & TP_STATUS_CSUMNOTREADY) {
            complete_checksum(frame_.data(), length);
        }
        if (length < shortest_frame) {
            std::memset(frame_.data() + length, 0, shortest_frame - length);
            length = shortest_frame;
        }
        return length;
    }

    Descriptor socket_;
    Ring ring_;
    Queue queue_;
    const bool was_up_;
    bool is_shown_;  ///< whether our end is up
    std::array<unsigned char, frame_longest + tag_bytes> frame_;
};

template <class Value>
void set(int socket_number, int option, const Value &value, const char *step)
{
    require(setsockopt(socket_number, SOL_PACKET, option, &value, sizeof value), step);
}

/// A power of two that has room for the interface's frames.
std::size_t slot_size(int mtu)
{
    const std::size_t longest =
        static_cast<std::size_t>(mtu) + ETH_HLEN + 2 * tag_bytes + TPACKET2_HDRLEN + 32;
    std::size_t size = 2048;
    while (size < longest && size < 2 * frame_longest) {
        size *= 2;
    }
    return size;
}

}  // namespace

std::unique_ptr<Interface> make_packet_socket(HostLink link)
{
    link.find();
    const std::string step = "reading from the interface " + link.name();
    // Of no protocol, so that it receives nothing before it is bound.
    Descriptor packet_socket(require(socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0), step));
    const int number = packet_socket.get();
    set(number, PACKET_VERSION, static_cast<int>(TPACKET_V2), step.c_str());
    Ring ring(number, slot_size(link.mtu()));
    packet_mreq membership = {};
    membership.mr_ifindex = link.index();
    membership.mr_type = PACKET_MR_PROMISC;
    set(number, PACKET_ADD_MEMBERSHIP, membership, step.c_str());
    // Older kernels have neither: there what others send is told apart frame by frame, and what we send is queued.
    const int on = 1;
    setsockopt(number, SOL_PACKET, PACKET_IGNORE_OUTGOING, &on, sizeof on);
    setsockopt(number, SOL_PACKET, PACKET_QDISC_BYPASS, &on, sizeof on);
    sockaddr_ll address = {};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(ETH_P_ALL);
    address.sll_ifindex = link.index();
    require(bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address), step);
    return std::make_unique<PacketSocket>(std::move(link), std::move(packet_socket), std::move(ring));
}

}  // namespace sim
