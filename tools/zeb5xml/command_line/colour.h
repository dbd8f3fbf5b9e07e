#ifndef ZEB5XML_COLOUR_H
#define ZEB5XML_COLOUR_H

#include <string>

#include "command_line/subcommand.h"

enum colour { BOLD = 1, RED = 31, GREEN = 32, YELLOW = 33 };

/// Paints texts for people on standard output. `when` is always, never, or auto: when standard output is a
/// terminal and NO_COLOR is not set to a text.
class painter {
public:
    explicit painter(const std::string &when);
    std::string operator()(colour one, const std::string &text) const;

private:
    bool is_on_;
};

/// The option --color; `when` must be auto before.
argument color_argument(std::string &when);

#endif
