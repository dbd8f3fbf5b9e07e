#include <memory>
#include <string>
#include <vector>

#include "files/failure.h"
#include "files/output.h"
#include "subcommands.h"
#include "words/words.h"

namespace {

using texts = std::vector<std::string>;

/// What a shell may put at any place behind the subcommand: options, and words known by their position.
texts loose_words(const subcommand &one) {
    texts words;
    for (const argument &row : one.arguments) {
        const texts more = is_option(row) ? names_apart(row) : row.words;
        words.insert(words.end(), more.begin(), more.end());
    }
    words.push_back("--help");
    return words;
}

bool takes_files_by_position(const subcommand &one) {
    for (const argument &row : one.arguments)
        if (!is_option(row) && takes_file(row))
            return true;
    return false;
}

/// The text in single quotes of a shell; `escaped` characters get a backslash.
std::string quoted(const std::string &text, const std::string &escaped, const std::string &quote) {
    std::string result = "'";
    for (const char c : text)
        if (c == '\'')
            result += quote;
        else
            result.append(escaped.find(c) != std::string::npos ? "\\" : "") += c;
    return result + "'";
}

// bash

/// The branches of a case: what comes behind each option that has a value, by subcommand and option.
std::string bash_values(const subcommand &one) {
    std::string text;
    for (const argument &row : one.arguments) {
        if (!is_option(row) || is_flag(row))
            continue;
        texts patterns;
        for (const std::string &name : names_apart(row))
            patterns.push_back("'" + std::string(one.name) + " " + name + "'");
        text += "    " + joined(patterns, " | ") + ") " +
                (takes_file(row)     ? "files=1 "
                 : row.words.empty() ? ""
                                     : "words='" + joined(row.words, " ") + "' ") +
                ";;\n";
    }
    return text;
}

std::string bash_script(const std::vector<subcommand> &all) {
    texts names;
    std::string values, places;
    for (const subcommand &one : all) {
        names.push_back(one.name);
        values += bash_values(one);
        places += "    '" + std::string(one.name) + " '*) words='" + joined(loose_words(one), " ") + "' " +
                  (takes_files_by_position(one) ? "files=1 " : "") + ";;\n";
    }
    return "# Completion of zeb5xml for bash\n"
           "_zeb5xml() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words='' files=''\n"
           "    case \"$word $before\" in # --option=value comes as three words\n"
           "    '= '*) word='' ;;\n"
           "    *' =') before=${COMP_WORDS[COMP_CWORD - 2]} ;;\n"
           "    esac\n"
           "    COMPREPLY=()\n"
           "    [ \"$COMP_CWORD\" -gt 1 ] || before=''\n"
           "    case \"${COMP_WORDS[1]} $before\" in\n"
           "    *' ') words='" +
           joined(names, " ") + " --help --version' ;;\n" + values + places +
           "    esac\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
           "    if [ \"$files\" ] && [ \"${word#-}\" = \"$word\" ]; then\n"
           "        compopt -o filenames 2>/dev/null\n"
           "        local IFS=$'\\n'\n"
           "        COMPREPLY+=($(compgen -f -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -F _zeb5xml zeb5xml\n";
}

// zsh

std::string zsh_quoted(const std::string &text) { return quoted(text, "\\[]:", "'\\''"); }

/// What _arguments is told about the value of an argument.
std::string zsh_value(const argument &row) {
    const std::string action = takes_file(row)     ? "_files"
                               : row.words.empty() ? " "
                                                   : "(" + joined(row.words, " ") + ")";
    return std::string(":") + (is_option(row) ? value_name(row) : row.names) + ":" + action;
}

std::string zsh_argument(const argument &row) {
    const bool is_list = std::holds_alternative<texts *>(row.target);
    if (!is_option(row))
        return std::string("'") + (is_list ? "*" : "") + zsh_value(row) + "'";
    const texts names = names_apart(row);
    const std::string help = zsh_quoted(row.help);
    return (names.size() > 1 ? "'(" + joined(names, " ") + ")'{" + joined(names, ",") + "}'"
                             : "'" + names.front()) +
           "[" + help.substr(1, help.size() - 2) + "]" + (is_flag(row) ? "" : zsh_value(row)) + "'";
}

std::string zsh_script(const std::vector<subcommand> &all) {
    std::string names, places;
    for (const subcommand &one : all) {
        const std::string summary = zsh_quoted(one.summary);
        names += std::string("            '") + one.name + ":" + summary.substr(1) + "\n";
        places += std::string("    ") + one.name + ") _arguments";
        for (const argument &row : one.arguments)
            places += " \\\n        " + zsh_argument(row);
        places += " \\\n        '--help[Print help]' ;;\n";
    }
    return "#compdef zeb5xml\n"
           "# Completion of zeb5xml for zsh\n"
           "_zeb5xml() {\n"
           "    if (( CURRENT == 2 )); then\n"
           "        local -a subcommands=(\n" +
           names +
           "        )\n"
           "        _describe subcommand subcommands\n"
           "        _arguments '--help[Print help]' '--version[Print the version]'\n"
           "        return\n"
           "    fi\n"
           "    shift words\n"
           "    (( CURRENT-- ))\n"
           "    case $words[1] in\n" +
           places +
           "    esac\n"
           "}\n"
           "if [ \"$funcstack[1]\" = _zeb5xml ]; then # loaded by its first use\n"
           "    _zeb5xml \"$@\"\n"
           "else\n"
           "    compdef _zeb5xml zeb5xml\n"
           "fi\n";
}

// fish

std::string fish_quoted(const std::string &text) { return quoted(text, "\\", "\\'"); }

std::string fish_line(const subcommand &one, const std::string &rest) {
    return std::string("complete -c zeb5xml -n '__fish_seen_subcommand_from ") + one.name + "' " + rest +
           "\n";
}

std::string fish_argument(const subcommand &one, const argument &row) {
    const std::string values = takes_file(row)     ? " -r -F"
                               : row.words.empty() ? " -x"
                                                   : " -x -a '" + joined(row.words, " ") + "'";
    if (!is_option(row))
        return takes_file(row) ? fish_line(one, "-F") : fish_line(one, "-a '" + joined(row.words, " ") + "'");
    std::string names;
    for (const std::string &name : names_apart(row))
        names += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
    return fish_line(one, names.substr(1) + (is_flag(row) ? "" : values) + " -d " + fish_quoted(row.help));
}

std::string fish_script(const std::vector<subcommand> &all) {
    std::string text = "# Completion of zeb5xml for fish\n"
                       "complete -c zeb5xml -f\n"
                       "complete -c zeb5xml -n __fish_use_subcommand -l version -d 'Print the version'\n"
                       "complete -c zeb5xml -s h -l help -d 'Print help'\n";
    for (const subcommand &one : all)
        text += std::string("complete -c zeb5xml -n __fish_use_subcommand -a ") + one.name + " -d " +
                fish_quoted(one.summary) + "\n";
    for (const subcommand &one : all)
        for (const argument &row : one.arguments)
            text += fish_argument(one, row);
    return text;
}

struct shell {
    const char *name;
    std::string (*script)(const std::vector<subcommand> &all);
};
const shell shells[] = {{"bash", bash_script}, {"zsh", zsh_script}, {"fish", fish_script}};

int complete(const std::string &name) {
    const shell *chosen = shells;
    while (name != chosen->name)
        ++chosen;
    write_standard_output(chosen->script(all_subcommands()));
    return STATUS_DONE;
}

} // namespace

subcommand completion_subcommand() {
    auto name = std::make_shared<std::string>();
    texts names;
    for (const shell &one : shells)
        names.push_back(one.name);
    return {"completion",
            "Write what makes a shell complete the command's words",
            "Installed copies have these scripts where the shells look for them.\n",
            {{"SHELL", name.get(), "bash, zsh or fish", argument::REQUIRED, names}},
            [name] { return complete(*name); },
            {{"For all sessions of fish, without installing",
              "zeb5xml completion fish > ~/.config/fish/completions/zeb5xml.fish"},
             {"For this session of bash", "source <(zeb5xml completion bash)"}},
            status_texts{}};
}
