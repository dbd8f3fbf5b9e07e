/// The limits of every run of a harness. Flags of the command line override them.

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
