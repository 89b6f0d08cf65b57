/// An interface of which the host's side is a network device and ours a file.
#include "interface.h"
#include "refusal.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/if_tun.h>
#include <sys/ioctl.h>

namespace sim {

namespace {

class Tap : public Interface {
public:
    Tap(HostLink host_link, Descriptor file) : Interface(std::move(host_link)), file_(std::move(file)) {}

    int descriptor() const override { return file_.get(); }

    void receive(std::size_t most, FrameSink sink) override
    {
        for (std::size_t i = 0; i < most; ++i) {
            const ssize_t size = read(file_.get(), frame_.data(), frame_.size());
            if (size <= 0) {
                break;
            }
            auto length = static_cast<std::size_t>(size);
            if (length < shortest_frame) {
                std::memset(frame_.data() + length, 0, shortest_frame - length);
                length = shortest_frame;
            }
            sink.take(sink.datum, frame_.data(), length);
        }
    }

    void send(const unsigned char *frame, std::size_t length) override
    {
        const bool done = write(file_.get(), frame, length) == static_cast<ssize_t>(length);
        ++(done ? sent : not_sent);
    }

    bool is_connected() const override { return link.is_up(); }

    void show(bool enabled) override
    {
        int carrier = enabled;
        // Kernels before 5.0 have no such request: there the carrier is always on.
        ioctl(file_.get(), TUNSETCARRIER, &carrier);
    }

private:
    Descriptor file_;
    std::array<unsigned char, 65536> frame_;
};

}  // namespace

std::unique_ptr<Interface> make_tap(HostLink link)
{
    Descriptor file(require(open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC), "opening /dev/net/tun"));
    ifreq wanted = {};
    std::memcpy(wanted.ifr_name, link.name().data(), link.name().size());
    // One that is there already, kept by somebody, is not taken over.
    wanted.ifr_flags = static_cast<short>(IFF_TAP | IFF_NO_PI | IFF_TUN_EXCL);
    require(ioctl(file.get(), TUNSETIFF, &wanted), "making the TAP interface " + link.name());
    link.find();
    return std::make_unique<Tap>(std::move(link), std::move(file));
}

}  // namespace sim
