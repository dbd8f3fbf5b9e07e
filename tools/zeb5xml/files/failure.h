#ifndef ZEB5XML_FAILURE_H
#define ZEB5XML_FAILURE_H

#include <stdexcept>
#include <string>

/// Exit statuses of the command; each subcommand says for the user what they mean there.
enum exit_status {
    STATUS_DONE = 0,
    STATUS_DOCUMENT = 1,
    STATUS_USAGE = 2,
    STATUS_OUTPUT = 3,
};

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
