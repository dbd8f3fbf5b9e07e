#ifndef ZEB5XML_COMMAND_H
#define ZEB5XML_COMMAND_H

#include <functional>

#include <CLI/CLI.hpp>

/// What a subcommand does after the command line was read; returns an exit status.
using command_action = std::function<int()>;

// Each declares the arguments of its subcommand and returns the subcommand's action.
command_action declare_show(CLI::App &app);
command_action declare_convert(CLI::App &app);
command_action declare_select(CLI::App &app);
command_action declare_check(CLI::App &app);

#endif
