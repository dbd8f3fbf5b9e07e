/// Lets all tests of a program run without the plain lane, when ZEB5XML_LANE is "closed", and tells at the
/// end what became of documents in it.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <gtest/gtest.h>

#include "steps/plain_lane.h"

namespace {

std::atomic<int> ends[3]; // of documents, by lane_end

class lane_environment : public testing::Environment {
    void SetUp() override {
        const char *const setting = std::getenv("ZEB5XML_LANE");
        zeb5::lane.is_open = !setting || std::string_view(setting) != "closed";
        zeb5::lane.watch = [](zeb5::lane_end end) { ++ends[static_cast<int>(end)]; };
    }
    void TearDown() override {
        std::printf("Documents: %d read by the scanner, %d handed over midway, %d at once\n", ends[0].load(),
                    ends[1].load(), ends[2].load());
    }
};

[[maybe_unused]] testing::Environment *const environment =
    testing::AddGlobalTestEnvironment(new lane_environment);

} // namespace
