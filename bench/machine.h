#ifndef ZEB5_BENCH_MACHINE_H
#define ZEB5_BENCH_MACHINE_H

#include <string>

namespace bench {

/// Processor, cores, compiler and the versions of what is compared.
std::string machine_line();

} // namespace bench

#endif
