#include "capture_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr std::size_t flushed_at = 65536;
constexpr std::uint32_t ethernet = 1;

/// Little-endian.
void put(std::string &text, std::uint64_t number, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(number >> 8 * i);
    }
}

void pad(std::string &text)
{
    text.resize((text.size() + 3) & ~std::size_t{3});
}

void put_option(std::string &text, unsigned code, const std::string &value)
{
    put(text, code, 2);
    put(text, value.size(), 2);
    text += value;
    pad(text);
}

std::string block(std::uint32_t type, const std::string &body)
{
    constexpr std::size_t around = 12;
    std::string text;
    put(text, type, 4);
    put(text, body.size() + around, 4);
    text += body;
    put(text, body.size() + around, 4);
    return text;
}

std::string section_header()
{
    std::string body;
    put(body, 0x1a2b3c4d, 4);
    put(body, 1, 2);
    put(body, 0, 2);
    put(body, ~std::uint64_t{0}, 8);  // of unknown length
    return block(0x0a0d0d0a, body);
}

std::string pcap_header()
{
    std::string text;
    put(text, 0xa1b23c4d, 4);  // nanoseconds
    put(text, 2, 2);
    put(text, 4, 2);
    put(text, 0, 8);
    put(text, frame_longest, 4);
    put(text, ethernet, 4);
    return text;
}

}  // namespace

bool CaptureWriter::open(const std::string &path, sim_capture_format_t format)
{
    path_ = path;
    format_ = format;
    file_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file_ < 0) {
        problem_ = path + ": " + std::strerror(errno);
        return false;
    }
    add(format == simCapturePcapng ? section_header() : pcap_header(), false);
    flush();
    struct stat status;
    if (!is_good() && ::fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) {
        ::unlink(path.c_str());
    }
    return is_good();
}

void CaptureWriter::add_interface(const std::string &name)
{
    if (format_ == simCapturePcap) {
        return;
    }
    std::string body;
    put(body, ethernet, 2);
    put(body, 0, 2);
    put(body, frame_longest, 4);
    put_option(body, 2, name);
    put_option(body, 9, "\x09");  // nanoseconds
    put(body, 0, 4);
    add(block(1, body), false);
}

void CaptureWriter::add_packet(std::uint32_t interface, std::uint64_t time, bool sent, ByteView frame)
{
    constexpr std::uint64_t second = 1000000000;
    std::string body;
    if (format_ == simCapturePcapng) {
        put(body, interface, 4);
        put(body, time >> 32, 4);
        put(body, time, 4);
    } else {
        put(body, time / second, 4);
        put(body, time % second, 4);
    }
    put(body, frame.size, 4);
    put(body, frame.size, 4);
    body.append(reinterpret_cast<const char *>(frame.data), frame.size);
    if (format_ == simCapturePcapng) {
        pad(body);
        std::string flags;
        put(flags, sent ? 2 : 1, 4);
        put_option(body, 2, flags);
        put(body, 0, 4);
        body = block(6, body);
    }
    add(body, true);
}

void CaptureWriter::add(const std::string &block, bool is_packet)
{
    if (is_good()) {
        waiting_ += block;
        blocks_.push_back({waiting_.size(), is_packet});
        packets_waiting_ += is_packet;
        if (waiting_.size() >= flushed_at) {
            flush();
        }
    }
}

void CaptureWriter::flush()
{
    std::size_t done = 0;
    while (is_good() && done < waiting_.size()) {
        const ssize_t count = ::write(file_, waiting_.data() + done, waiting_.size() - done);
        if (count >= 0) {
            done += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            problem_ = path_ + ": " + std::strerror(errno);
        }
    }
    keep_whole_blocks(done);
}

void CaptureWriter::keep_whole_blocks(std::size_t done)
{
    std::size_t kept = 0;
    for (const Block &block : blocks_) {
        if (block.end <= done) {
            kept = block.end;
            packets_written_ += block.is_packet;
        }
    }
    written_ += kept;
    if (kept < done) {
        // What cannot be cut off belongs to something else than a file.
        [[maybe_unused]] const int rc = ::ftruncate(file_, static_cast<off_t>(written_));
    }
    waiting_.clear();
    blocks_.clear();
    packets_waiting_ = 0;
}

bool CaptureWriter::close()
{
    if (file_ >= 0) {
        flush();
        if (::close(file_) != 0 && is_good()) {
            problem_ = path_ + ": " + std::strerror(errno);
        }
        file_ = -1;
    }
    return is_good();
}

}  // namespace sim
