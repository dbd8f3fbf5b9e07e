/// The axes of spectra and images that the channel description writer adds to its DIM elements.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <limits>

#include "support/chan_descr_writing.h"

namespace {

using spectrum = zeb5_spect_header_2010;
using image = zeb5_image_ext_frame_head;

/// Entries of axes that live as long as this.
class axes_list {
public:
    void add(const char *name, std::int32_t num, spectrum *params, image *iparams) {
        char *own_name = name ? names_.emplace_back(name).data() : nullptr;
        entries_.push_back({own_name, num, params, iparams});
        pointers_.push_back(&entries_.back());
    }
    operator std::vector<dim_params *> *() { return &pointers_; }

private:
    std::deque<std::string> names_; // a deque keeps its elements where they are
    std::deque<dim_params> entries_;
    std::vector<dim_params *> pointers_;
};

/// A spectrum axis and an image head that are recognised by a number.
spectrum numbered_spectrum(int n) { return {0.0F, 0.0F, n, 0, 0.0F}; }
image numbered_image(int n) {
    image head{};
    head.x_start = n;
    head.ispare4 = -1;
    return head;
}
std::string numbered_spectrum_lines(int n) {
    return "<DIM_START>0.000000e+00</DIM_START>\n<DIM_INC>0.000000e+00</DIM_INC>\n<DIM_NDATA>" +
           std::to_string(n) +
           "</DIM_NDATA>\n<DIM_GROUPS>0</DIM_GROUPS>\n<DIM_GROUP_INC>0.000000e+00</DIM_GROUP_INC>\n";
}
std::string numbered_image_lines(int n) {
    return "<DIM_XSTART>" + std::to_string(n) +
           "</DIM_XSTART>\n<DIM_WIDTH>0</DIM_WIDTH>\n<DIM_YSTART>0</DIM_YSTART>\n<DIM_HEIGHT>0</"
           "DIM_HEIGHT>\n";
}

std::string channel_lines(const std::string &prop, const std::string &daq, const std::string &dims) {
    return "<CHANNEL>\n<STREAM>0</STREAM>\n<EVTYPE>0</EVTYPE>\n<DTYPE>0</DTYPE>\n<DB_KEY>-1</DB_KEY>\n"
           "<COUNT>0</COUNT>\n<SB_NAME></SB_NAME>\n<PROP>" +
           prop + "</PROP>\n<NAME>" + daq +
           "</NAME>\n<SETPOINT>0</SETPOINT>\n<SUBSYSTEM></SUBSYSTEM>\n<UNITS></UNITS>\n<DESC></DESC>\n"
           "<SIZE>1</SIZE>\n" +
           dims + "</CHANNEL>\n";
}

std::string made_up_dim(int j, const std::string &blocks) {
    return "<DIM>" + std::to_string(j) + "\n" + blocks + "</DIM>\n";
}
std::string own_dim(int dim, const std::string &blocks) {
    return "<DIM>" + std::to_string(dim) +
           "\n<DIM_NAME>d</DIM_NAME>\n<DIM_UNITS>u</DIM_UNITS>\n<DIM_DESCR>dd</DIM_DESCR>\n" + blocks +
           "</DIM>\n";
}

/// The document of one channel "P", named "N", without dimensions of its own.
std::string document_with(std::vector<dim_params *> *axes) {
    channel_list list;
    list.add(make_channel("P", "N"));
    return xml_of(list, chandescriptions, axes);
}
std::string expected_document(const std::string &dims) {
    return chandescriptions_document(channel_lines("P", "N", dims));
}

struct spectrum_case {
    spectrum axis;
    const char *lines;
};
const spectrum_case spectrum_cases[] = {
    {{0, 0, 0, 0, 0},
     "<DIM_START>0.000000e+00</DIM_START>\n<DIM_INC>0.000000e+00</DIM_INC>\n<DIM_NDATA>0</DIM_NDATA>\n"
     "<DIM_GROUPS>0</DIM_GROUPS>\n<DIM_GROUP_INC>0.000000e+00</DIM_GROUP_INC>\n"},
    {{1.5F, 0.1F, 2048, 3, 1e10F},
     "<DIM_START>1.500000e+00</DIM_START>\n<DIM_INC>1.000000e-01</DIM_INC>\n<DIM_NDATA>2048</DIM_NDATA>\n"
     "<DIM_GROUPS>3</DIM_GROUPS>\n<DIM_GROUP_INC>1.000000e+10</DIM_GROUP_INC>\n"},
    {{-1.5F, -0.0F, -1, INT32_MIN, -FLT_MAX},
     "<DIM_START>-1.500000e+00</DIM_START>\n<DIM_INC>-0.000000e+00</DIM_INC>\n<DIM_NDATA>-1</DIM_NDATA>\n"
     "<DIM_GROUPS>-2147483648</DIM_GROUPS>\n<DIM_GROUP_INC>-3.402823e+38</DIM_GROUP_INC>\n"},
    {{HUGE_VALF, -HUGE_VALF, INT32_MAX, -7, FLT_TRUE_MIN},
     "<DIM_START>inf</DIM_START>\n<DIM_INC>-inf</DIM_INC>\n<DIM_NDATA>2147483647</DIM_NDATA>\n"
     "<DIM_GROUPS>-7</DIM_GROUPS>\n<DIM_GROUP_INC>1.401298e-45</DIM_GROUP_INC>\n"},
    {{std::numeric_limits<float>::quiet_NaN(), FLT_MIN, 1, 1, 123456.789F},
     "<DIM_START>nan</DIM_START>\n<DIM_INC>1.175494e-38</DIM_INC>\n<DIM_NDATA>1</DIM_NDATA>\n"
     "<DIM_GROUPS>1</DIM_GROUPS>\n<DIM_GROUP_INC>1.234568e+05</DIM_GROUP_INC>\n"},
};

} // namespace

TEST(ChanDescriptionsWriter, ASpectrumBlockHasAlwaysAllOfItsElements) {
    for (const spectrum_case &c : spectrum_cases) {
        spectrum axis = c.axis;
        axes_list axes;
        axes.add("N", 1, &axis, nullptr);
        EXPECT_EQ(document_with(axes), expected_document(made_up_dim(0, c.lines)));
    }
}

namespace {

/// A change to an image head that has nothing but an unknown sign (ispare4 -1), and the element that it adds:
/// to the four that are always there, in their places.
struct image_case {
    const char *what;
    void (*change)(image &head);
    const char *x_start, *width, *after_width, *y_start, *height, *after_height;
};

#define CHANGE(statement) [](image &h) { h.statement; }
const image_case image_cases[] = {
    {"plain", [](image &) {}, "0", "0", "", "0", "0", ""},
    {"x_start 12", CHANGE(x_start = 12), "12", "0", "", "0", "0", ""},
    {"x_start -12", CHANGE(x_start = -12), "-12", "0", "", "0", "0", ""},
    {"y_start 34", CHANGE(y_start = 34), "0", "0", "", "34", "0", ""},
    {"y_start -34", CHANGE(y_start = -34), "0", "0", "", "-34", "0", ""},
    {"width 640", CHANGE(width = 640), "0", "640", "", "0", "0", ""},
    {"width -640", CHANGE(width = -640), "0", "-640", "", "0", "0", ""},
    {"area 1 wide of 640", CHANGE(width = 640; h.aoi_width = 1), "0", "1", "", "0", "0", ""},
    {"area 320 wide of 640", CHANGE(width = 640; h.aoi_width = 320), "0", "320", "", "0", "0", ""},
    {"area 0 wide of 640", CHANGE(width = 640; h.aoi_width = 0), "0", "640", "", "0", "0", ""},
    {"area -1 wide of 640", CHANGE(width = 640; h.aoi_width = -1), "0", "640", "", "0", "0", ""},
    {"height 480", CHANGE(height = 480), "0", "0", "", "0", "480", ""},
    {"height -480", CHANGE(height = -480), "0", "0", "", "0", "-480", ""},
    {"area 1 high of 480", CHANGE(height = 480; h.aoi_height = 1), "0", "0", "", "0", "1", ""},
    {"area 240 high of 480", CHANGE(height = 480; h.aoi_height = 240), "0", "0", "", "0", "240", ""},
    {"area 0 high of 480", CHANGE(height = 480; h.aoi_height = 0), "0", "0", "", "0", "480", ""},
    {"area -1 high of 480", CHANGE(height = 480; h.aoi_height = -1), "0", "0", "", "0", "480", ""},
    {"hbin 1", CHANGE(hbin = 1), "0", "0", "<DIM_XBIN>1</DIM_XBIN>\n", "0", "0", ""},
    {"hbin -1", CHANGE(hbin = -1), "0", "0", "", "0", "0", ""},
    {"vbin 1", CHANGE(vbin = 1), "0", "0", "", "0", "0", "<DIM_YBIN>1</DIM_YBIN>\n"},
    {"vbin -1", CHANGE(vbin = -1), "0", "0", "", "0", "0", ""},
    {"bpp 1", CHANGE(bpp = 1), "0", "0", "", "0", "0", "<DIM_BPP>1</DIM_BPP>\n"},
    {"bpp -1", CHANGE(bpp = -1), "0", "0", "", "0", "0", ""},
    {"ebitpp 1", CHANGE(ebitpp = 1), "0", "0", "", "0", "0", "<DIM_EBITPP>1</DIM_EBITPP>\n"},
    {"ebitpp -1", CHANGE(ebitpp = -1), "0", "0", "", "0", "0", ""},
    {"ispare4 0", CHANGE(ispare4 = 0), "0", "0", "", "0", "0", "<DIM_UNSIGNED>0</DIM_UNSIGNED>\n"},
    {"ispare4 1", CHANGE(ispare4 = 1), "0", "0", "", "0", "0", "<DIM_UNSIGNED>1</DIM_UNSIGNED>\n"},
    {"ispare4 -2", CHANGE(ispare4 = -2), "0", "0", "", "0", "0", "<DIM_UNSIGNED>-2</DIM_UNSIGNED>\n"},
    {"fspare2 1.5", CHANGE(fspare2 = 1.5F), "0", "0", "", "0", "0", "<DIM_START>1.500000e+00</DIM_START>\n"},
    {"fspare2 tiny", CHANGE(fspare2 = FLT_TRUE_MIN), "0", "0", "", "0", "0",
     "<DIM_START>1.401298e-45</DIM_START>\n"},
    {"fspare2 -0", CHANGE(fspare2 = -0.0F), "0", "0", "", "0", "0", ""},
    {"fspare2 -1.5", CHANGE(fspare2 = -1.5F), "0", "0", "", "0", "0", ""},
    {"fspare2 nan", CHANGE(fspare2 = std::numeric_limits<float>::quiet_NaN()), "0", "0", "", "0", "0", ""},
    {"fspare3 0.25", CHANGE(fspare3 = 0.25F), "0", "0", "", "0", "0", "<DIM_INC>2.500000e-01</DIM_INC>\n"},
    {"fspare3 inf", CHANGE(fspare3 = HUGE_VALF), "0", "0", "", "0", "0", "<DIM_INC>inf</DIM_INC>\n"},
    {"fspare3 -0.25", CHANGE(fspare3 = -0.25F), "0", "0", "", "0", "0", ""},
    {"ispare3 1", CHANGE(ispare3 = 1), "0", "0", "", "0", "0", "<DIM_NDATA>1</DIM_NDATA>\n"},
    {"ispare3 -1", CHANGE(ispare3 = -1), "0", "0", "", "0", "0", ""},
    {"ispare2 1", CHANGE(ispare2 = 1), "0", "0", "", "0", "0", "<DIM_GROUPS>1</DIM_GROUPS>\n"},
    {"ispare2 -1", CHANGE(ispare2 = -1), "0", "0", "", "0", "0", ""},
    {"fspare4 8", CHANGE(fspare4 = 8), "0", "0", "", "0", "0",
     "<DIM_GROUP_INC>8.000000e+00</DIM_GROUP_INC>\n"},
    {"fspare4 -8", CHANGE(fspare4 = -8), "0", "0", "", "0", "0", ""},
    {"fields that are not written",
     CHANGE(source_format = h.image_format = h.image_flags = h.length = 5; h.frame = h.event = 6U;
            h.scale_x = h.scale_y = h.image_rotation = 7.0F),
     "0", "0", "", "0", "0", ""},
};
#undef CHANGE

} // namespace

TEST(ChanDescriptionsWriter, AnImageBlockHasAnElementPerFieldThatIsSet) {
    for (const image_case &c : image_cases) {
        image head{};
        head.ispare4 = -1;
        c.change(head);
        axes_list axes;
        axes.add("N", 1, nullptr, &head);
        EXPECT_EQ(document_with(axes),
                  expected_document(made_up_dim(
                      0, std::string("<DIM_XSTART>") + c.x_start + "</DIM_XSTART>\n<DIM_WIDTH>" + c.width +
                             "</DIM_WIDTH>\n" + c.after_width + "<DIM_YSTART>" + c.y_start +
                             "</DIM_YSTART>\n<DIM_HEIGHT>" + c.height + "</DIM_HEIGHT>\n" + c.after_height)))
            << c.what;
    }
}

namespace {

image full_image() {
    return {1280, 960, 640, 480, 10, 20, 2, 12, 4, 8, 0, 0, 0, 0, 0, 0, 0, 1.5F, 0.5F, 2.5F, 0, 7, 99, 1, 0};
}
const char *const full_image_lines = "<DIM_XSTART>10</DIM_XSTART>\n"
                                     "<DIM_WIDTH>640</DIM_WIDTH>\n"
                                     "<DIM_XBIN>4</DIM_XBIN>\n"
                                     "<DIM_YSTART>20</DIM_YSTART>\n"
                                     "<DIM_HEIGHT>480</DIM_HEIGHT>\n"
                                     "<DIM_YBIN>8</DIM_YBIN>\n"
                                     "<DIM_BPP>2</DIM_BPP>\n"
                                     "<DIM_EBITPP>12</DIM_EBITPP>\n"
                                     "<DIM_UNSIGNED>1</DIM_UNSIGNED>\n"
                                     "<DIM_START>1.500000e+00</DIM_START>\n"
                                     "<DIM_INC>5.000000e-01</DIM_INC>\n"
                                     "<DIM_NDATA>99</DIM_NDATA>\n"
                                     "<DIM_GROUPS>7</DIM_GROUPS>\n"
                                     "<DIM_GROUP_INC>2.500000e+00</DIM_GROUP_INC>\n";

} // namespace

TEST(ChanDescriptionsWriter, AnImageBlockKeepsItsOrder) {
    image head = full_image();
    axes_list axes;
    axes.add("N", 1, nullptr, &head);
    EXPECT_EQ(document_with(axes), expected_document(made_up_dim(0, full_image_lines)));
}

TEST(ChanDescriptionsWriter, BothBlocksFollowOneAnotherWithTheirCommonElementsTwice) {
    spectrum axis = numbered_spectrum(5);
    image head = full_image();
    axes_list axes;
    axes.add("N", 1, &axis, &head);
    const std::string both = numbered_spectrum_lines(5) + full_image_lines;
    EXPECT_EQ(document_with(axes), expected_document(made_up_dim(0, both)));

    channel_list list;
    add_dim(list.add(make_channel("P", "N")), 0, "d", "dd", "u");
    EXPECT_EQ(xml_of(list, chandescriptions, axes), expected_document(own_dim(0, both)));
}

namespace {

constexpr std::int32_t axes_count = 3;

/// A dimension of the channel's own beside an entry with three axes; S and I: the block of that number is
/// there.
struct own_dim_case {
    std::int32_t dim;
    bool params, iparams;
    int spectrum_block, image_block; // -1: none
};
const own_dim_case own_dim_cases[] = {
    {0, true, true, 0, 0},     {1, true, true, 1, 1},           {2, true, true, 2, 2},
    {3, true, true, -1, -1},   {4, true, true, -1, -1},         {INT32_MAX, true, true, -1, -1},
    {-1, true, true, -1, -1},  {INT32_MIN, true, true, -1, -1}, {0, true, false, 0, -1},
    {2, true, false, 2, -1},   {3, true, false, -1, -1},        {-1, true, false, -1, -1},
    {0, false, true, -1, 0},   {2, false, true, -1, 2},         {3, false, true, -1, -1},
    {4, false, true, -1, -1},  {-1, false, true, -1, -1},       {INT32_MIN, false, true, -1, -1},
    {0, false, false, -1, -1},
};

} // namespace

TEST(ChanDescriptionsWriter, ADimensionGetsTheBlocksOfItsNumber) {
    std::vector<spectrum> spectra;
    std::vector<image> images;
    for (int n = 0; n < axes_count; ++n) {
        spectra.push_back(numbered_spectrum(n));
        images.push_back(numbered_image(n));
    }
    for (const own_dim_case &c : own_dim_cases) {
        axes_list axes;
        axes.add("N", axes_count, c.params ? spectra.data() : nullptr, c.iparams ? images.data() : nullptr);
        channel_list list;
        add_dim(list.add(make_channel("P", "N")), c.dim, "d", "dd", "u");
        EXPECT_EQ(xml_of(list, chandescriptions, axes),
                  expected_document(
                      own_dim(c.dim, (c.spectrum_block < 0 ? "" : numbered_spectrum_lines(c.spectrum_block)) +
                                         (c.image_block < 0 ? "" : numbered_image_lines(c.image_block)))))
            << "dim " << c.dim << (c.params ? " params" : "") << (c.iparams ? " iparams" : "");
    }
}

TEST(ChanDescriptionsWriter, TheBlocksStandBehindTheStatistics) {
    spectrum axis = numbered_spectrum(5);
    axes_list axes;
    axes.add("N", 1, &axis, nullptr);
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("P", "N"));
    for (int dim : {0, 0, 1}) // a number that stands twice gets its block twice
        add_stat(add_dim(channel, dim, "d", "dd", "u"), 7, "s", "sd", "su");
    const std::string stat = "<STAT>7\n<STAT_NAME>s</STAT_NAME>\n<STAT_UNITS>su</STAT_UNITS>\n"
                             "<STAT_DESCR>sd</STAT_DESCR>\n</STAT>\n";
    EXPECT_EQ(xml_of(list, chandescriptions, axes),
              expected_document(own_dim(0, stat + numbered_spectrum_lines(5)) +
                                own_dim(0, stat + numbered_spectrum_lines(5)) + own_dim(1, stat)));
}

TEST(ChanDescriptionsWriter, AChannelWithoutDimensionsGetsOnePerAxis) {
    spectrum spectra[] = {numbered_spectrum(10), numbered_spectrum(11), numbered_spectrum(12)};
    image head = numbered_image(20);
    const std::string image_lines = numbered_image_lines(20);
    for (const bool with_image : {false, true}) {
        axes_list axes;
        axes.add("N", 3, spectra, with_image ? &head : nullptr);
        std::string dims;
        for (int j = 0; j < 3; ++j)
            dims += made_up_dim(j, numbered_spectrum_lines(10 + j) + (with_image ? image_lines : ""));
        EXPECT_EQ(document_with(axes), expected_document(dims));
    }
    axes_list image_only;
    image_only.add("N", 2, nullptr, &head);
    EXPECT_EQ(document_with(image_only),
              expected_document(made_up_dim(0, image_lines) + made_up_dim(1, image_lines)));
}

// Producers lay out one image head per channel of the list: readers of old documents rely on that.
TEST(ChanDescriptionsWriter, AMadeUpDimensionTakesTheImageHeadOfTheChannelsPosition) {
    image heads[] = {numbered_image(0), numbered_image(1), numbered_image(2), numbered_image(3),
                     numbered_image(4)};
    spectrum spectra[] = {numbered_spectrum(10), numbered_spectrum(11)};
    axes_list axes;
    axes.add("N", 2, spectra, heads);
    channel_list list;
    for (const char *prop : {"A", "A", "B", "A", "C"}) // two skipped ones, whose positions count
        list.add(make_channel(prop, "N"));
    std::string body;
    for (const auto &[prop, position] : {std::pair("A", 0), std::pair("B", 2), std::pair("C", 4)}) {
        const std::string head = numbered_image_lines(position);
        body += channel_lines(prop, "N",
                              made_up_dim(0, numbered_spectrum_lines(10) + head) +
                                  made_up_dim(1, numbered_spectrum_lines(11) + head));
    }
    EXPECT_EQ(xml_of(list, chandescriptions, axes), chandescriptions_document(body));
}

TEST(ChanDescriptionsWriter, TheVectorDecidesWhetherAChannelHasDimensions) {
    spectrum axis = numbered_spectrum(5);
    axes_list axes;
    axes.add("N", 1, &axis, nullptr);
    channel_list list;
    list.add(make_channel("claims", "N"))->ndims = 3;
    chan_descr_2010 *holds = list.add(make_channel("holds", "N"));
    add_dim(holds, 0, "d", "dd", "u");
    holds->ndims = 0;
    const std::string document = xml_of(list, chandescriptions, axes);
    holds->ndims = 1; // so that it is released
    EXPECT_EQ(document, chandescriptions_document(
                            channel_lines("claims", "N", made_up_dim(0, numbered_spectrum_lines(5))) +
                            channel_lines("holds", "N", own_dim(0, numbered_spectrum_lines(5)))));
}

namespace {

spectrum lookup_spectra[] = {numbered_spectrum(10), numbered_spectrum(11)};
image lookup_image = numbered_image(20);

struct lookup_entry {
    const char *name;
    std::int32_t num;
    spectrum *params;
    image *iparams;
};
struct lookup_case {
    const char *what;
    std::vector<lookup_entry> entries;
    int spectrum_dims; // made-up dimensions with spectrum blocks from number 10 on
    bool image_dim;    // or one with the image block alone
};
const lookup_case lookup_cases[] = {
    {"no entry", {}, 0, false},
    {"the one", {{"N", 2, lookup_spectra, nullptr}}, 2, false},
    {"the first of two", {{"N", 1, lookup_spectra, nullptr}, {"N", 2, lookup_spectra, nullptr}}, 1, false},
    {"the first, though of the other kind",
     {{"N", 1, nullptr, &lookup_image}, {"N", 2, lookup_spectra, nullptr}},
     0,
     true},
    {"behind another name", {{"M", 1, lookup_spectra, nullptr}, {"N", 2, lookup_spectra, nullptr}}, 2, false},
    {"behind one without name",
     {{nullptr, 1, lookup_spectra, nullptr}, {"N", 2, lookup_spectra, nullptr}},
     2,
     false},
    {"behind one of no axes",
     {{"N", 0, lookup_spectra, &lookup_image}, {"N", 2, lookup_spectra, nullptr}},
     2,
     false},
    {"behind one of no arrays", {{"N", 1, nullptr, nullptr}, {"N", 2, lookup_spectra, nullptr}}, 2, false},
    {"behind a negative number, which is found",
     {{"N", -1, lookup_spectra, &lookup_image}, {"N", 2, lookup_spectra, nullptr}},
     0,
     false},
    {"a negative number", {{"N", INT32_MIN, lookup_spectra, &lookup_image}}, 0, false},
    {"other case", {{"n", 2, lookup_spectra, nullptr}}, 0, false},
    {"longer name", {{"N ", 2, lookup_spectra, nullptr}}, 0, false},
    {"empty name", {{"", 2, lookup_spectra, nullptr}}, 0, false},
    {"property name", {{"P", 2, lookup_spectra, nullptr}}, 0, false},
};

} // namespace

TEST(ChanDescriptionsWriter, TheFirstUsableEntryOfTheDaqNameIsTaken) {
    for (const lookup_case &c : lookup_cases) {
        axes_list axes;
        for (const lookup_entry &e : c.entries)
            axes.add(e.name, e.num, e.params, e.iparams);
        std::string dims = c.image_dim ? made_up_dim(0, numbered_image_lines(20)) : "";
        for (int j = 0; j < c.spectrum_dims; ++j)
            dims += made_up_dim(j, numbered_spectrum_lines(10 + j));
        EXPECT_EQ(document_with(axes), expected_document(dims)) << c.what;
    }
}

TEST(ChanDescriptionsWriter, ANegativeNumberGivesNoBlocksToOwnDimensionsEither) {
    for (std::int32_t num : {-1, -5, INT32_MIN})
        for (std::int32_t dim : {0, 1, -1, -6, INT32_MIN})
            for (spectrum *params : {lookup_spectra, static_cast<spectrum *>(nullptr)}) {
                axes_list axes;
                axes.add("N", num, params, &lookup_image);
                channel_list list;
                add_dim(list.add(make_channel("P", "N")), dim, "d", "dd", "u");
                EXPECT_EQ(xml_of(list, chandescriptions, axes), expected_document(own_dim(dim, "")));
            }
}

TEST(ChanDescriptionsWriter, WithoutAnEntryOwnDimensionsHaveNoBlocks) {
    axes_list none, other;
    other.add("M", 2, lookup_spectra, &lookup_image);
    for (std::vector<dim_params *> *axes :
         {static_cast<std::vector<dim_params *> *>(nullptr), static_cast<std::vector<dim_params *> *>(none),
          static_cast<std::vector<dim_params *> *>(other)}) {
        channel_list list;
        add_dim(list.add(make_channel("P", "N")), 0, "d", "dd", "u");
        list.add(make_channel("Q", "N"));
        EXPECT_EQ(
            xml_of(list, chandescriptions, axes),
            chandescriptions_document(channel_lines("P", "N", own_dim(0, "")) + channel_lines("Q", "N", "")));
    }
}

TEST(ChanDescriptionsWriter, AChannelWithoutDaqNameGoesByItsPlaceholder) {
    for (const char *daq : {"", "!!!UNDEFINED!!!"}) {
        axes_list axes;
        axes.add("", 1, lookup_spectra, nullptr); // never matches
        axes.add("!!!UNDEFINED!!!", 2, lookup_spectra, nullptr);
        channel_list list;
        list.add(make_channel("P", daq));
        EXPECT_EQ(xml_of(list, chandescriptions, axes),
                  chandescriptions_document(channel_lines("P", "!!!UNDEFINED!!!",
                                                          made_up_dim(0, numbered_spectrum_lines(10)) +
                                                              made_up_dim(1, numbered_spectrum_lines(11)))));
    }
}

TEST(ChanDescriptionsWriter, TheOtherDialectDoesNotKnowThem) {
    axes_list axes;
    axes.add("N", 2, lookup_spectra, &lookup_image);
    channel_list list;
    list.add(make_channel("P", "N"));
    add_dim(list.add(make_channel("Q", "N")), 0, "d", "dd", "u");
    EXPECT_EQ(xml_of(list, daqvariables, axes), xml_of(list, daqvariables));
}
