/// Camera feature files, read, listed and released.

#include "fuzz.h"
#include "zeb5_gige_descr.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    hold_the_platform();
    const fuzz_input input(data, size);
    std::vector<ZEB5GigEFeature *> features;
    const bool failed = zeb5_fill_gige_descr(in_a_file(input.bytes()), &features);
    expect(!failed || features.empty(), "a file that is not read leaves the list alone");
    for (const ZEB5GigEFeature *feature : features)
        expect(feature->type >= FEATURE_TYPE_UNDEF && feature->type < FEATURE_TYPE_MAX, "types are known");
    zeb5_dump_gige_descr(&features);
    zeb5_clean_gige_descr(&features);
    return 0;
}
