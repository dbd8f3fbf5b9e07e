#ifndef ZEB5XML_COMMAND_LINE_H
#define ZEB5XML_COMMAND_LINE_H

#include <vector>

#include "command_line/subcommand.h"

/// Reads the command line into the targets of the subcommand that it names, and returns that subcommand. When
/// the command line is wrong or asks for help only, returns null after saying so, and sets `status`.
const subcommand *chosen_subcommand(const std::vector<subcommand> &subcommands, int argc, char **argv,
                                    int &status);

#endif
