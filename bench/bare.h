#ifndef ZEB5_BENCH_BARE_H
#define ZEB5_BENCH_BARE_H

/// The XML library alone, with the settings of the readers and with handlers that do nothing. The platform
/// must be up.

#include <string>

namespace bench {

/// Return the number of parser steps.
std::size_t bare_scan(const std::string &document);
std::size_t bare_scan_file(const char *path);

void bare_dom_file(const char *path);

/// Starts the platform and stops it.
void bare_platform();

} // namespace bench

#endif
