#include "support/read_apart.h"

#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/capture.h"
#include "support/reader_forms.h"

namespace {

std::string only_path; // the one that may be opened while `is_watching`
bool is_watching = false;
int opened_others = 0;

void note_opening(const char *path) {
    if (is_watching && only_path != path)
        ++opened_others;
}

/// The function of the same name in the library that this program stands in for.
template <class Function> Function *real(const char *name, Function *) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

ending end_of(const reading &seen) {
    if (*seen.thrown)
        return THROWN;
    return seen.result == 0 || seen.result == -1 ? READ : REFUSED; // -1: a pull reader's end
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...) {
    note_opening(path);
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return openat(AT_FDCWD, path, flags, mode);
}

FILE *fopen(const char *path, const char *mode) {
    note_opening(path);
    return real("fopen", fopen)(path, mode);
}

int socket(int domain, int type, int protocol) noexcept {
    note_opening("a socket");
    return real("socket", socket)(domain, type, protocol);
}

int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **found) {
    note_opening("a host");
    return real("getaddrinfo", getaddrinfo)(name, service, hints, found);
}
}

std::ostream &operator<<(std::ostream &to, const cost &seen) {
    const char *const names[] = {"read", "refused", "an exception", "opened others", "crashed"};
    return to << names[seen.end] << ", " << seen.seconds << " s, " << seen.megabytes << " MB";
}

int others_opened(const char *path, const std::function<void()> &run) {
    only_path = path;
    opened_others = 0;
    is_watching = true;
    run();
    is_watching = false;
    return opened_others;
}

cost read_apart(const reader_row &reader, const std::string &document) {
    const char *const roots[] = {"CHANDESCRIPTIONS", "DAQvariables", "BMR", "ENVINDEXDICT", "Camera"};
    reader_source source(reader, replace_all(document, "ROOT", roots[reader.kind]));
    const pid_t child = fork();
    if (child == 0) {
        const silence quiet;
        reading seen;
        const int others = others_opened(source.get(), [&] { seen = reader.read(source.get()); });
        _exit(others > 0 ? OPENED_OTHERS : end_of(seen));
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return {WIFEXITED(status) ? static_cast<ending>(WEXITSTATUS(status)) : CRASHED,
            seconds(used.ru_utime) + seconds(used.ru_stime), static_cast<double>(used.ru_maxrss) / 1024};
}
