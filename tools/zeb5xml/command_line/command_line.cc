#include "command_line/command_line.h"

#include <map>
#include <sstream>

#include <CLI/CLI.hpp>

#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "words/nearest.h"
#include "words/words.h"

namespace {

const char description[] = R"(Reads, lists and converts the XML documents of the data acquisition.
Kinds of document are known by their root element: CHANDESCRIPTIONS, DAQvariables, BMR, ENVINDEXDICT;
any other that holds a camera feature is a camera file. A file named - is standard input.)";

/// Accepts only the words of an argument.
CLI::Validator one_of(const std::vector<std::string> &words) {
    return CLI::Validator(
        [words](const std::string &text) {
            for (const std::string &word : words)
                if (text == word)
                    return std::string();
            return "'" + text + "' is none of " + joined(words, ", ") + did_you_mean(text, words);
        },
        "");
}

void declare(CLI::App &app, const argument &row) {
    CLI::Option *option = std::visit(
        [&](auto *target) {
            if constexpr (std::is_same_v<decltype(target), bool *>)
                return app.add_flag(row.names, *target, row.help);
            else
                return app.add_option(row.names, *target, row.help);
        },
        row.target);
    if (row.need == argument::REQUIRED)
        option->required();
    if (!row.words.empty())
        option->check(one_of(row.words));
    if (row.refusal)
        option->check(CLI::Validator(row.refusal, ""));
    if (is_option(row) && !is_flag(row))
        option->type_name(value_name(row));
}

/// What stands below the arguments in the help of a subcommand.
std::string footer_of(const subcommand &row) {
    std::string text = row.details;
    if (!row.examples.empty())
        text.append(text.empty() ? "" : "\n").append("Examples:\n");
    for (const example &one : row.examples)
        text.append("  ").append(one.line).append("\n      ").append(one.purpose).append("\n");
    return text + (text.empty() ? "" : "\n") + status_help(row.statuses);
}

/// Names of everything that could stand where `text` does: options when it begins with a dash, else
/// subcommands.
std::vector<std::string> possible_names(const CLI::App &app, const std::string &text) {
    std::vector<std::string> names;
    if (text.compare(0, 1, "-") != 0) {
        for (const CLI::App *sub : app.get_subcommands({}))
            names.push_back(sub->get_name());
        return names;
    }
    const std::vector<CLI::App *> parsed = app.get_subcommands();
    for (const CLI::Option *option : (parsed.empty() ? app : *parsed.front()).get_options())
        for (const std::string &name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// Says what is wrong. The first word that fits nowhere is named, with the nearest one that would.
std::string complaint(const CLI::App &app, const CLI::ParseError &error, const std::string &unknown) {
    if (unknown.empty())
        return error.what();
    const char *kind = unknown[0] == '-' ? "unknown option: " : "unknown subcommand: ";
    return kind + unknown + did_you_mean(unknown.substr(0, unknown.find('=')), possible_names(app, unknown));
}

std::string first_unknown(const CLI::App &app, const std::vector<std::string> &words) {
    const std::vector<std::string> left = app.remaining(true);
    if (!left.empty())
        return left.front();
    return app.get_subcommands().empty() && !words.empty() ? words.front() : std::string();
}

/// Prints help and version to standard output; anything else is a wrong command line.
int answer(const CLI::App &app, const CLI::ParseError &error, const std::vector<std::string> &words) {
    std::ostringstream out, err;
    if (app.exit(error, out, err) == 0) {
        write_standard_output(out.str());
        return STATUS_DONE;
    }
    const std::vector<CLI::App *> parsed = app.get_subcommands();
    const std::string of = parsed.empty() ? "" : parsed.front()->get_name() + " ";
    tell(complaint(app, error, first_unknown(app, words)) + "\nTry: zeb5xml " + of + "--help");
    return STATUS_USAGE;
}

} // namespace

const subcommand *chosen_subcommand(const std::vector<subcommand> &subcommands, int argc, char **argv,
                                    int &status) {
    CLI::App app(description, "zeb5xml");
    app.footer(status_help(all_statuses));
    app.set_version_flag("--version", "zeb5xml " ZEB5XML_VERSION);
    app.require_subcommand(1);
    const subcommand *chosen = nullptr;
    for (const subcommand &row : subcommands) {
        CLI::App *sub = app.add_subcommand(row.name, row.summary);
        for (const argument &one : row.arguments)
            declare(*sub, one);
        sub->footer(footer_of(row));
        sub->callback([&chosen, &row] { chosen = &row; });
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        status = answer(app, error, std::vector<std::string>(argv + 1, argv + argc));
        return nullptr;
    }
    return chosen;
}
