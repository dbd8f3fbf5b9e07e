#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"

#include <arpa/inet.h>
#include <cstdlib>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "capture.h"
#include "sax_sources.h"
#include "test_files.h"

namespace {

/// A document is self-contained, and what it may cost is bounded, whichever way it comes.
template <class Source> class HostileDocument : public testing::Test {};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(HostileDocument, sources, );

bool readable(int fd) {
    pollfd wait{fd, POLLIN, 0};
    return poll(&wait, 1, 0) == 1;
}

/// Tells whether a file was opened.
class watched_file {
public:
    explicit watched_file(const std::string &path) : watch_(inotify_init1(IN_NONBLOCK)) {
        if (watch_ < 0 || inotify_add_watch(watch_, path.c_str(), IN_OPEN) < 0)
            throw std::runtime_error("cannot watch " + path);
    }
    ~watched_file() { close(watch_); }
    watched_file(const watched_file &) = delete;
    watched_file &operator=(const watched_file &) = delete;

    bool was_opened() const { return readable(watch_); }

private:
    int watch_;
};

/// A port of this machine that tells whether anybody called.
class watched_port {
public:
    watched_port() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *const plain = reinterpret_cast<sockaddr *>(&address);
        if (bind(socket_, plain, size) != 0 || listen(socket_, 1) != 0 ||
            getsockname(socket_, plain, &size) != 0)
            throw std::runtime_error("cannot listen");
        port_ = ntohs(address.sin_port);
    }
    ~watched_port() { close(socket_); }
    watched_port(const watched_port &) = delete;
    watched_port &operator=(const watched_port &) = delete;

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_) + "/secret"; }
    bool was_called() const { return readable(socket_); }

private:
    int socket_;
    int port_ = 0;
};

TEST(WatchedFile, KnowsWhenItIsOpened) {
    const temporary_file file("secret");
    const watched_file watch(file.path());
    EXPECT_FALSE(watch.was_opened());
    EXPECT_EQ(file.text(), "secret");
    EXPECT_TRUE(watch.was_opened());
}

/// Start, steps up to the first report and all reports.
struct outcome {
    int started = -1;
    std::string steps_seen;
    captured streams;
    int count = 0;
};

template <class Source> outcome read(Source &source) {
    outcome seen;
    seen.streams = capture([&] {
        seen.started = source.start();
        if (seen.started == 0)
            seen.steps_seen = steps(source.parser());
    });
    seen.count = source.parser().get_error_counter();
    return seen;
}

/// The report with "#" for the column, which depends on the length of names made up by the test.
std::string without_column(std::string report) {
    const size_t begin = report.find(", char ") + 7;
    return report.replace(begin, report.find(')', begin) - begin, "#");
}

struct external_case {
    const char *document; // "<FILE>" stands for what it refers to
    int started;
    const char *steps;
    const char *message; // after file, line and column
};
const external_case external_cases[] = {
    {"<!DOCTYPE r SYSTEM \"<FILE>\"><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r PUBLIC \"-//X//EN\" \"<FILE>\"><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r SYSTEM \"<FILE>\" [<!ELEMENT r ANY>]><r>x</r>", 1, "",
     "unable to open DTD document '<FILE>'\nscanFirst() failed\n"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e SYSTEM \"<FILE>\">]><r>&e;</r>", 0, "r 1",
     "unable to open external entity '<FILE>'\n"},
    {"<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e PUBLIC \"-//X//EN\" \"<FILE>\">]><r>a&e;</r>", 0, "r 1",
     "unable to open external entity '<FILE>'\n"},
    {"<!DOCTYPE r [<!ENTITY % e SYSTEM \"<FILE>\"> %e; <!ELEMENT r ANY>]><r>x</r>", 1, "",
     "unable to open external entity '<FILE>'\nscanFirst() failed\n"},
};

TYPED_TEST(HostileDocument, OpensNeitherFileNorAddress) {
    setenv("no_proxy", "*", 1);
    const temporary_file secret("secret");
    for (const auto &c : external_cases) {
        const watched_file watch(secret.path());
        const watched_port port;
        for (const std::string &target : {secret.path(), "file://" + secret.path(), port.address()}) {
            const std::string document = with_file(c.document, target);
            TypeParam source(document);
            const outcome seen = read(source);
            EXPECT_EQ(seen.started, c.started) << document;
            EXPECT_EQ(seen.steps_seen, c.steps) << document;
            EXPECT_EQ(without_column(seen.streams.err),
                      "\nFatal Error at (file " + source.system_id() +
                          ", line 1, char #): " + with_file(c.message, target))
                << document;
            EXPECT_EQ(seen.count, 1) << document;
            EXPECT_FALSE(watch.was_opened()) << document;
            EXPECT_FALSE(port.was_called()) << document;
        }
    }
}

TYPED_TEST(HostileDocument, MayDeclareWhatIsOutsideAsLongAsItIsNotUsed) {
    const temporary_file secret("secret");
    const watched_file watch(secret.path());
    TypeParam source("<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e SYSTEM \"" + secret.path() + "\">]><r>x</r>");
    const outcome seen = read(source);
    EXPECT_EQ(seen.started, 0);
    EXPECT_EQ(seen.steps_seen, "r r[x] ~ ~ -1");
    EXPECT_EQ(seen.streams.err, "");
    EXPECT_FALSE(watch.was_opened());
}

std::string repeated(const char *text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string with_entity = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED><!ENTITY e \"E\">"
                                "<!ENTITY two \"&e;E\">]>";

TYPED_TEST(HostileDocument, MayExpandEntitiesAThousandTimes) {
    const std::string documents[] = {
        with_entity + "<r>" + repeated("&e;", 1000) + "</r>",
        with_entity + "<r>" + repeated("&two;", 500) + "</r>",
        with_entity + "<r a=\"" + repeated("&e;", 1000) + "\"/>",
        with_entity + "<r a=\"" + repeated("&e;", 500) + "\">" + repeated("&e;", 500) + "</r>",
        with_entity + "<r>" + repeated("&amp;&#65;&lt;", 2000) + "</r>", // these do not count
    };
    for (const auto &document : documents) {
        TypeParam source(document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0);
        EXPECT_EQ(seen.count, 0);
        EXPECT_EQ(seen.streams.err, "");
        EXPECT_TRUE(seen.steps_seen.ends_with(" -1")) << document.substr(0, 200);
    }
}

TYPED_TEST(HostileDocument, MayNotExpandThemOnceMore) {
    const std::string documents[] = {
        with_entity + "<r>" + repeated("&e;", 1001) + "</r>",
        with_entity + "<r>" + repeated("&two;", 501) + "</r>",
        with_entity + "<r a=\"" + repeated("&e;", 1001) + "\"/>",
        with_entity + "<r a=\"" + repeated("&e;", 500) + "\">" + repeated("&e;", 501) + "</r>",
    };
    for (const auto &document : documents) {
        TypeParam source(document);
        const outcome seen = read(source);
        EXPECT_EQ(seen.started, 0);
        EXPECT_EQ(seen.count, 1);
        EXPECT_TRUE(seen.steps_seen.ends_with("1")) << seen.steps_seen.substr(0, 200);
        EXPECT_EQ(without_column(seen.streams.err),
                  "\nFatal Error at (file " + source.system_id() +
                      ", line 1, char #): parser has encountered more than '1000' entity expansions in the "
                      "document; this is the limit imposed by the application\n");
    }
}

/// Entities e0 to e4, each of which is ten of the one before: e4 is ten thousand blanks.
std::string bomb(const std::string &kind, const std::string &reference_mark) {
    std::string all = "<!ENTITY " + kind + " e0 ' '>";
    for (int i = 1; i < 5; ++i) {
        const std::string one_before = reference_mark + "e" + std::to_string(i - 1) + ";";
        all += "<!ENTITY " + kind + " e" + std::to_string(i) + " '" + repeated(one_before.c_str(), 10) + "'>";
    }
    return all;
}

template <class Source> void expect_one_fatal_report(const std::string &document) {
    Source source(document);
    const outcome seen = read(source);
    const std::string end = document.substr(document.size() - 40);
    EXPECT_EQ(seen.count, 1) << "..." << end;
    EXPECT_EQ(seen.streams.err.rfind("\nFatal Error at (file " + source.system_id() + ", line 1, char ", 0),
              0u)
        << "..." << end << '\n'
        << seen.streams.err;
}

TYPED_TEST(HostileDocument, MayNotExpandEntitiesThatGrowWithEveryLevel) {
    const std::string declared = "<!DOCTYPE r [<!ELEMENT r ANY><!ATTLIST r a CDATA #IMPLIED>" + bomb("", "&");
    expect_one_fatal_report<TypeParam>(declared + "]><r>&e4;</r>");
    expect_one_fatal_report<TypeParam>(declared + "]><r a='&e4;'/>");
}

// The XML library's own limit does not see these two
TYPED_TEST(HostileDocument, MayNotExpandThemInItsDeclarationsEither) {
    const std::string declared = "<!DOCTYPE r [<!ELEMENT r ANY>";
    expect_one_fatal_report<TypeParam>(declared + bomb("", "&") + "<!ATTLIST r a CDATA '&e4;'>]><r/>");
    expect_one_fatal_report<TypeParam>(declared + bomb("%", "&#37;") + "%e4;]><r/>");
}

TYPED_TEST(HostileDocument, MayNotExpandAnEntityWithinItself) {
    expect_one_fatal_report<TypeParam>(
        "<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>");
    expect_one_fatal_report<TypeParam>("<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY a '&a;'>]><r>&a;</r>");
}

} // namespace
