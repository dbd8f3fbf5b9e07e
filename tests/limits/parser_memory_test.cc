/// Memory of a parser: all of it goes back, also what the parser does not give back.

#include "limits/parser_memory.h"

#include <cstdint>
#include <set>

#include <gtest/gtest.h>

#include "xml_platform.h"

namespace {

class no_meter : public zeb5::parse_meter {
    void end_with(const char16_t *) override {}
};

/// Memory that knows which of its blocks are in use.
class watched_memory : public xercesc::MemoryManager {
public:
    void *allocate(XMLSize_t size) override { return *in_use.insert(::operator new(size)).first; }
    void deallocate(void *block) override {
        in_use.erase(block);
        ::operator delete(block);
    }
    xercesc::MemoryManager *getExceptionMemoryManager() override { return this; }

    std::set<void *> in_use;
};

class ParserMemory : public testing::Test {
protected:
    ParserMemory() { xercesc::XMLPlatformUtils::fgMemoryManager = &source; }
    ~ParserMemory() override { xercesc::XMLPlatformUtils::fgMemoryManager = usual; }

    const xml_platform platform;
    xercesc::MemoryManager *const usual = xercesc::XMLPlatformUtils::fgMemoryManager;
    watched_memory source;
};

TEST_F(ParserMemory, ComesFromTheXmlLibrarysAndGoesBackToIt) {
    no_meter meter;
    zeb5::parser_memory memory{meter};
    void *const first = memory.allocate(1);
    void *const second = memory.allocate(0);
    void *const third = memory.allocate(1000);
    EXPECT_EQ(source.in_use.size(), 3u);
    memory.deallocate(second);
    EXPECT_EQ(source.in_use.size(), 2u);
    memory.deallocate(first);
    memory.deallocate(nullptr);
    EXPECT_EQ(source.in_use.size(), 1u);
    memory.deallocate(third);
    EXPECT_TRUE(source.in_use.empty());
}

TEST_F(ParserMemory, GoesBackWhereItCameFromWhenItIsNotGivenBack) {
    {
        no_meter meter;
        zeb5::parser_memory memory{meter};
        memory.allocate(1);
        memory.deallocate(memory.allocate(2));
        memory.allocate(3);
        xercesc::XMLPlatformUtils::fgMemoryManager = usual;
        EXPECT_EQ(source.in_use.size(), 2u);
    }
    EXPECT_TRUE(source.in_use.empty());
}

TEST_F(ParserMemory, IsAlignedForAnything) {
    no_meter meter;
    zeb5::parser_memory memory{meter};
    for (const XMLSize_t size : {1u, 7u, 24u})
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory.allocate(size)) % alignof(std::max_align_t), 0u);
}

TEST_F(ParserMemory, IsNotForExceptionsThatOutliveIt) {
    no_meter meter;
    zeb5::parser_memory memory{meter};
    EXPECT_EQ(memory.getExceptionMemoryManager(), &source);
}

} // namespace
