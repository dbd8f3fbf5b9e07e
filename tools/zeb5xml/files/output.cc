#include "files/output.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

#include "files/failure.h"

namespace {

[[noreturn]] void fail(const std::string &name) {
    if (errno == EPIPE)
        throw closed_pipe();
    throw failure(STATUS_OUTPUT, name + ": " + strerror(errno));
}

/// A descriptor; finish() closes it and checks the result.
class open_file {
public:
    open_file(int fd, const std::string &name) : fd_(fd), name_(name) {
        if (fd < 0)
            fail(name);
    }
    ~open_file() {
        if (fd_ >= 0)
            close(fd_);
    }
    open_file(const open_file &) = delete;
    open_file &operator=(const open_file &) = delete;

    int descriptor() const { return fd_; }
    void finish() {
        int fd = fd_;
        fd_ = -1;
        if (close(fd) != 0)
            fail(name_);
    }

private:
    int fd_;
    std::string name_;
};

/// Returns the file that `path` leads to through symbolic links, which stay as they are.
std::filesystem::path target_of(const std::string &path) {
    std::filesystem::path target = path;
    std::error_code ignored;
    for (int links = 0; links < 40 && std::filesystem::is_symlink(target, ignored); ++links)
        target = target.parent_path() / std::filesystem::read_symlink(target, ignored);
    return target;
}

mode_t mode_of_new_file() {
    mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// A file that a signal which ends the command removes first

const int ending_signals[] = {SIGHUP, SIGINT, SIGTERM};
char unfinished_file[PATH_MAX]; // its path; empty: none

void remove_unfinished_file(int signal) {
    if (unfinished_file[0] != '\0')
        unlink(unfinished_file);
    raise(signal); // the default action follows, as this handler is called once
}

/// Holds these signals back while it lives.
class signals_held {
public:
    signals_held() {
        sigset_t set;
        sigemptyset(&set);
        for (const int signal : ending_signals)
            sigaddset(&set, signal);
        sigprocmask(SIG_BLOCK, &set, &before_);
    }
    ~signals_held() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    signals_held(const signals_held &) = delete;
    signals_held &operator=(const signals_held &) = delete;

private:
    sigset_t before_;
};

/// Signals that were ignored stay so.
void remove_at_signals(const std::string &path) {
    snprintf(unfinished_file, sizeof unfinished_file, "%s", path.c_str());
    for (const int signal : ending_signals) {
        struct sigaction action = {}, before;
        action.sa_handler = remove_unfinished_file;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, &before);
        if (before.sa_handler == SIG_IGN)
            sigaction(signal, &before, nullptr);
    }
}

/// A new file in the folder of its target. It is removed again, by a signal as well, unless it took the
/// target's place.
class replacement {
public:
    replacement(const std::filesystem::path &target, mode_t mode, const std::string &name)
        : target_(target), pattern_((target.parent_path() / ".zeb5xml.XXXXXX").string()), name_(name),
          file_(made_file(pattern_), name) {
        made_ = true;
        if (fchmod(file_.descriptor(), mode) != 0)
            discard_and_fail();
    }
    ~replacement() {
        if (made_)
            unlink(pattern_.c_str());
        unfinished_file[0] = '\0';
    }
    replacement(const replacement &) = delete;
    replacement &operator=(const replacement &) = delete;

    void put_in_place(const std::string &text) {
        write_all(file_.descriptor(), text, name_);
        if (fsync(file_.descriptor()) != 0)
            fail(name_);
        file_.finish();
        const signals_held held; // the name is the target's from here on
        if (rename(pattern_.c_str(), target_.c_str()) != 0)
            fail(name_);
        made_ = false;
        unfinished_file[0] = '\0';
    }

private:
    static int made_file(std::string &pattern) {
        const signals_held held;
        const int descriptor = mkostemp(pattern.data(), O_CLOEXEC);
        if (descriptor >= 0)
            remove_at_signals(pattern);
        return descriptor;
    }
    [[noreturn]] void discard_and_fail() { // no destructor runs when a constructor throws
        int reason = errno;
        unlink(pattern_.c_str());
        errno = reason;
        fail(name_);
    }

    std::filesystem::path target_;
    std::string pattern_;
    std::string name_;
    open_file file_;
    bool made_ = false;
};

} // namespace

void write_all(int fd, const std::string &text, const std::string &name) {
    for (size_t done = 0; done < text.size();) {
        ssize_t count = write(fd, text.data() + done, text.size() - done);
        if (count >= 0)
            done += static_cast<size_t>(count);
        else if (errno != EINTR)
            fail(name);
    }
}

void write_standard_output(const std::string &text) { write_all(STDOUT_FILENO, text, "standard output"); }

void print_to_standard_output(const std::function<void()> &code) {
    errno = 0; // printing goes on after a failed write, whose reason is the last one here
    code();
    std::cout.flush();
    if (fflush(stdout) != 0 || ferror(stdout) || !std::cout)
        fail("standard output");
}

void close_standard_output() {
    if (close(STDOUT_FILENO) != 0)
        fail("standard output");
}

void write_output(const std::string &path, const std::string &text) {
    if (path == "-")
        return write_standard_output(text);
    struct stat status;
    bool exists = stat(path.c_str(), &status) == 0;
    if (!exists && errno != ENOENT) // symbolic links in a circle, for example
        fail(path);
    if (exists && !S_ISREG(status.st_mode)) { // a device or a pipe must not be replaced by a file
        open_file file(open(path.c_str(), O_WRONLY | O_CLOEXEC), path);
        write_all(file.descriptor(), text, path);
        return file.finish();
    }
    if (exists && access(path.c_str(), W_OK) != 0)
        fail(path);
    // The set-user-ID and set-group-ID bits are left out: the new file may have another owner and would run
    // as that user
    replacement(target_of(path), exists ? status.st_mode & 0777 : mode_of_new_file(), path)
        .put_in_place(text);
}
