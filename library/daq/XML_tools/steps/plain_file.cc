#include "steps/plain_file.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace zeb5 {

namespace {

bool is_plain_text(std::string_view path) {
    return std::none_of(path.begin(), path.end(), [](char c) { return c < ' ' || c > '~' || c == ':'; });
}

/// The XML library puts the working folder in front of a path that does not begin at the root.
bool has_plain_folder(std::string_view path) {
    char folder[PATH_MAX];
    return path.starts_with('/') || (getcwd(folder, sizeof folder) && is_plain_text(folder));
}

bool is_plain_path(std::string_view path) {
    if (!is_plain_text(path) || !has_plain_folder(path))
        return false;
    std::string_view rest = path;
    while (rest.starts_with("../"))
        rest.remove_prefix(3);
    return rest.find("..") == rest.npos;
}

bool is_same_time(const timespec &a, const timespec &b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool is_same_content(const struct stat &a, const struct stat &b) {
    return a.st_size == b.st_size && is_same_time(a.st_mtim, b.st_mtim);
}

} // namespace

plain_file::plain_file(const char *path) {
    // A pipe or a device must not even be opened, as opening it may have an effect
    if (!is_plain_path(path) || stat(path, &status_) != 0 || !S_ISREG(status_.st_mode))
        return;
    fd_ = open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (is_open() && (fstat(fd_, &status_) != 0 || !S_ISREG(status_.st_mode) || status_.st_size <= 0)) {
        close(fd_);
        fd_ = -1;
    }
}

plain_file::~plain_file() {
    if (is_open())
        close(fd_);
}

long plain_file::read(char *to, std::size_t count, std::size_t offset) const {
    // A file system may return fewer bytes than it was asked for. The XML library would take a short first
    // piece for the beginning of a short document.
    std::size_t done = 0;
    while (done < count) {
        const long got = pread(fd_, to + done, count - done, static_cast<off_t>(offset + done));
        if (got == 0)
            break;
        if (got > 0)
            done += static_cast<std::size_t>(got);
        else if (errno != EINTR)
            return -1;
    }
    return has_changed() ? -1 : static_cast<long>(done);
}

bool plain_file::has_changed() const {
    struct stat now;
    return fstat(fd_, &now) == 0 && !is_same_content(now, status_);
}

} // namespace zeb5
