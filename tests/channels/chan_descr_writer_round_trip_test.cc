/// Random channel descriptions, written and read back.
///
/// What survives a CHANDESCRIPTIONS document is every field; only an empty DAQ name comes back as
/// "!!!UNDEFINED!!!", and of several records of one property only the first is written. What survives a
/// DAQvariables document is less, see after_daqvariables().
///
/// The writer does not escape, so that not every text survives, in either dialect: the random texts here hold
/// no '&', no '<', no "]]>", no carriage return, no control character and nothing beyond ASCII, and are not
/// of white space alone. What becomes of such texts is told by rows at the end of this file. A channel
/// without property name is no channel to the reader.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h> // needs the one above

#include "support/chan_descr_writing.h"

namespace {

struct bit_model {
    std::int32_t bit = 0;
    std::string name, desc;
};
struct stat_model {
    std::int32_t stat = 0;
    std::string name, desc, units;
};
struct dim_model {
    std::int32_t dim = 0;
    std::string name, desc, units;
    std::vector<stat_model> stats;
};
struct channel_model {
    std::int32_t stream = 0, count = 0, db_key = -1, max_size = 1, set_point = 0;
    std::uint32_t ev_type = 0, dtype = 0;
    std::string prop, daq, desc, units, sb_name, subsystem;
    std::vector<bit_model> bits;
    std::vector<dim_model> dims;
};

chan_descr_2010 *record_of(const channel_model &model) {
    chan_descr_2010 *channel = make_channel(model.prop.c_str(), model.daq.c_str());
    channel->stream = model.stream;
    channel->count = model.count;
    channel->db_key = model.db_key;
    channel->max_size = model.max_size;
    channel->set_point = model.set_point;
    channel->ev_type = model.ev_type;
    channel->dtype = model.dtype;
    set_text(channel->prop_desc, model.desc);
    set_text(channel->units, model.units);
    set_text(channel->sb_name, model.sb_name);
    set_text(channel->subsystem, model.subsystem);
    for (const bit_model &bit : model.bits)
        add_bit(channel, bit.bit, bit.name.c_str(), bit.desc.c_str());
    for (const dim_model &dim : model.dims) {
        dim_descr *added = add_dim(channel, dim.dim, dim.name.c_str(), dim.desc.c_str(), dim.units.c_str());
        for (const stat_model &stat : dim.stats)
            add_stat(added, stat.stat, stat.name.c_str(), stat.desc.c_str(), stat.units.c_str());
    }
    return channel;
}

/// A list of records as their models say.
struct model_list : channel_list {
    explicit model_list(const std::vector<channel_model> &models) {
        for (const channel_model &model : models)
            add(record_of(model));
    }
};

std::string describe(const std::vector<channel_model> &models) {
    return describe(model_list(models).records);
}
std::ostream &operator<<(std::ostream &to, const channel_model &model) { return to << describe({model}); }

rc::Gen<std::string> text(size_t longest) {
    std::string alphabet = "\t\n";
    for (char c = ' '; c <= '~'; ++c)
        if (c != '&' && c != '<')
            alphabet += c;
    const auto one = rc::gen::elementOf(alphabet);
    return rc::gen::map(
        rc::gen::oneOf(rc::gen::container<std::string>(one), rc::gen::container<std::string>(longest, one),
                       rc::gen::just(std::string())),
        [longest](std::string made) {
            made.resize(std::min(made.size(), longest));
            for (size_t at; (at = made.find("]]>")) != std::string::npos;)
                made[at] = '[';
            return made.find_first_not_of(" \t\n") == std::string::npos ? std::string() : made;
        });
}

/// Property names, some of them twice in a list.
rc::Gen<std::string> property() {
    return rc::gen::oneOf(
        rc::gen::map(text(255), [](const std::string &made) { return made.empty() ? "P" : made; }),
        rc::gen::element<std::string>("A", "B", "a"));
}

rc::Gen<std::int32_t> number() {
    return rc::gen::oneOf(rc::gen::arbitrary<std::int32_t>(), rc::gen::inRange<std::int32_t>(-2, 6),
                          rc::gen::element(INT32_MIN, INT32_MAX));
}
rc::Gen<std::uint32_t> mask() {
    return rc::gen::map(number(), [](std::int32_t n) { return static_cast<std::uint32_t>(n); });
}

template <class T> rc::Gen<std::vector<T>> few() {
    return rc::gen::resize(4,
                           rc::gen::container<std::vector<T>>(rc::gen::resize(100, rc::gen::arbitrary<T>())));
}

} // namespace

namespace rc {

template <> struct Arbitrary<bit_model> {
    static Gen<bit_model> arbitrary() {
        return gen::build<bit_model>(gen::set(&bit_model::bit, number()),
                                     gen::set(&bit_model::name, text(63)),
                                     gen::set(&bit_model::desc, text(79)));
    }
};
template <> struct Arbitrary<stat_model> {
    static Gen<stat_model> arbitrary() {
        return gen::build<stat_model>(
            gen::set(&stat_model::stat, number()), gen::set(&stat_model::name, text(63)),
            gen::set(&stat_model::desc, text(79)), gen::set(&stat_model::units, text(15)));
    }
};
template <> struct Arbitrary<dim_model> {
    static Gen<dim_model> arbitrary() {
        return gen::build<dim_model>(
            gen::set(&dim_model::dim, number()), gen::set(&dim_model::name, text(63)),
            gen::set(&dim_model::desc, text(79)), gen::set(&dim_model::units, text(15)),
            gen::set(&dim_model::stats, few<stat_model>()));
    }
};
template <> struct Arbitrary<channel_model> {
    static Gen<channel_model> arbitrary() {
        using m = channel_model;
        return gen::build<m>(
            gen::set(&m::stream, number()), gen::set(&m::count, number()), gen::set(&m::db_key, number()),
            gen::set(&m::max_size, gen::oneOf(gen::just<std::int32_t>(1), number())),
            gen::set(&m::set_point, number()), gen::set(&m::ev_type, mask()), gen::set(&m::dtype, mask()),
            gen::set(&m::prop, property()), gen::set(&m::daq, text(255)), gen::set(&m::desc, text(255)),
            gen::set(&m::units, text(15)), gen::set(&m::sb_name, text(255)),
            gen::set(&m::subsystem, text(63)), gen::set(&m::bits, few<bit_model>()),
            gen::set(&m::dims, few<dim_model>()));
    }
};

} // namespace rc

namespace {

using models = std::vector<channel_model>;

rc::Gen<models> some_channels() { return few<channel_model>(); }

/// The first of each property, and the placeholder for missing DAQ names: what any document holds.
models as_written(const models &all) {
    models written;
    std::set<std::string> seen;
    for (const channel_model &model : all)
        if (seen.insert(model.prop).second) {
            written.push_back(model);
            if (model.daq.empty())
                written.back().daq = "!!!UNDEFINED!!!";
        }
    return written;
}

bool is_bits(const channel_model &model) { return model.max_size == 1 && !model.bits.empty(); }

/// What is left of channels that went through a DAQvariables document. Stream, data type, counter, database
/// key, server block and statistics are lost. Bits survive where the size is 1, but each becomes two: one
/// without name, from the start tag, and one that has the description for a name, cut to the shorter field.
/// Dimensions survive where the size is not 1; else their descriptions and units are taken for the channel's.
models after_daqvariables(const models &all) {
    models left;
    for (const channel_model &from : as_written(all)) {
        channel_model to;
        to.ev_type = from.ev_type;
        to.prop = from.prop;
        to.daq = from.daq;
        to.set_point = from.set_point;
        to.subsystem = from.subsystem;
        to.desc = from.desc;
        to.units = from.units;
        to.max_size = std::max(from.max_size, 1);
        if (is_bits(from))
            for (const bit_model &bit : from.bits) {
                to.bits.push_back({bit.bit, "", ""});
                to.bits.push_back({bit.bit, bit.desc.substr(0, 63), ""});
            }
        for (const dim_model &dim : from.dims) {
            if (from.max_size != 1)
                to.dims.push_back({dim.dim, dim.name, dim.desc, dim.units, {}});
            else {
                to.desc = dim.desc.empty() ? to.desc : dim.desc;
                to.units = dim.units.empty() ? to.units : dim.units;
            }
        }
        left.push_back(to);
    }
    return left;
}

/// The lines about bits without text that the memory reader prints for a document of these channels.
std::string nameless_bit_lines(const models &all) {
    std::string lines;
    for (const channel_model &model : as_written(all))
        if (is_bits(model))
            for (const bit_model &bit : model.bits)
                for (int step = 0; step < (bit.desc.empty() ? 2 : 1); ++step)
                    lines += "bitTitle is not defined for bit  " + std::to_string(bit.bit) +
                             " prop:" + model.prop + "\n";
    return lines;
}

struct read_back {
    std::string records;
    captured streams;
};

/// Reads a document from memory or from a file; both must succeed.
read_back read_memory(std::string document) {
    channel_list list;
    int result = -1;
    read_back seen;
    seen.streams = capture([&] { result = parse_descr_list_read(document.data(), list, false, false); });
    RC_ASSERT(result == 0);
    seen.records = describe(list.records);
    return seen;
}
read_back read_file(std::string path) {
    channel_list list;
    int result = -1;
    read_back seen;
    seen.streams = capture([&] { result = parse_descr_list_readf(path.data(), list, false, false); });
    RC_ASSERT(result == 0);
    seen.records = describe(list.records);
    return seen;
}

std::string document_of(const models &all, int format) { return xml_of(model_list(all), format); }

/// A document once read and written again.
std::string rewritten(std::string document, int format) {
    channel_list list;
    (void)capture([&] { parse_descr_list_read(document.data(), list, false, false); });
    return xml_of(list, format);
}

} // namespace

RC_GTEST_PROP(ChanDescrWriterRoundTrip, ChandescriptionsGiveBackEveryField, ()) {
    const models all = *some_channels();
    const read_back seen = read_memory(document_of(all, chandescriptions));
    RC_ASSERT(seen.records == describe(as_written(all)));
    RC_ASSERT(seen.streams.out + seen.streams.err == "");
}

RC_GTEST_PROP(ChanDescrWriterRoundTrip, DaqvariablesGiveBackWhatTheyKnow, ()) {
    const models all = *some_channels();
    const read_back seen = read_memory(document_of(all, daqvariables));
    RC_ASSERT(seen.records == describe(after_daqvariables(all)));
    RC_ASSERT(seen.streams.out == nameless_bit_lines(all));
    RC_ASSERT(seen.streams.err == "");
}

RC_GTEST_PROP(ChanDescrWriterRoundTrip, FilesGiveBackTheSameRecordsWithoutAWord, ()) {
    const models all = *some_channels();
    for (int format : {chandescriptions, daqvariables}) {
        const temporary_file file;
        RC_ASSERT(dump(model_list(all), &file.path(), xml_document, format, -1, nullptr).result == 0);
        const read_back from_file = read_file(file.path());
        RC_ASSERT(from_file.records == read_memory(file.text()).records);
        RC_ASSERT(from_file.streams.out + from_file.streams.err == "");
    }
}

RC_GTEST_PROP(ChanDescrWriterRoundTrip, ChandescriptionsAreStableFromTheFirstWritingOn, ()) {
    const std::string document = document_of(*some_channels(), chandescriptions);
    RC_ASSERT(rewritten(document, chandescriptions) == document);
}

// A size below 1 comes back as 1, and with that dimensions are lost the next time: it takes two rounds.
RC_GTEST_PROP(ChanDescrWriterRoundTrip, DaqvariablesAreStableFromTheThirdWritingOnUnlessTheyHaveBits, ()) {
    models all = *some_channels();
    for (channel_model &model : all)
        if (is_bits(model))
            model.bits.clear();
    const std::string third =
        rewritten(rewritten(document_of(all, daqvariables), daqvariables), daqvariables);
    RC_ASSERT(rewritten(third, daqvariables) == third);
}

// Bits double with every round and lose their texts with the second.
RC_GTEST_PROP(ChanDescrWriterRoundTrip, DaqvariablesWithBitsChangeWithEveryRoundAsFarAsToldAbove, ()) {
    const models all = *some_channels(), once = after_daqvariables(all);
    RC_ASSERT(rewritten(document_of(all, daqvariables), daqvariables) == document_of(once, daqvariables));
    RC_ASSERT(rewritten(document_of(once, daqvariables), daqvariables) ==
              document_of(after_daqvariables(once), daqvariables));
}

TEST(ChanDescrWriterRoundTrip, MadeUpDimensionsComeBackAsDimensions) {
    std::string name = "N";
    zeb5_spect_header_2010 axes[3] = {};
    zeb5_image_ext_frame_head head{};
    dim_params params{name.data(), 3, axes, &head};
    std::vector<dim_params *> dims{&params};
    channel_list list;
    list.add(make_channel("P", "N"));
    std::string document = xml_of(list, chandescriptions, &dims);
    channel_list back, expected;
    EXPECT_EQ(parse_descr_list_read(document.data(), back, false, false), 0);
    chan_descr_2010 *channel = expected.add(make_channel("P", "N"));
    for (int dim = 0; dim < 3; ++dim)
        add_dim(channel, dim);
    EXPECT_EQ(describe(back.records), describe(expected.records));
}

namespace {

struct lost_text {
    std::string stored, back;
};
const lost_text lost_texts[] = {
    {" ", ""},
    {"\n\t ", ""},
    {"\r", ""},
    {"a\rb\r\nc", "a\nb\nc"},
    {"&amp;", "&"},
    {"a&amp;b", "&b"}, // the last piece replaces the others
    {"&#65;", "A"},
    {"a<!-- c -->b", "a"},
    {"a<x/>b", "a"},
    {"\xe9", "\xc3\xa9"}, // declared as ISO-8859-1, handed out as UTF-8
    {"\xc3\xa9", "\xc3\x83\xc2\xa9"},
};
const std::string broken_texts[] = {"a & b", "a < b", "&undeclared;", "]]>", "\x01", "</a>", "<a>"};

} // namespace

TEST(ChanDescrWriterRoundTrip, SomeTextsDoNotSurvive) {
    for (const lost_text &c : lost_texts)
        for (int format : {chandescriptions, daqvariables}) {
            channel_list list, back;
            set_text(list.add(make_channel("P", "N"))->prop_desc, c.stored);
            std::string document = xml_of(list, format);
            EXPECT_EQ(parse_descr_list_read(document.data(), back, false, false), 0) << c.stored;
            ASSERT_EQ(back.records.size(), 1u) << c.stored;
            EXPECT_EQ(back.records[0]->prop_desc, c.back) << c.stored << ", format " << format;
            set_text(list.records[0]->prop_desc, c.back);
            EXPECT_EQ(describe(back.records), describe(list.records)) << c.stored << ", format " << format;
        }
}

TEST(ChanDescrWriterRoundTrip, SomeTextsBreakTheDocument) {
    for (const std::string &text : broken_texts)
        for (int format : {chandescriptions, daqvariables}) {
            channel_list list, back;
            set_text(list.add(make_channel("P", "N"))->prop_desc, text);
            std::string document = xml_of(list, format);
            int result = 0;
            const captured seen =
                capture([&] { result = parse_descr_list_read(document.data(), back, false, false); });
            EXPECT_EQ(result, 1) << text << ", format " << format;
            EXPECT_EQ(seen.err.find("\nFatal Error at (file my_mem_info, line "), 0u) << seen.err;
        }
}

TEST(ChanDescrWriterRoundTrip, AChannelWithoutPropertyNameIsLost) {
    for (const char *prop : {"", " "})
        for (int format : {chandescriptions, daqvariables}) {
            channel_list list, back;
            list.add(make_channel(prop, "N"));
            list.add(make_channel("P", "M"));
            std::string document = xml_of(list, format);
            EXPECT_EQ(parse_descr_list_read(document.data(), back, false, false), 0);
            ASSERT_EQ(back.records.size(), 1u);
            EXPECT_EQ(describe(*back.records[0]), describe(*list.records[1]));
        }
}
