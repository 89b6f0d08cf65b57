/// Captures of what the SDK prints.
#include <sim/console.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

/// What stdout was before, and what it is now: a stream into memory that the C library grows.
struct Capture {
    std::FILE *before;
    std::FILE *stream;
    char *text;
    std::size_t size;
};

std::vector<Capture *> captures;
char *latest_text;

}  // namespace

extern "C" {

int sim_console_capture_begin(void)
{
    auto *capture = new Capture{stdout, nullptr, nullptr, 0};
    capture->stream = open_memstream(&capture->text, &capture->size);
    if (capture->stream == nullptr) {
        delete capture;
        return -1;
    }
    captures.push_back(capture);
    // The C library's stdout is a variable, so that every printf of the process goes where it says.
    stdout = capture->stream;
    return 0;
}

const char *sim_console_capture_end(size_t *size)
{
    if (captures.empty()) {
        return nullptr;
    }
    Capture *capture = captures.back();
    captures.pop_back();
    stdout = capture->before;
    std::fclose(capture->stream);
    std::free(latest_text);
    latest_text = capture->text;
    if (size != nullptr) {
        *size = capture->size;
    }
    delete capture;
    return latest_text;
}

}  // extern "C"
