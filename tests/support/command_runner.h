#ifndef COMMAND_RUNNER_H
#define COMMAND_RUNNER_H

/// Runs the zeb5xml command as a user does and returns all that it said.

#include <cstdio>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/test_files.h"

struct command_result {
    int status; // exit status; minus the signal's number when a signal ended it
    std::string out;
    std::string err;

    bool operator==(const command_result &) const = default;
};

inline std::ostream &operator<<(std::ostream &to, const command_result &result) {
    return to << "status " << result.status << "\n--- out\n"
              << result.out << "--- err\n"
              << result.err << "---\n";
}

/// A folder of documents in which the command is run, so that its messages show plain file names.
class command_folder {
public:
    std::string path(const std::string &name) const { return folder_ / name; }
    std::string text(const std::string &name) const { return file_text(path(name)); }
    void write(const std::string &name, const std::string &text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }

    /// `prepare` runs in the new process, after its streams are in place.
    template <class Prepare>
    command_result run(const std::vector<std::string> &arguments, const std::string &input,
                       Prepare prepare) const {
        temporary_file in(input), out, err;
        std::vector<char *> argv = {const_cast<char *>("zeb5xml")};
        for (const std::string &argument : arguments)
            argv.push_back(const_cast<char *>(argument.c_str()));
        argv.push_back(nullptr);
        pid_t child = fork();
        if (child < 0)
            throw std::runtime_error("cannot fork");
        if (child == 0) {
            dup2(open(in.path().c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
            dup2(open(out.path().c_str(), O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
            dup2(open(err.path().c_str(), O_WRONLY | O_CLOEXEC), STDERR_FILENO);
            prepare();
            if (chdir(folder_.path().c_str()) == 0)
                execv(ZEB5XML_COMMAND, argv.data());
            _exit(127);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), out.text(), err.text()};
    }
    command_result run(const std::vector<std::string> &arguments, const std::string &input = "") const {
        return run(arguments, input, [] {});
    }

private:
    temporary_folder folder_;
};

#endif
