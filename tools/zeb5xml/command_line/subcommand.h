#ifndef ZEB5XML_SUBCOMMAND_H
#define ZEB5XML_SUBCOMMAND_H

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// One argument of a subcommand. The type of `target` says how it is given: a bool is a flag, a text takes
/// one value, and a list takes all values up to the next option.
struct argument {
    const char *names; // "-o,--output"; without a dash ("FILE") it is known by its position
    std::variant<bool *, std::string *, std::vector<std::string> *> target;
    const char *help;
    enum need { OPTIONAL, REQUIRED } need = OPTIONAL;
    std::vector<std::string> words = {}; // what the value may be; empty: anything
    /// Returns why a value is refused, or an empty text; not called when it is empty.
    std::function<std::string(const std::string &)> refusal = {};
    /// What --help calls the value when it has no words; a FILE is completed by names of files. Null: FILE by
    /// position, TEXT behind an option.
    const char *value = nullptr;
};

bool is_option(const argument &row);
bool is_flag(const argument &row);
bool takes_file(const argument &row);
const char *value_name(const argument &row);
/// The names apart: "-o", "--output".
std::vector<std::string> names_apart(const argument &row);

/// A command line that does something useful.
struct example {
    const char *purpose;
    const char *line;
};

/// What the exit statuses of a subcommand mean. An empty text: the subcommand never gives this one.
struct status_texts {
    std::string document; // STATUS_DOCUMENT
    std::string done = "done";
    std::string usage = "wrong command line";
    std::string output = "output could not be written, or the system refused memory";
};

/// The status 1 of those that read documents, and of those that write them, too.
inline constexpr char document_status[] =
    "a document is missing, cannot be read without errors or is of the wrong kind";
inline constexpr char lost_value_status[] =
    "a document is missing, cannot be read without errors or is of the wrong kind, or a value would be lost";

/// Of the command as a whole.
extern const status_texts all_statuses;

/// A status in one line: "1  TEXT". Those that are never given are left out.
std::vector<std::string> status_lines(const status_texts &texts);

/// What applies to all subcommands.
inline constexpr char pipe_help[] = "A reader that closes the pipe early ends the command silently.";

/// What --help says of exit statuses.
std::string status_help(const status_texts &texts);

/// A subcommand: what its command line may hold, and what it does.
struct subcommand {
    const char *name;
    const char *summary;
    std::string details; // printed by --help after the arguments; indented lines stay as they are
    std::vector<argument> arguments;
    std::function<int()> run; // called when all targets hold what was given; returns an exit status
    std::vector<example> examples = {};
    status_texts statuses = {document_status};
};

#endif
