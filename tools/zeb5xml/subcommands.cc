#include "subcommands.h"

std::vector<subcommand> all_subcommands() {
    return {show_subcommand(),  export_subcommand(),    convert_subcommand(),    canonical_subcommand(),
            diff_subcommand(),  merge_subcommand(),     mask_subcommand(),       select_subcommand(),
            check_subcommand(), catalogue_subcommand(), completion_subcommand(), manual_subcommand()};
}
