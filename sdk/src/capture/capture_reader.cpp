#include "capture_file.h"

#include <algorithm>

namespace sim {

namespace {

constexpr std::uint32_t ethernet = 1;
constexpr std::uint64_t nanoseconds = 1000000000;

/// What is wrong, and at which byte of the file.
struct Malformed {
    std::string what;
    std::size_t at;
};

/// Numbers and pieces of a text, one behind the other.
class Cursor {
public:
    Cursor(const std::string &text, std::size_t begin, std::size_t end, bool big_endian)
        : text_(text), place_(begin), end_(end), big_endian_(big_endian)
    {
    }

    std::size_t place() const { return place_; }
    std::size_t left() const { return end_ - place_; }

    std::uint64_t number(std::size_t bytes)
    {
        need(bytes);
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < bytes; ++i) {
            const std::size_t byte = big_endian_ ? i : bytes - 1 - i;
            value = value << 8 | static_cast<unsigned char>(text_[place_ + byte]);
        }
        place_ += bytes;
        return value;
    }
    std::uint32_t word() { return static_cast<std::uint32_t>(number(4)); }
    unsigned half() { return static_cast<unsigned>(number(2)); }

    std::string piece(std::size_t bytes)
    {
        need(bytes);
        place_ += bytes;
        return text_.substr(place_ - bytes, bytes);
    }

    void skip(std::size_t bytes)
    {
        need(bytes);
        place_ += bytes;
    }

    [[noreturn]] void fail(const std::string &what) const { throw Malformed{what, place_}; }

private:
    void need(std::size_t bytes) const
    {
        if (bytes > left()) {
            fail("the file ends in the middle");
        }
    }

    const std::string &text_;
    std::size_t place_;
    std::size_t end_;
    bool big_endian_;
};

std::size_t padded(std::size_t size)
{
    return (size + 3) & ~std::size_t{3};
}

void check_frame(const Cursor &cursor, std::uint64_t size)
{
    if (size < frame_header_bytes || size > frame_longest - checksum_bytes) {
        cursor.fail("a packet of " + std::to_string(size) + " bytes, which is no frame");
    }
}

bool has_magic(const std::string &text, std::uint32_t magic, bool *big_endian)
{
    if (text.size() < 4) {
        return false;
    }
    for (const bool big : {false, true}) {
        if (Cursor(text, 0, 4, big).word() == magic) {
            *big_endian = big;
            return true;
        }
    }
    return false;
}

void read_pcap(const std::string &text, bool big_endian, std::uint64_t unit,
               std::vector<CapturedPacket> &packets)
{
    Cursor cursor(text, 4, text.size(), big_endian);
    cursor.skip(16);
    if ((cursor.word() & 0xffff) != ethernet) {
        cursor.fail("the packets are not of Ethernet");
    }
    while (cursor.left() > 0) {
        const std::uint64_t seconds = cursor.word();
        const std::uint64_t parts = cursor.word();
        const std::uint32_t kept = cursor.word();
        cursor.skip(4);
        check_frame(cursor, kept);
        packets.push_back({"", seconds * nanoseconds + parts * unit, cursor.piece(kept)});
    }
}

struct Interface {
    std::string name;
    bool is_ethernet;
    std::uint64_t per_second;
    std::int64_t offset;  // seconds
};

Interface read_interface(Cursor body)
{
    Interface interface = {"", body.half() == ethernet, 1000000, 0};
    body.skip(6);
    while (body.left() >= 4) {
        const unsigned code = body.half();
        const unsigned size = body.half();
        if (code == 0) {
            break;
        }
        const std::string value = body.piece(size);
        body.skip(std::min(padded(size) - size, body.left()));
        if (code == 2) {
            interface.name = value.substr(0, value.find('\0'));
        } else if (code == 9 && size == 1) {
            const auto resolution = static_cast<unsigned char>(value[0]);
            const int power = resolution & 0x7f;
            interface.per_second = 1;
            if (power > (resolution & 0x80 ? 63 : 19)) {
                body.fail("a resolution of times that is too fine");
            }
            for (int i = 0; i < power; ++i) {
                interface.per_second *= resolution & 0x80 ? 2 : 10;
            }
        }
    }
    return interface;
}

std::uint64_t time_of(std::uint64_t ticks, std::uint64_t per_second)
{
    const std::uint64_t seconds = ticks / per_second, rest = ticks % per_second;
    const long double part =
        static_cast<long double>(rest) * nanoseconds / static_cast<long double>(per_second);
    return seconds * nanoseconds + static_cast<std::uint64_t>(part + 0.5L);
}

void read_pcapng(const std::string &text, std::vector<CapturedPacket> &packets)
{
    constexpr std::uint32_t section = 0x0a0d0d0a, magic = 0x1a2b3c4d;
    constexpr std::size_t around = 12;
    enum Type : std::uint32_t { interface_description = 1, old_packet = 2, simple_packet = 3, packet = 6 };

    bool big_endian = false;
    std::vector<Interface> interfaces;
    for (std::size_t place = 0; place < text.size();) {
        Cursor start(text, place, text.size(), big_endian);
        std::uint32_t type = start.word();
        if (type == section) {
            start.skip(4);
            big_endian = start.word() != magic;
            Cursor again(text, place + 8, text.size(), big_endian);
            if (again.word() != magic) {
                again.fail("a section of no known byte order");
            }
            interfaces.clear();
        }
        Cursor header(text, place + 4, text.size(), big_endian);
        const std::uint32_t length = header.word();
        if (length < around || length % 4 != 0 || length > text.size() - place) {
            header.fail("a block of " + std::to_string(length) + " bytes");
        }
        Cursor end(text, place + length - 4, place + length, big_endian);
        if (end.word() != length) {
            end.fail("the two lengths of a block differ");
        }
        Cursor body(text, place + 8, place + length - 4, big_endian);
        if (type == interface_description) {
            interfaces.push_back(read_interface(body));
        } else if (type == packet || type == old_packet || type == simple_packet) {
            std::size_t number = 0;
            if (type == packet) {
                number = body.word();
            } else if (type == old_packet) {
                number = body.half();
                body.skip(2);
            }
            if (number >= interfaces.size()) {
                body.fail("a packet of an interface that is not described");
            }
            const Interface &interface = interfaces[number];
            if (!interface.is_ethernet) {
                body.fail("the packets are not of Ethernet");
            }
            std::uint64_t ticks = 0;
            std::uint32_t kept;
            if (type == simple_packet) {
                kept = static_cast<std::uint32_t>(std::min<std::size_t>(body.word(), body.left()));
            } else {
                ticks = body.number(4) << 32;
                ticks |= body.number(4);
                kept = body.word();
                body.skip(4);
            }
            check_frame(body, kept);
            packets.push_back({interface.name, time_of(ticks, interface.per_second), body.piece(kept)});
        }
        place += length;
    }
}

}  // namespace

bool read_capture(const std::string &text, std::vector<CapturedPacket> *packets, std::string *problem)
{
    constexpr std::uint32_t microseconds = 0xa1b2c3d4, in_nanoseconds = 0xa1b23c4d, section = 0x0a0d0d0a;
    try {
        bool big_endian;
        if (has_magic(text, microseconds, &big_endian)) {
            read_pcap(text, big_endian, 1000, *packets);
        } else if (has_magic(text, in_nanoseconds, &big_endian)) {
            read_pcap(text, big_endian, 1, *packets);
        } else if (has_magic(text, section, &big_endian)) {
            read_pcapng(text, *packets);
        } else {
            *problem = "no file of captured packets";
            return false;
        }
    } catch (const Malformed &malformed) {
        *problem = malformed.what + " (byte " + std::to_string(malformed.at) + ")";
        return false;
    }
    return true;
}

}  // namespace sim
