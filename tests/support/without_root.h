#ifndef WITHOUT_ROOT_H
#define WITHOUT_ROOT_H

/// Takes away what only root may do, also from tests that root runs.

#include <cerrno>
#include <cstdio>
#include <exception>
#include <functional>
#include <system_error>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/test_files.h"

/// A folder that everybody may look into, and in which nobody but root may make a file.
class read_only_folder : public temporary_folder {
public:
    read_only_folder() {
        if (chmod(c_path(), 0555) != 0)
            throw std::system_error(errno, std::generic_category(), path());
    }
};

/// Runs `check` in a process of its own that is not root's, and returns whether all its expectations hold.
/// That process reports those that do not, as a test does.
inline bool holds_without_root(const std::function<void()> &check) {
    constexpr uid_t nobody = 65534;
    fflush(stdout); // or both processes would say it
    const pid_t child = fork();
    if (child == 0) {
        try {
            if (geteuid() == 0 && setuid(nobody) != 0)
                throw std::system_error(errno, std::generic_category(), "setuid");
            check();
        } catch (const std::exception &problem) {
            ADD_FAILURE() << problem.what();
        }
        fflush(stdout);
        _exit(testing::Test::HasFailure());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
}

#endif
