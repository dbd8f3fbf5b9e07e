#include "command_line/colour.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

/// Whether the user and the terminal want colours when nothing is said on the command line.
bool are_colours_wanted() {
    const char *no_color = getenv("NO_COLOR"), *terminal = getenv("TERM");
    return (!no_color || !*no_color) && terminal && strcmp(terminal, "dumb") != 0 && isatty(STDOUT_FILENO);
}

} // namespace

painter::painter(const std::string &when)
    : is_on_(when == "always" || (when == "auto" && are_colours_wanted())) {}

std::string painter::operator()(colour one, const std::string &text) const {
    return is_on_ ? "\033[" + std::to_string(one) + "m" + text + "\033[0m" : text;
}

argument color_argument(std::string &when) {
    return {"--color",
            &when,
            "Colours: auto (the default) is for a terminal, unless NO_COLOR is set",
            argument::OPTIONAL,
            {"auto", "always", "never"}};
}
