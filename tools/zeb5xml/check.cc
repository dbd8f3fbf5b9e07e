#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "check/check_output.h"
#include "command_line/colour.h"
#include "files/bounded_file.h"
#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "subcommands.h"
#include "words/nearest.h"
#include "words/words.h"

namespace {

struct check_options {
    std::vector<std::string> files;
    std::string format = "text";
    std::string select;
    std::string ignore;
    std::string color = "auto";
    bool strict = false;
    bool rules = false;
};

std::vector<std::string> words_of(const std::string &list) {
    std::vector<std::string> words;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find(',', at), list.size());
        words.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return words;
}

bool holds(const std::string &list, const std::string &word) {
    const std::vector<std::string> words = words_of(list);
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Returns why a list of rules is refused.
std::string unknown_rule(const std::string &list) {
    const std::vector<std::string> names = rule_names();
    for (const std::string &word : words_of(list))
        if (word.empty())
            return "the name of a rule is missing";
        else if (std::find(names.begin(), names.end(), word) == names.end())
            return "no such rule: " + word + did_you_mean(word, names);
    return "";
}

checked_file check_file(const std::string &path) {
    constexpr std::size_t most_bytes = std::size_t{128} << 20;
    checked_file file{path == "-" ? "standard input" : path, {}};
    std::string bytes;
    const std::string problem = read_bounded(path, most_bytes, bytes);
    if (problem.empty())
        file.findings = check_document(bytes);
    else
        file.findings.push_back({{}, rule::UNREADABLE, problem});
    return file;
}

/// What was found in all files, by severity.
class finding_count {
public:
    void add(const checked_file &file) {
        ++files_;
        for (const placed_finding &one : file.findings) {
            ++counts_[static_cast<std::size_t>(row_of(one.id).level)];
            is_unreadable_ = is_unreadable_ || one.id == rule::UNREADABLE;
        }
    }

    int status(bool strict) const {
        if (is_unreadable_)
            return STATUS_USAGE;
        const std::size_t failing = faults() + warnings() + (strict ? notes() : 0);
        return failing != 0 ? STATUS_DOCUMENT : STATUS_DONE;
    }

    std::string summary() const {
        const std::string checked = counted(files_, "files") + " checked: ";
        if (faults() + warnings() + notes() == 0)
            return checked + "nothing found";
        return checked + counted(faults(), "errors") + ", " + counted(warnings(), "warnings") + ", " +
               counted(notes(), "notes");
    }

private:
    std::size_t faults() const { return counts_[static_cast<std::size_t>(severity::FAULT)]; }
    std::size_t warnings() const { return counts_[static_cast<std::size_t>(severity::WARNING)]; }
    std::size_t notes() const { return counts_[static_cast<std::size_t>(severity::NOTE)]; }

    std::size_t files_ = 0;
    std::size_t counts_[3] = {};
    bool is_unreadable_ = false;
};

int check(const check_options &options) {
    if (options.rules) {
        write_standard_output(rule_list());
        return STATUS_DONE;
    }
    if (options.files.empty())
        throw failure(STATUS_USAGE, "FILE is required\nTry: zeb5xml check --help");
    const auto is_unwanted = [&options](const placed_finding &one) {
        const std::string name = row_of(one.id).name;
        return one.id != rule::UNREADABLE && ((!options.select.empty() && !holds(options.select, name)) ||
                                              (!options.ignore.empty() && holds(options.ignore, name)));
    };
    const painter paint(options.color);
    finding_count count;
    std::vector<checked_file> all; // for JSON, which is written in the end
    for (const std::string &path : options.files) {
        checked_file file = check_file(path);
        auto &findings = file.findings;
        findings.erase(std::remove_if(findings.begin(), findings.end(), is_unwanted), findings.end());
        count.add(file);
        if (options.format == "json")
            all.push_back(std::move(file));
        else
            write_standard_output(options.format == "github" ? as_github(file) : as_text(file, paint));
    }
    if (options.format == "json")
        write_standard_output(as_json(all));
    if (options.format == "text")
        tell(count.summary());
    return count.status(options.strict);
}

} // namespace

subcommand check_subcommand() {
    auto options = std::make_shared<check_options>();
    return {
        "check",
        "Tell what a process that reads the documents would swallow",
        R"(Prints a line for each finding: FILE:LINE:COL: error|warning|note: MESSAGE [RULE]. The last line, on
standard error, sums up; json and github have none. Documents are taken as the readers of files read them, with types as masks.
)",
        {
            {"FILE", &options->files, "Documents of any kind; - is standard input"},
            {"--format",
             &options->format,
             "How findings are printed (default: text)",
             argument::OPTIONAL,
             {"text", "json", "github"}},
            {"--select",
             &options->select,
             "Only these rules, separated by commas",
             argument::OPTIONAL,
             {},
             unknown_rule},
            {"--ignore",
             &options->ignore,
             "All rules but these, separated by commas",
             argument::OPTIONAL,
             {},
             unknown_rule},
            {"--strict", &options->strict, "Notes give exit status 1, too"},
            {"--rules", &options->rules, "List the rules, each with an example"},
            color_argument(options->color),
        },
        [options] { return check(*options); },
        {{"Before a document goes into operation", "zeb5xml check channels.xml events.xml"},
         {"What is looked for", "zeb5xml check --rules"},
         {"All rules but one", "zeb5xml check --ignore padded-value channels.xml"}},
        {"errors or warnings were found (with --strict, notes, too)", "nothing was found but notes",
         "wrong command line, or a file could not be checked"}};
}
