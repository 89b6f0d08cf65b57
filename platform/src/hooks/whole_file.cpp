#include "whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <memory>

namespace {

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

constexpr int links_max = 40;
constexpr std::size_t name_max = 200;

/// Where a path leads to through links, there yet or not, so that it is not the link that is replaced. Empty: in
/// a circle.
std::string target(std::string path)
{
    for (int links = 0; links < links_max; ++links) {
        char text[PATH_MAX];
        const ssize_t size = ::readlink(path.c_str(), text, sizeof text);
        if (size <= 0) {
            return path;
        }
        std::string const to(text, static_cast<std::size_t>(size));
        path = to[0] == '/' ? to : path.substr(0, path.rfind('/') + 1) + to;
    }
    return "";
}

/// A name in the same folder that is no longer than names can be.
std::string besideOf(const std::string &path)
{
    return path.substr(0, path.rfind('/') + 1 + name_max) + "." + std::to_string(::getpid()) + ".tmp";
}

bool isRegular(int descriptor)
{
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Writes the text, and closes the file.
bool write(int descriptor, const std::string &text)
{
    File file(::fdopen(descriptor, "w"));
    if (!file) {
        ::close(descriptor);
        return false;
    }
    const bool written = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size()
                         && std::fflush(file.get()) == 0 && ::fsync(descriptor) == 0;
    return std::fclose(file.release()) == 0 && written;
}

}  // namespace

bool readWholeFile(const char *path, std::string *text)
{
    // Not blocking, since it may be a pipe that nobody writes to.
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return false;
    }
    File file(isRegular(descriptor) ? ::fdopen(descriptor, "r") : nullptr);
    if (!file) {
        ::close(descriptor);
        return false;
    }
    text->clear();
    char block[16384];
    while (std::size_t const got = std::fread(block, 1, sizeof block, file.get())) {
        text->append(block, got);
    }
    return !std::ferror(file.get());
}

bool writeWholeFile(const char *path, const std::string &text)
{
    std::string const wanted = target(path);
    std::string const beside = besideOf(wanted);
    struct stat old;
    const bool exists = ::stat(wanted.c_str(), &old) == 0;
    if (wanted.empty() || (exists && !S_ISREG(old.st_mode))) {
        return false;
    }
    const int descriptor = ::open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        return false;
    }
    const bool same_rights = !exists || ::fchmod(descriptor, old.st_mode & 07777) == 0;
    const bool written = write(descriptor, text) && same_rights;
    const bool done = written && std::rename(beside.c_str(), wanted.c_str()) == 0;
    if (!done) {
        ::unlink(beside.c_str());
    }
    return done;
}
