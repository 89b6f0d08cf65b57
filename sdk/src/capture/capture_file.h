/// Files of captured packets: writing them piece by piece, and reading one as a whole.
#pragma once

#include "packet.h"

#include <sim/capture.h>

#include <cstdint>
#include <string>
#include <vector>

namespace sim {

/// One that is written. After the first failure nothing more is; what is in the file up to there is whole.
class CaptureWriter {
public:
    /// False: problem() says why it cannot be written, and a new file is not left behind.
    bool open(const std::string &path, sim_capture_format_t format);
    CaptureWriter() = default;
    CaptureWriter(const CaptureWriter &) = delete;
    CaptureWriter &operator=(const CaptureWriter &) = delete;
    ~CaptureWriter() { close(); }

    /// Interfaces are numbered from 0 on.
    void add_interface(const std::string &name);
    /// Time in nanoseconds.
    void add_packet(std::uint32_t interface, std::uint64_t time, bool sent, ByteView frame);

    /// False if not all of it could be written.
    bool close();

    /// In the file, or on the way there as long as all is good.
    int packets() const { return packets_written_ + packets_waiting_; }

    bool is_good() const { return problem_.empty(); }
    const std::string &problem() const { return problem_; }

private:
    struct Block {
        std::size_t end;  ///< in what waits
        bool is_packet;
    };

    void add(const std::string &block, bool is_packet);
    void flush();
    void keep_whole_blocks(std::size_t done);

    std::string path_;
    std::string problem_;
    int file_ = -1;
    sim_capture_format_t format_ = simCapturePcapng;
    std::string waiting_;
    std::vector<Block> blocks_;  // that waiting_ is made of
    std::uint64_t written_ = 0;
    int packets_waiting_ = 0, packets_written_ = 0;
};

struct CapturedPacket {
    std::string interface;  // its name, "" without
    std::uint64_t time;     // nanoseconds
    std::string frame;
};

/// Takes the text of a whole file apart. False: *problem says what is wrong, and at which byte.
bool read_capture(const std::string &text, std::vector<CapturedPacket> *packets, std::string *problem);

}  // namespace sim
