#ifndef ZEB5_BENCH_BARE_H
#define ZEB5_BENCH_BARE_H

/// What the XML library alone takes, set as the readers set it and told to no one: the floor of every reader.
/// The platform must be up.

#include <string>

namespace bench {

/// Number of parser steps.
std::size_t bare_scan(const std::string &document);
std::size_t bare_scan_file(const char *path);

void bare_dom_file(const char *path);

/// Brings the platform up and takes it down.
void bare_platform();

} // namespace bench

#endif
