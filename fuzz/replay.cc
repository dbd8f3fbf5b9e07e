/// Runs a harness over the named files, and over all files in the named folders. So seeds and past findings
/// are tried again with any compiler.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
// Where the sanitizers report, when there are any; harnesses turn standard error elsewhere.
extern "C" [[gnu::weak]] void __sanitizer_set_report_fd(void *fd);

namespace {

void replay(const std::filesystem::path &path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
    if (!in)
        fail("cannot read " + path.string());
    dprintf(failure_fd, "%s\n", path.c_str()); // the last one named is the one that failed
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char **argv) {
    if (__sanitizer_set_report_fd)
        __sanitizer_set_report_fd(reinterpret_cast<void *>(static_cast<std::intptr_t>(failure_fd)));
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path = argv[i];
        if (!std::filesystem::exists(path))
            continue; // a harness without findings has no folder of them
        if (!std::filesystem::is_directory(path)) {
            replay(path);
            ++replayed;
            continue;
        }
        for (const auto &entry : std::filesystem::recursive_directory_iterator(path))
            if (entry.is_regular_file()) {
                replay(entry.path());
                ++replayed;
            }
    }
    expect(replayed > 0, "there is something to replay");
    return 0;
}
