#ifndef ZEB5XML_FAILURE_H
#define ZEB5XML_FAILURE_H

#include <stdexcept>
#include <string>

/// Exit statuses of the command; EXIT_STATUS_HELP describes them for the user.
enum exit_status {
    STATUS_DONE = 0,
    STATUS_DOCUMENT = 1,
    STATUS_USAGE = 2,
    STATUS_OUTPUT = 3,
};
inline constexpr const char *EXIT_STATUS_HELP =
    "Exit status:\n"
    "  0  done\n"
    "  1  a document is missing, cannot be read without errors or is of another kind than asked for,\n"
    "     a value would be lost, a channel asked for by name is not there, or `check` found something\n"
    "  2  wrong command line\n"
    "  3  output could not be written, or the system refused memory\n"
    "A reader that closes the pipe early ends the command silently.";

/// An exception that ends the current work of the command. The text says where and why, without the name of
/// the command.
class failure : public std::runtime_error {
public:
    failure(exit_status status, const std::string &text) : std::runtime_error(text), status_(status) {}
    exit_status status() const { return status_; }

private:
    exit_status status_;
};

#endif
