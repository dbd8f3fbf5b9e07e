#include "files/standard_streams.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace {

void flush_streams() {
    std::cout.flush();
    std::cerr.flush();
    fflush(stdout);
    fflush(stderr);
}

} // namespace

void occupy_standard_descriptors() {
    for (int fd = 0; fd <= 2; ++fd) {
        if (fcntl(fd, F_GETFD) != -1)
            continue;
        int opened = open("/dev/null", fd == 0 ? O_WRONLY : O_RDONLY); // the lowest free number, which is fd
        if (opened < 0)
            throw std::system_error(errno, std::generic_category(), "/dev/null");
    }
}

output_hold::output_hold(std::initializer_list<int> descriptors) {
    flush_streams();
    for (int fd : descriptors) {
        int original = fcntl(fd, F_DUPFD_CLOEXEC, 3);
        if (original < 0 || dup2(file_.descriptor(), fd) < 0) {
            int reason = errno;
            restore();
            throw std::system_error(reason, std::generic_category(), "cannot hold a standard stream");
        }
        held_.push_back({fd, original});
    }
}

output_hold::~output_hold() { restore(); }

std::string output_hold::release() {
    restore();
    return file_.text();
}

void output_hold::restore() {
    if (held_.empty())
        return;
    flush_streams();
    for (const held &one : held_) {
        dup2(one.original, one.descriptor); // cannot fail: both are open
        close(one.original);
    }
    held_.clear();
}

std::string readable_diagnostics(const std::string &text, const std::string &name) {
    static const std::string before_name = " at (file ", after_name = ", line ";
    std::string readable;
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        at = end + 1;
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const size_t from = line.find(before_name);
        const size_t to = from == std::string::npos ? from : line.find(after_name, from);
        if (to != std::string::npos)
            line.replace(from + before_name.size(), to - from - before_name.size(), name);
        readable += line + "\n";
    }
    return readable;
}

void write_standard_error(const std::string &text) {
    fwrite(text.data(), 1, text.size(), stderr); // a failure could not be reported anywhere
}

void tell(const std::string &text) { write_standard_error("zeb5xml: " + text + "\n"); }
