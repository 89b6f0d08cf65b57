#include "whole_file.h"

#include <bcm/error.h>
#include <sim/file.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>
#include <string_view>

namespace sim {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor &&other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor &operator=(Descriptor &&) = delete;

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

constexpr int links_max = 40;
constexpr int names_tried = 100;
constexpr std::size_t stem_max = 200;  // leaves room for what makes a name free

/// Up to the last slash, which is included.
std::string folder_of(const std::string &path)
{
    return path.substr(0, path.rfind('/') + 1);
}

/// Where a path leads to through links, there yet or not, so that it is not the link that is replaced.
/// Nothing: in a circle.
std::optional<std::string> without_links(std::string path)
{
    for (int links = 0; links < links_max; ++links) {
        char text[PATH_MAX];
        const ssize_t size = ::readlink(path.c_str(), text, sizeof text);
        if (size <= 0) {
            return path;
        }
        const std::string to(text, static_cast<std::size_t>(size));
        path = to.front() == '/' ? to : folder_of(path) + to;
    }
    return std::nullopt;
}

/// What stands under a name, links not followed; nothing if it is free.
std::optional<struct stat> status_of(const std::string &path)
{
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool same(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Whether two paths are, or would be, one entry of one folder.
bool same_entry(const std::string &one, const std::string &other)
{
    struct stat folder, other_folder;
    return one.substr(folder_of(one).size()) == other.substr(folder_of(other).size())
           && ::stat((folder_of(one) + ".").c_str(), &folder) == 0
           && ::stat((folder_of(other) + ".").c_str(), &other_folder) == 0 && same(folder, other_folder);
}

Descriptor create(const std::string &path)
{
    return Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
}

/// A new file in the folder of that one.
Descriptor create_beside(const std::string &path, std::string *name)
{
    const std::string stem =
        path.substr(0, folder_of(path).size() + stem_max) + "." + std::to_string(::getpid());
    for (int number = 0; number < names_tried; ++number) {
        *name = stem + "." + std::to_string(number) + ".tmp";
        Descriptor file = create(*name);
        if (file.number() >= 0 || errno != EEXIST) {
            return file;
        }
    }
    return Descriptor(-1);
}

/// A new file of that name, in place of a file or link that was left there.
Descriptor create_anew(const std::string &name)
{
    const auto left = status_of(name);
    if (left && (S_ISREG(left->st_mode) || S_ISLNK(left->st_mode))) {
        ::unlink(name.c_str());
    }
    return create(name);
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

/// Gives a file the owner, as far as this process may, and the rights of another.
bool take_after(int file, const struct stat &old)
{
    struct stat own;
    if (::fstat(file, &own) != 0) {
        return false;
    }
    const bool foreign = own.st_uid != old.st_uid || own.st_gid != old.st_gid;
    if (foreign && ::fchown(file, old.st_uid, old.st_gid) != 0 && errno != EPERM) {
        return false;
    }
    return ::fchmod(file, old.st_mode & 07777) == 0;
}

}  // namespace

int read_file(const std::string &path, std::string *text)
{
    // Not blocking, since it may turn out to be a pipe that nobody writes to.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.number() < 0) {
        return errno == ENOENT || errno == ENOTDIR ? BCM_E_NOT_FOUND : BCM_E_FAIL;
    }
    struct stat status;
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return BCM_E_FAIL;
    }
    std::string read;
    for (;;) {
        char block[16384];
        const ssize_t got = ::read(file.number(), block, sizeof block);
        if (got > 0) {
            read.append(block, static_cast<std::size_t>(got));
        } else if (got == 0) {
            text->swap(read);
            return BCM_E_NONE;
        } else if (errno != EINTR) {
            return BCM_E_FAIL;
        }
    }
}

int replace_file(const std::string &path, const std::string &beside, const std::string &text)
{
    const auto target = without_links(path);
    if (!target) {
        return BCM_E_FAIL;
    }
    const auto old = status_of(*target);
    if (old && !S_ISREG(old->st_mode)) {
        return BCM_E_FAIL;
    }
    const auto standing = status_of(beside);
    const bool own_name =
        beside.empty() || same_entry(beside, *target) || (old && standing && same(*old, *standing));
    std::string name = beside;
    Descriptor file = own_name ? create_beside(*target, &name) : create_anew(name);
    if (file.number() < 0) {
        return BCM_E_FAIL;
    }
    const bool written = (!old || take_after(file.number(), *old)) && write_all(file.number(), text)
                         && ::fsync(file.number()) == 0 && file.close();
    if (!written || std::rename(name.c_str(), target->c_str()) != 0) {
        ::unlink(name.c_str());
        return BCM_E_FAIL;
    }
    return BCM_E_NONE;
}

}  // namespace sim

int sim_file_replace(const char *file, const char *text)
{
    return sim::replace_file(file, "", text);
}
