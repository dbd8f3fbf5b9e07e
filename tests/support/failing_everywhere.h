#ifndef FAILING_EVERYWHERE_H
#define FAILING_EVERYWHERE_H

/// Makes a call of the library once for each of its allocations. That allocation fails, and what the call
/// leaves behind is checked.

#include <set>
#include <string>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUniDefs.hpp>

#include "support/capture.h"
#include "support/descriptors.h"
#include "support/every_reader.h"
#include "support/failing_memory.h"

namespace failing_memory {

/// The outcomes of the calls in which memory ran out.
struct tally {
    std::size_t calls = 0;
    std::set<std::string> ends;
    std::string problems; // numbers of the failing allocations and what was wrong then
};

/// The XML library in this process uses `of_xml`, and is up while this lives.
class counted_platform {
public:
    counted_platform() {
        xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr,
                                              &of_xml);
    }
    ~counted_platform() {
        xercesc::XMLPlatformUtils::Terminate();
        EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "somebody still holds the platform";
    }
    counted_platform(const counted_platform &) = delete;
    counted_platform &operator=(const counted_platform &) = delete;

    xml_memory of_xml;
};

/// What is allocated and open.
struct holdings {
    long blocks;
    long blocks_of_xml;
    int free_descriptor; // the first
};

inline holdings all_holdings(const xml_memory &of_xml) {
    return {live_blocks(), of_xml.live_blocks(), first_free_descriptor()};
}

/// Whether a call that found no memory has left anything allocated or open. When memory runs out while a
/// parser is constructed, the XML library loses a stack of two blocks.
inline bool is_left_behind(const holdings &before, const holdings &after, bool failed_in_xml) {
    const long of_xml = after.blocks_of_xml - before.blocks_of_xml;
    return after.blocks != before.blocks || after.free_descriptor != before.free_descriptor ||
           (of_xml != 0 && !(failed_in_xml && of_xml == 2));
}

/// The line that says what could not be done; "" when none does.
inline const char *line_of_failure(const captured &said) {
    for (const char *const line : {"unable to open primary document entity",
                                   "Failed to allocate memory for zeb5_env_index_dictionary_entry"})
        if ((said.out + said.err).find(line) != std::string::npos)
            return line;
    return "";
}

/// `call` makes one call and gives its outcome; everything of it is gone when the outcome is. A line that
/// says what could not be done tells of it, as an exception does.
template <class Call> tally fail_everywhere(xml_memory &of_xml, mode how, Call call) {
    const auto run = [&] {
        reading outcome;
        const captured said = capture([&] { outcome = call(); });
        if (!*outcome.thrown)
            outcome.thrown = line_of_failure(said);
        return outcome;
    };
    tally seen;
    prepare(0, ONCE);
    run();
    const auto usual = run(); // the second time, as some things are allocated once for the process
    for (std::size_t at = 1;; ++at) {
        const holdings before = all_holdings(of_xml);
        const char *thrown = "";
        int result = 0;
        bool is_silent = false;
        of_xml.prepare();
        prepare(at, how);
        {
            const auto outcome = run();
            thrown = outcome.thrown;
            result = outcome.result;
            is_silent = !*thrown && result == usual.result && !(outcome == usual);
        }
        const bool is_through = !has_failed();
        prepare(0, ONCE);
        if (is_through)
            return seen;
        const bool is_lost = is_left_behind(before, all_holdings(of_xml), of_xml.has_failed());
        const bool is_other = !(run() == usual);
        ++seen.calls;
        seen.ends.insert(*thrown ? thrown : "result " + std::to_string(result));
        if (is_lost || is_silent || is_other)
            seen.problems += '#' + std::to_string(at) + (is_lost ? " leaves something;" : "") +
                             (is_silent ? " is not told;" : "") + (is_other ? " spoils the next call;" : "");
    }
}

} // namespace failing_memory

#endif
