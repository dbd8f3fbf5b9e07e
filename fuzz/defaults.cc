/// How every run of a harness is bounded; the flags of the command line come later and win.

#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) {
    static char quiet[] = "-close_fd_mask=3"; // the library's own output would drown libFuzzer's
    static char seconds[] = "-timeout=5", megabytes[] = "-rss_limit_mb=512", bytes[] = "-max_len=16384";
    static std::vector<char *> all;
    all = {(*argv)[0], quiet, seconds, megabytes, bytes};
    all.insert(all.end(), *argv + 1, *argv + *argc);
    *argc = static_cast<int>(all.size());
    all.push_back(nullptr);
    *argv = all.data();
    return 0;
}

/// The XML library loses the content model of an element whose declaration is ill-formed, and its part of a
/// stack cannot be told apart. What is lost of this library's own blocks is told all the same, but not a lost
/// parser or other object of the XML library, which allocates those itself: they show when the tests and the
/// seeds run under the address sanitizer, where nothing is left out.
extern "C" const char *__lsan_default_suppressions() { return "leak:libxerces-c\n"; }
extern "C" const char *__lsan_default_options() { return "print_suppressions=0"; }
