#ifndef TEST_FILES_H
#define TEST_FILES_H

/// Files and folders that are removed when the test is over.

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

/// The whole content of a file.
inline std::string file_text(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + path);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

/// A file that holds `content`; its name ends in `suffix`. The path is absolute, without symbolic links.
class temporary_file {
public:
    explicit temporary_file(std::string_view content = {}, const char *suffix = ".xml")
        : path_((std::filesystem::canonical(std::filesystem::temp_directory_path()) / "zeb5_test_XXXXXX")
                    .string() +
                suffix) {
        const int fd = mkstemps(path_.data(), static_cast<int>(std::string_view(suffix).size()));
        if (fd < 0)
            throw std::system_error(errno, std::generic_category(), path_);
        const ssize_t written = write(fd, content.data(), content.size());
        close(fd);
        if (written != static_cast<ssize_t>(content.size()))
            throw std::runtime_error("cannot write " + path_);
    }
    ~temporary_file() { unlink(path_.c_str()); }
    temporary_file(const temporary_file &) = delete;
    temporary_file &operator=(const temporary_file &) = delete;

    const std::string &path() const { return path_; }
    char *c_path() { return path_.data(); }
    std::string text() const { return file_text(path_); }

private:
    std::string path_;
};

/// A new, empty folder. It is removed with all that it holds.
class temporary_folder {
public:
    temporary_folder()
        : path_((std::filesystem::canonical(std::filesystem::temp_directory_path()) / "zeb5_test_XXXXXX")
                    .string()) {
        if (!mkdtemp(path_.data()))
            throw std::system_error(errno, std::generic_category(), path_);
    }
    ~temporary_folder() {
        std::error_code ignored; // a test that removed it itself is right to do so
        std::filesystem::remove_all(path_, ignored);
    }
    temporary_folder(const temporary_folder &) = delete;
    temporary_folder &operator=(const temporary_folder &) = delete;

    const std::string &path() const { return path_; }
    char *c_path() { return path_.data(); }
    /// Path of the entry `name`, which need not be there.
    std::string operator/(std::string_view name) const { return path_ + '/' + std::string(name); }

private:
    std::string path_;
};

/// Changes the current folder while this object exists.
class working_folder {
public:
    explicit working_folder(const std::string &path) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    ~working_folder() { std::filesystem::current_path(before_); }

private:
    std::filesystem::path before_;
};

#endif
