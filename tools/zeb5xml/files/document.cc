#include "files/document.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/failure.h"
#include "files/output.h"

namespace {

constexpr char white_space[] = " \t\r\n"; // of XML, and of JSON

[[noreturn]] void fail(const std::string &name) {
    throw failure(STATUS_DOCUMENT, name + ": " + strerror(errno));
}

/// Closes the descriptor when the last owner goes, unless it is that of standard input.
std::shared_ptr<const int> owned(int descriptor) {
    return {new int(descriptor), [](const int *fd) {
                if (*fd > STDERR_FILENO)
                    close(*fd); // only read, so a failure loses nothing
                delete fd;
            }};
}

/// Finds where a document of any encoding can be given up. An endless source, such as /dev/zero, is not read
/// on then; the reader gets what was read, and refuses it.
class hopeless_bytes {
public:
    bool found_in(const char *block, size_t size) {
        if (!begun_ && size > 0) {
            begun_ = true;
            const size_t first = std::string_view(block, size).find_first_not_of(white_space);
            if (first != std::string_view::npos && !may_begin(block[first]))
                return true;
        }
        for (size_t i = 0; i < size; ++i) {
            nuls_ = block[i] == '\0' ? nuls_ + 1 : 0;
            if (nuls_ == more_than_any_encoding_has)
                return true;
        }
        return false;
    }

private:
    static constexpr int more_than_any_encoding_has = 8;

    /// `<`, the same in EBCDIC, the first byte of UTF-16 or UTF-32, or of a byte order mark; `{` or `[` of
    /// JSON.
    static bool may_begin(char byte) { return memchr("<\x4c\0\xef\xfe\xff{[", byte, 8) != nullptr; }

    bool begun_ = false;
    int nuls_ = 0;
};

/// Calls `take(text)` for block after block, up to the end or to bytes that no document holds.
template <class Take> void each_block(int descriptor, const std::string &name, Take take) {
    char buffer[65536];
    hopeless_bytes hopeless;
    for (;;) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail(name);
        take(std::string(buffer, static_cast<size_t>(count)));
        if (count == 0 || hopeless.found_in(buffer, static_cast<size_t>(count)))
            return;
    }
}

std::shared_ptr<const int> temporary_file() {
    const char *folder = getenv("TMPDIR");
    std::string path = std::string(folder && *folder ? folder : "/tmp") + "/zeb5xml.XXXXXX";
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0 || unlink(path.c_str()) != 0)
        throw failure(STATUS_OUTPUT, path + ": " + strerror(errno));
    return owned(descriptor);
}

/// Whether a reader that opens `/proc/self/fd/N` anew sees the same as one that reads on.
bool can_be_opened_again(int descriptor, const struct stat &status) {
    return S_ISREG(status.st_mode) && lseek(descriptor, 0, SEEK_CUR) == 0;
}

std::string path_of(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

} // namespace

std::string document::text() const {
    const std::shared_ptr<const int> file = owned(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (*file < 0)
        fail(name);
    std::string all;
    each_block(*file, name, [&](const std::string &block) { all += block; });
    return all;
}

bool document::is_blank() const {
    char block[65536];
    const std::shared_ptr<const int> file = owned(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    for (;;) {
        const ssize_t count = *file < 0 ? -1 : read(*file, block, sizeof block);
        if (count <= 0)
            return count == 0;
        if (std::string_view(block, static_cast<size_t>(count)).find_first_not_of(white_space) !=
            std::string_view::npos)
            return false;
    }
}

bool has_nul(const std::string &text) { return text.find('\0') != std::string::npos; }

document read_document(const std::string &path) {
    const bool is_input = path == "-";
    document result{path, is_input ? "standard input" : path};
    const auto file = owned(is_input ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status;
    char byte;
    if (*file < 0 || fstat(*file, &status) != 0)
        fail(result.name);
    if (can_be_opened_again(*file, status)) {
        if (is_input)
            result.path = path_of(*file);
        return result;
    }
    if (S_ISDIR(status.st_mode) && read(*file, &byte, 1) < 0)
        fail(result.name);
    result.kept = temporary_file();
    each_block(*file, result.name,
               [&](const std::string &block) { write_all(*result.kept, block, "temporary file"); });
    result.path = path_of(*result.kept);
    return result;
}
