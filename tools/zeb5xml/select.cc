#include <memory>
#include <string>
#include <vector>

#include "chan_selector.h"
#include "files/document.h"
#include "files/each_file.h"
#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "records/document_kinds.h"
#include "subcommands.h"
#include "values/text_table.h"
#include "values/type_names.h"
#include "words/words.h"

namespace {

struct select_options {
    std::vector<std::string> files;
    std::string event;
    std::string block;
    std::string channel;
    bool slow = false;
    bool ml = false;
    bool tabs = false;
};

/// The selector's answers about one channel.
struct answers {
    std::string name;
    std::string property;
    std::uint32_t events;
    std::uint32_t data;
    int slow; // 1 or 0; -1: no answer, as the channel has no event type
    int ml;
    int subchannels;
};

answers ask(chan_selector &selector, int number) {
    char *name = selector.get_channel(number);
    return {name,
            selector.get_prop(number),
            static_cast<std::uint32_t>(selector.get_event_type(name)),
            static_cast<std::uint32_t>(selector.get_data_type(name)),
            selector.is_channel_slow(number),
            selector.is_channel_ml(number),
            selector.get_subchannels(number)};
}

bool is_wanted(const answers &channel, const select_options &options) {
    if (!options.event.empty() && !(channel.events >> event_type_of(options.event) & 1))
        return false;
    if (!options.block.empty() && !has_block(channel.data, block_type_of(options.block)))
        return false;
    if (!options.channel.empty() && channel.name != options.channel && channel.property != options.channel)
        return false;
    return (!options.slow || channel.slow == 1) && (!options.ml || channel.ml == 1);
}

std::string yes_no(int answer) { return answer < 0 ? "" : answer ? "yes" : "no"; }

/// Adds the channels of one document; those read before an error are kept.
int read_source(chan_selector &selector, const std::string &path) {
    document source = read_document(path);
    std::vector<char *> sources = {source.path.data()};
    bool failed = false;
    const std::string reports =
        held_output({1, 2}, [&] { failed = selector.set_descriptions(&sources, nullptr); });
    if (failed)
        refuse_blank(source);
    write_standard_error(readable_diagnostics(reports, source.name));
    if (failed)
        throw failure(STATUS_DOCUMENT, source.name + ": channel descriptions not read without errors");
    return STATUS_DONE;
}

int select_channels(const select_options &options) {
    chan_selector selector;
    int status =
        each_file(options.files, [&](const std::string &path) { return read_source(selector, path); });
    text_table table = {{"CHANNEL", "PROPERTY", "EVENTS", "DATA", "SLOW", "ML", "SUB"}};
    held_output({1, 2}, [&] { // it reports each channel without event type several times; the table has them
        for (int i = 0; i < selector.size(); ++i)
            if (answers a = ask(selector, i); is_wanted(a, options))
                table.push_back({a.name, a.property, joined(event_names(a.events), ":"),
                                 joined(block_names(a.data), ":"), yes_no(a.slow), yes_no(a.ml),
                                 std::to_string(a.subchannels)});
    });
    write_standard_output(options.tabs ? tabbed(table) : aligned(table));
    if (!options.channel.empty() && table.size() == 1) {
        tell("no such channel: " + options.channel);
        status = STATUS_DOCUMENT;
    }
    return status;
}

} // namespace

subcommand select_subcommand() {
    auto options = std::make_shared<select_options>();
    return {
        "select",
        "Tell event types, data type, speed and class of channels",
        "All channels are listed that pass every test given. Answers go by name: channels of the same name\n"
        "get those of the first. SUB is the number of sub-channels; - stands for no answer.\n",
        {
            {"FILE", &options->files, "Channel descriptions; - is standard input", argument::REQUIRED},
            {"--event",
             &options->event,
             "Only channels of this event type, by name (ENV) or number (4)",
             argument::OPTIONAL,
             {},
             event_type_fault},
            {"--block",
             &options->block,
             "Only channels with data of this block type, by name (BLOCK_BPM) or number (6)",
             argument::OPTIONAL,
             {},
             block_type_fault},
            {"--slow", &options->slow, "Only slow channels: event type BOR, EOR, ENV or UPD"},
            {"--ml", &options->ml, "Only channels of the ML class"},
            {"--channel", &options->channel, "Only the channel with this name or property"},
            {"--tabs", &options->tabs, "Separate columns by tabs, for programs"},
        },
        [options] { return select_channels(*options); },
        {{"The slow channels of a master file, for a script", "zeb5xml select --slow --tabs channels.xml"},
         {"Channels that send beam positions", "zeb5xml select --block BLOCK_BPM channels.xml"}},
        {std::string(document_status) + ", or no channel has the name asked for"}};
}
