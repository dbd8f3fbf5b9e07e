#ifndef ZEB5_ZEB5XML_FILES_HPP
#define ZEB5_ZEB5XML_FILES_HPP

/// What zeb5xml.hpp, which includes this header, needs of files and streams. Programs use none of it
/// themselves.

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zeb5xml::detail {

/// The reason of the system call that has just failed.
inline std::error_code last_error() { return {errno, std::generic_category()}; }

/// Returns a descriptor that is none of a standard stream, even if that is closed; -1 after a failure.
inline int above_standard_streams(int descriptor) {
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    const int above = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return above;
}

/// Returns whether all was written; last_error() is the reason otherwise.
inline bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

/// Writes and closes a file; -1 is one that could not be opened. `mode` is what it gets.
inline std::error_code write_and_close(int descriptor, std::string_view text,
                                       std::optional<mode_t> mode = {}) {
    if (descriptor < 0)
        return last_error();
    std::error_code problem;
    if ((mode && ::fchmod(descriptor, *mode) != 0) || !write_all(descriptor, text))
        problem = last_error();
    if (::close(descriptor) != 0 && !problem)
        problem = last_error();
    return problem;
}

/// Creates a file beside the one at `path`, which becomes its path. No file that exists is opened.
inline int create_beside(std::string &path, mode_t mode) {
    const std::string target = path;
    for (int i = 0;; ++i) {
        path = target + ".new" + std::to_string(i);
        const int created = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (created < 0 && errno == EEXIST)
            continue;
        const int descriptor = above_standard_streams(created);
        if (created >= 0 && descriptor < 0) {
            const int reason = errno;
            ::unlink(path.c_str());
            errno = reason;
        }
        return descriptor;
    }
}

/// Puts a file with this text in the place of `target`, in one move when all is written. `mode` is that of
/// the old file.
inline std::error_code put_in_place(const std::string &target, std::string_view text,
                                    std::optional<mode_t> mode) {
    std::string beside = target;
    const int descriptor =
        create_beside(beside, mode ? 0600 : 0666); // nobody else opens it before it has its mode
    if (descriptor < 0)
        return last_error();
    std::error_code problem = write_and_close(descriptor, text, mode);
    if (!problem && ::rename(beside.c_str(), target.c_str()) != 0)
        problem = last_error();
    if (problem)
        ::unlink(beside.c_str());
    return problem;
}

/// Writes a text to the file at `path`. Nobody sees half of a regular file, and after a failure the old one
/// stays. The new one has its permissions, and a symbolic link stays one.
inline std::error_code replace_file(const std::string &path, std::string_view text) {
    struct stat old;
    if (::stat(path.c_str(), &old) == 0 && S_ISREG(old.st_mode)) {
        if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
            return last_error();
        std::error_code problem;
        const std::filesystem::path target = std::filesystem::canonical(path, problem);
        return problem ? problem : put_in_place(target.string(), text, old.st_mode & 0777);
    }
    if (::lstat(path.c_str(), &old) != 0 && errno == ENOENT)
        return put_in_place(path, text, std::nullopt);
    // A pipe or device, or a link to a file that is still to be created
    return write_and_close(above_standard_streams(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666)),
                           text);
}

/// A file for functions that only read or write files. It is in memory, and where /proc is not mounted, which
/// has a path to it, among the temporary files.
class memory_file {
public:
    memory_file() : descriptor_(above_standard_streams(memfd_create("zeb5xml", MFD_CLOEXEC))) {
        if (descriptor_ < 0)
            fail();
        path_ = "/proc/self/fd/" + std::to_string(descriptor_);
        if (::access(path_.c_str(), F_OK) != 0)
            become_temporary();
    }
    explicit memory_file(std::string_view text) : memory_file() {
        if (!write_all(descriptor_, text))
            fail();
    }
    ~memory_file() {
        ::close(descriptor_);
        if (is_temporary_)
            ::unlink(path_.c_str());
    }
    memory_file(const memory_file &) = delete;
    memory_file &operator=(const memory_file &) = delete;

    int descriptor() const { return descriptor_; }
    char *path() { return path_.data(); }

    /// The library's writers do not report a file that took a part of the text only. Such a file has no room
    /// for one more byte.
    std::string text() const {
        const off_t size = ::lseek(descriptor_, 0, SEEK_END);
        if (size < 0 || ::pwrite(descriptor_, "", 1, size) != 1 || ::ftruncate(descriptor_, size) != 0)
            fail();
        std::string all(static_cast<std::size_t>(size), '\0');
        for (std::size_t end = 0; end < all.size();) {
            errno = EIO; // the reason when the file ends early
            const ssize_t got =
                ::pread(descriptor_, all.data() + end, all.size() - end, static_cast<off_t>(end));
            if (got <= 0)
                fail();
            end += static_cast<std::size_t>(got);
        }
        return all;
    }

private:
    [[noreturn]] static void fail() { throw std::system_error(last_error(), "file in memory"); }

    void become_temporary() {
        ::close(descriptor_);
        path_ = (std::filesystem::temp_directory_path() / "zeb5xml.XXXXXX").string();
        descriptor_ = above_standard_streams(::mkostemp(path_.data(), O_CLOEXEC));
        if (descriptor_ < 0)
            fail();
        is_temporary_ = true;
    }

    int descriptor_;
    bool is_temporary_ = false;
    std::string path_;
};

/// Standard output and standard error go to a file in memory while this lives.
class held_output {
public:
    held_output() : lock_(turn()) {
        flush();
        for (int i : {0, 1}) {
            originals_[i] = ::fcntl(i + 1, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
            const bool is_closed = originals_[i] < 0 && errno == EBADF; // a closed stream stays closed
            if (!is_closed && (originals_[i] < 0 || ::dup2(file_.descriptor(), i + 1) < 0)) {
                const std::error_code problem = last_error();
                restore();
                throw std::system_error(problem, "standard streams");
            }
        }
    }
    ~held_output() { restore(); }
    held_output(const held_output &) = delete;
    held_output &operator=(const held_output &) = delete;

    /// Ends the redirection and returns what was written.
    std::string take() {
        restore();
        return file_.text();
    }

private:
    static std::mutex &turn() {
        static std::mutex turn; // the streams are the whole process's
        return turn;
    }
    static void flush() {
        std::cout.flush();
        std::cerr.flush();
        std::fflush(stdout);
        std::fflush(stderr);
    }
    void restore() {
        flush();
        for (int i : {0, 1})
            if (const int original = std::exchange(originals_[i], -1); original >= 0) {
                ::dup2(original, i + 1);
                ::close(original);
            }
    }

    memory_file file_;
    std::unique_lock<std::mutex> lock_;
    int originals_[2] = {-1, -1};
};

} // namespace zeb5xml::detail

#endif
