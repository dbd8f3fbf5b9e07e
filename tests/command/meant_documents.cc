#include "command/meant_documents.h"

#include <cstdlib>

namespace {

const std::string longest(300, 'l');

} // namespace

// Values

meant_documents::text_value meant_documents::text(std::size_t most) {
    if (is_odd())
        return odd_text(most);
    const std::string usual = one_of<std::string>({"mm", "two words", "a > b", "x", "\"quoted\"", "a\nb", "0",
                                                   "it's", "a]]b", longest.substr(0, most)});
    return {usual.substr(0, most), usual.substr(0, most)};
}

meant_documents::text_value meant_documents::odd_text(std::size_t most) {
    return one_of<text_value>({{" x ", " x "},
                               {"x\n", "x\n"},
                               {"a&b", "a&amp;b"},
                               {"Ab", "&#65;b"},
                               {"aA", "a&#x41;"},
                               {"<", "&lt;"},
                               {" B", " &#66;"},
                               {"<", "<![CDATA[<]]>"},
                               {"all", "<![CDATA[all]]>"},
                               {"cd", "<![CDATA[c]]>d"},
                               {"dc", "d<![CDATA[c]]>"},
                               {"cd", "<![CDATA[c]]><![CDATA[d]]>"},
                               {"\nc", "\n<![CDATA[c]]>"},
                               {"ab", "a<!-- c -->b"},
                               {"a", "<!-- c -->a"},
                               {"a", "a<!-- c -->"},
                               {"a", "<?pi?>a"},
                               {"\r", "&#13;"},
                               {"a\tb", "a&#9;b"},
                               {"\xC3\xA4", "\xC3\xA4"},
                               {"\xC2\xA0x", "\xC2\xA0x"},
                               {"\xE2\x80\x9Cq\xE2\x80\x9D", "\xE2\x80\x9Cq\xE2\x80\x9D"},
                               {"\xE2\x82\xAC", "&#x20AC;"},
                               {"bc", "b<X/>c"},
                               {"Unknown", "Unknown"},
                               {"Waiting", "Waiting"},
                               {longest.substr(0, most + 1), longest.substr(0, most + 1)},
                               {"", ""}});
}

meant_documents::text_value meant_documents::attribute_text() {
    const text_value plain{"F" + std::to_string(below(40)), ""};
    if (!is_odd())
        return {plain.meant, plain.meant};
    return one_of<text_value>({{" x ", " x "},
                               {"a&b", "a&amp;b"},
                               {"<", "&lt;"},
                               {"a b", "a\nb"},
                               {"\"", "&quot;"},
                               {"A", "&#65;"},
                               {"\xC3\xA4", "\xC3\xA4"},
                               {"Unknown", "Unknown"},
                               {"Waiting", "Waiting"},
                               {"", ""}});
}

meant_documents::number_value meant_documents::number(std::int64_t least, std::int64_t most) {
    if (is_odd())
        return odd_number(least, most);
    const std::int64_t number = std::clamp(one_of<std::int64_t>({least, most, 0, 1, 7, 16}), least, most);
    const std::string digits = std::to_string(number);
    return {number,
            one_of<std::string>({digits, digits, digits, " " + digits + " ", "\n" + digits + "\t",
                                 (number < 0 ? "" : "+") + digits, number < 0 ? digits : "0" + digits})};
}

meant_documents::number_value meant_documents::odd_number(std::int64_t least, std::int64_t most) {
    if (is_there())
        return one_of<number_value>({{least - 1, std::to_string(least - 1)},
                                     {most + 1, std::to_string(most + 1)},
                                     {18, "0x12"},
                                     {18, "0X12"},
                                     {12, "1<!-- -->2"},
                                     {12, "&#49;2"},
                                     {12, "1&#50;"},
                                     {12, "<![CDATA[12]]>"},
                                     {12, "<![CDATA[1]]>2"},
                                     {12, "<!-- -->12"},
                                     {1000, "1e3"},
                                     {0, "-0"}});
    return {0, doubt(one_of<std::string>({"", " ", "12x", "many", "1,5", "1.5", "1 2", "1.000", "--1",
                                          "\xC2\xA0"
                                          "5",
                                          "5\xC2\xA0",
                                          "\xE2\x88\x92"
                                          "1",
                                          "99999999999999999999", "l2", "O"}))};
}

float meant_documents::real(std::string &written) {
    written = one_of<std::string>({"0", "0.5", "1e-3", "12", "0.1", "3.25", ".5", "7.", "+2", " 1 ",
                                   "0.000001", "3.4028234e38", "1E2"});
    if (is_odd() && is_there())
        written = doubt(
            one_of<std::string>({"", "0,5", "1e99", "nan", "inf", "0.5V", "half", "0.5.1", "\xC2\xBD"}));
    else if (is_odd())
        written = one_of<std::string>({"-1", "0.0000001", "0x8", "<![CDATA[0.5]]>", "<!-- -->2"});
    const std::string number = written == "<![CDATA[0.5]]>" ? "0.5" : written == "<!-- -->2" ? "2" : written;
    return std::strtof(number.c_str(), nullptr);
}

// Elements

std::string meant_documents::around(const std::string &name, const std::string &written,
                                    const std::string &attribute) {
    const std::string last = is_odd() ? one_of<std::string>({" ", "\n"}) : "";
    return "<" + name + attribute + last + ">" + written + "</" + name + last + ">";
}

std::string meant_documents::element(const std::string &name, const std::string &written) {
    if (!is_odd())
        return around(name, written) + "\n";
    switch (below(6)) {
    case 0:
        return doubt(around(name, written) + around(name, written) + "\n"); // what the second one is for
    case 1:
        return doubt(around(name, written) + "<" + name + "/>" + "\n");
    case 2:
        return doubt(around(name + "X", written) + "\n");
    case 3:
        return around(name, written, " a=\"b\"") + "\n";
    case 4:
        return around(name, written) + "text\n";
    default:
        return around(name, written) + "<!-- " + name + " -->" + "\n";
    }
}

/// A text that is probably no other record's.
std::string meant_documents::identity(std::string &meant) {
    const text_value odd = is_odd() ? text(255) : text_value{};
    const std::string usual = "P/" + std::to_string(below(1000));
    meant = odd.meant.empty() ? usual : odd.meant;
    return odd.meant.empty() ? usual : odd.written;
}

// Channels

std::string meant_documents::channel_values(chan_descr_2010 &channel) {
    std::string all;
    if (is_there())
        all += number_element("STREAM", channel.stream, int_least, int_most);
    if (is_there())
        all += number_element("EVTYPE", channel.ev_type, 0, std::int64_t{1} << 27);
    if (is_there())
        all += number_element("DTYPE", channel.dtype, 0, std::int64_t{1} << 28);
    if (is_there())
        all += number_element("DB_KEY", channel.db_key, int_least, int_most);
    if (is_there())
        all += number_element("COUNT", channel.count, 0, int_most);
    if (is_there())
        all += number_element("SETPOINT", channel.set_point, int_least, int_most);
    if (is_there())
        all += number_element("SIZE", channel.max_size, 1, int_most);
    if (is_there())
        all += text_element("SB_NAME", channel.sb_name);
    if (is_there())
        all += text_element("SUBSYSTEM", channel.subsystem);
    if (is_there())
        all += text_element("UNITS", channel.units);
    if (is_there())
        all += text_element("DESC", channel.prop_desc);
    return all;
}

std::string meant_documents::bit(chan_descr_2010 &channel) {
    bit_descr *const part = add_bit(&channel, 0);
    std::string all = part_number(part->bit, 0, 31) + "\n";
    all += text_element("BIT_NAME", part->bit_name);
    return around("BIT", all + text_element("BIT_DESCR", part->bit_desc)) + "\n";
}

std::string meant_documents::dimension(chan_descr_2010 &channel) {
    dim_descr *const part = add_dim(&channel, 0);
    std::string all = part_number(part->dim) + "\n";
    all += text_element("DIM_NAME", part->dim_name) + text_element("DIM_UNITS", part->units);
    all += text_element("DIM_DESCR", part->dim_desc);
    for (std::size_t count = below(3); count-- > 0;) {
        stat_descr *const inner = add_stat(part, 0);
        std::string values = part_number(inner->stat) + "\n";
        values += text_element("STAT_NAME", inner->stat_name) + text_element("STAT_UNITS", inner->units);
        all += around("STAT", values + text_element("STAT_DESCR", inner->stat_desc)) + "\n";
    }
    if (is_odd())
        all += doubt(element("UNITS", "V")); // which are not those of the channel
    return around("DIM", all) + "\n";
}

meant_document meant_documents::channels() {
    channel_list list;
    std::string content = "\n";
    for (std::size_t count = below(3); count-- > 0;) {
        std::string property;
        std::string values = element("PROP", identity(property));
        is_doubtful_ = is_doubtful_ || property.size() >= sizeof chan_descr_2010::prop_name;
        chan_descr_2010 &channel = *list.add(make_channel(property.c_str()));
        values += text_element("NAME", channel.daq_name) + channel_values(channel);
        for (std::size_t bits = below(3); bits-- > 0;)
            values += bit(channel);
        for (std::size_t dims = below(3); dims-- > 0;)
            values += dimension(channel);
        content += around("CHANNEL", values) + "\n";
    }
    return finish("CHANDESCRIPTIONS", content, describe(list.records));
}

std::string meant_documents::variable_values(chan_descr_2010 &channel) {
    std::string all;
    if (is_there())
        all += number_element("evType", channel.ev_type, 0, std::int64_t{1} << 27);
    if (is_there())
        all += number_element("setPoint", channel.set_point, int_least, int_most);
    if (is_there())
        all += number_element("lastIndex", channel.max_size, 0, int_most - 1, 1);
    if (is_there())
        all += text_element("subSystem", channel.subsystem);
    if (is_there())
        all += text_element("units", channel.units);
    if (is_there())
        all += text_element("description", channel.prop_desc);
    return all;
}

std::string meant_documents::variable_parts(const std::string &kind, chan_descr_2010 &channel) {
    std::string all;
    if (kind != "DaqBits" && is_odd())
        all += doubt("<bitTitle bit=\"1\">on</bitTitle>\n");
    if (kind != "DaqFloatMatrix" && is_odd())
        all += doubt("<dimension id=\"1\"><name>t</name></dimension>\n");
    for (std::size_t count = kind == "DaqBits" ? below(3) : 0; count-- > 0;) {
        const int position = static_cast<int>(below(2) * 31);
        const std::string number = std::to_string(position);
        add_bit(&channel, position); // that of the start tag, as the reader makes one of each step
        bit_descr *const part = add_bit(&channel, position);
        const text_value name = text(sizeof part->bit_name - 1);
        is_doubtful_ = is_doubtful_ || name.meant.size() >= sizeof part->bit_name;
        set_text(part->bit_name, name.meant);
        all += around("bitTitle", name.written, " bit=\"" + number + "\"") + "\n";
    }
    for (std::size_t count = kind == "DaqFloatMatrix" ? below(3) : 0; count-- > 0;) {
        dim_descr *const part = add_dim(&channel, 0);
        const std::string number = std::to_string(part->dim = static_cast<int>(below(9)));
        std::string values = "\n" + text_element("name", part->dim_name);
        values += text_element("description", part->dim_desc) + text_element("units", part->units);
        all += around("dimension", values, " id=\"" + number + "\"") + "\n";
    }
    return all;
}

meant_document meant_documents::variables() {
    channel_list list;
    std::string content = "\n";
    for (std::size_t count = below(3); count-- > 0;) {
        const std::string kind = one_of<std::string>({"DaqFloat", "DaqBits", "DaqFloatMatrix"});
        std::string property;
        std::string values = element("orvin", identity(property));
        is_doubtful_ = is_doubtful_ || property.size() >= sizeof chan_descr_2010::prop_name;
        chan_descr_2010 &channel = *list.add(make_channel(property.c_str()));
        values += text_element("daqName", channel.daq_name) + variable_values(channel);
        content += around(kind, values + variable_parts(kind, channel)) + "\n";
    }
    return finish("DAQvariables", content, describe(list.records));
}

// Event lists

std::string meant_documents::block(zeb5_ev_entry *entry) {
    const text_value name = is_odd() ? text(254) : text_value{"S", "S"};
    zeb5_ev_sb_list *const block = add_block(entry, name.meant.c_str());
    is_doubtful_ = is_doubtful_ || name.meant.empty() || name.meant.size() > 254;
    std::string all = element("SBLOCK", name.written), channels = "\n";
    if (!is_there())
        return all;
    for (std::size_t count = below(3); count-- > 0;) {
        const text_value channel = text(300);
        is_doubtful_ = is_doubtful_ || channel.meant.empty();
        block->ch_list->push_back(strcpy(new char[channel.meant.size() + 1], channel.meant.c_str()));
        channels += element("CHAN", channel.written);
    }
    return all + element("CHLIST", channels);
}

std::string meant_documents::event(event_list &list) {
    zeb5_ev_entry *const entry = add_entry(list, 0);
    const number_value type = number(0, 27);
    entry->evtype = static_cast<ZEB5_EVTYPE>(type.meant);
    std::string all = element("TYPE", type.written);
    if (is_there())
        all += number_element("TMASK", entry->tmask, 0, mask_most);
    if (is_there())
        all += number_element("MINTIMESEC", entry->min_ev_time.timeup, 0, mask_most);
    if (is_there())
        all += number_element("MINTIMEUSEC", entry->min_ev_time.timelow, 0, 999'999);
    if (is_there())
        all += number_element("PRIORITY", entry->priority, 0, mask_most);
    for (std::size_t count = below(3); count-- > 0;)
        all += block(entry);
    return around("EVENT", all) + "\n";
}

meant_document meant_documents::events() {
    event_list list;
    std::string content = "\n";
    for (std::size_t count = below(3); count-- > 0;)
        content += event(list);
    return finish("BMR", content, describe(list.entries));
}

// Camera files

std::string meant_documents::feature_text(const char *name, std::string &meant) {
    const text_value value = text(300);
    meant = value.meant;
    return element(name, value.written);
}

std::string meant_documents::feature(std::string &records) {
    const int type = 1 + static_cast<int>(below(FEATURE_TYPE_MAX - 1));
    const text_value name = attribute_text();
    std::string extension, tooltip, description, all = "\n";
    if (below(4) == 0) {
        const text_value other = attribute_text();
        extension = other.meant;
        all += "<PvRename Name=\"" + other.written + "\"/>\n";
    } else if (below(4) == 0)
        all += feature_text("PvRename", extension);
    if (is_there())
        all += feature_text("ToolTip", tooltip);
    if (is_there())
        all += feature_text("Description", description);
    all += one_of<std::string>(
        {"", "<Value>1</Value>\n", "<EnumEntry Name=\"E\"><Value>1</Value></EnumEntry>\n"});
    if (is_odd())
        all += doubt("<EnumEntry Name=\"E\"><ToolTip>of E</ToolTip></EnumEntry>\n");
    records +=
        std::to_string(type) + '|' + name.meant + '|' + extension + '|' + tooltip + '|' + description + '\n';
    return around(FeatureTags[type], all, " Name=\"" + name.written + "\"") + "\n";
}

meant_document meant_documents::camera() {
    std::string records, content = "\n";
    for (std::size_t count = 1 + below(3); count-- > 0;)
        content += feature(records);
    return finish("Camera", content, std::move(records));
}
