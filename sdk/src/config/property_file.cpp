#include "property_file.h"

#include <bcm/error.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace sim {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return number_; }

    /// False if what was written has not reached the file after all.
    bool close()
    {
        const int number = number_;
        number_ = -1;
        return number < 0 || ::close(number) == 0;
    }

private:
    int number_;
};

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Adds what a line says. False if it cannot be a line of a property file.
bool read_line(std::string_view line, Properties *properties)
{
    line = trimmed(line);
    if (line.empty() || line.front() == '#') {
        return true;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return false;
    }
    const std::string name(trimmed(line.substr(0, equals)));
    const std::string value(trimmed(line.substr(equals + 1)));
    if (!valid_property_name(name) || !valid_property_value(value)) {
        return false;
    }
    (*properties)[name] = value;
    return true;
}

bool write_all(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(file, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

/// The file that a path leads to through links, so that a link is not replaced by a file.
std::string without_links(const std::string &path)
{
    char *resolved = ::realpath(path.c_str(), nullptr);
    const std::string result = resolved != nullptr ? resolved : path;
    std::free(resolved);
    return result;
}

}  // namespace

int read_file(const std::string &path, std::string *text)
{
    // Not blocking, since it may turn out to be a pipe that nobody writes to.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0) {
        return errno == ENOENT || errno == ENOTDIR ? BCM_E_NOT_FOUND : BCM_E_FAIL;
    }
    struct stat status;
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return BCM_E_FAIL;
    }
    text->clear();
    for (;;) {
        char block[16384];
        const ssize_t got = ::read(file.number(), block, sizeof block);
        if (got > 0) {
            text->append(block, static_cast<std::size_t>(got));
        } else if (got == 0) {
            return BCM_E_NONE;
        } else if (errno != EINTR) {
            return BCM_E_FAIL;
        }
    }
}

int read_property_file(const std::string &path, Properties *properties)
{
    std::string text;
    const int rc = read_file(path, &text);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    Properties found;
    std::string_view rest = text;
    for (int number = 1; !rest.empty(); ++number) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
        if (!read_line(line, &found)) {
            std::fprintf(stderr, "%s:%d: not a property\n", path.c_str(), number);
            return BCM_E_CONFIG;
        }
    }
    *properties = std::move(found);
    return BCM_E_NONE;
}

std::string property_text(const Properties &properties)
{
    std::string text;
    for (const auto &[name, value] : properties) {
        text += name + "=" + value + "\n";
    }
    return text;
}

int replace_file(const std::string &path, std::string beside, const std::string &text)
{
    const std::string target = without_links(path);
    struct stat old;
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && !S_ISREG(old.st_mode)) {
        return BCM_E_FAIL;
    }
    if (beside.empty()) {
        beside = target + "." + std::to_string(::getpid()) + ".tmp";
    }
    Descriptor file(::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (file.number() < 0) {
        return BCM_E_FAIL;
    }
    const bool written = (!exists || ::fchmod(file.number(), old.st_mode & 07777) == 0)
                         && write_all(file.number(), text) && ::fsync(file.number()) == 0 && file.close();
    if (!written || ::rename(beside.c_str(), target.c_str()) != 0) {
        ::unlink(beside.c_str());
        return BCM_E_FAIL;
    }
    return BCM_E_NONE;
}

}  // namespace sim
