#ifndef ZEB5XML_SUBCOMMANDS_H
#define ZEB5XML_SUBCOMMANDS_H

#include <vector>

#include "command_line/subcommand.h"

/// All subcommands, in the order of --help.
std::vector<subcommand> all_subcommands();

// Each returns its subcommand. The targets of the arguments live as long as its `run`.
subcommand show_subcommand();
subcommand export_subcommand();
subcommand convert_subcommand();
subcommand canonical_subcommand();
subcommand diff_subcommand();
subcommand merge_subcommand();
subcommand mask_subcommand();
subcommand select_subcommand();
subcommand check_subcommand();
subcommand catalogue_subcommand();
subcommand completion_subcommand();
subcommand manual_subcommand();

#endif
