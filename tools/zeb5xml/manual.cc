#include <ctime>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "files/failure.h"
#include "files/output.h"
#include "subcommands.h"
#include "words/words.h"

namespace {

std::string escaped(const std::string &text) {
    std::string result;
    for (const char c : text)
        result += c == '\\' ? "\\e" : std::string(1, c);
    return result;
}

/// Words as arguments or at the begin of a line, where some characters begin a request.
std::string plain(const std::string &text) {
    const bool is_request = !text.empty() && (text[0] == '.' || text[0] == '\'');
    return (is_request ? "\\&" : "") + escaped(text);
}

/// As it is typed: hyphens that can be copied, and no other quotes.
std::string literal(const std::string &text) {
    std::string result;
    for (const char c : plain(text))
        result += c == '-'    ? "\\-"
                  : c == '\'' ? "\\(aq"
                  : c == '`'  ? "\\(ga"
                  : c == '~'  ? "\\(ti"
                  : c == '^'  ? "\\(ha"
                              : std::string(1, c);
    return result;
}

/// Paragraph text in short lines. Each sentence begins one, so that it is spaced as a sentence; options are
/// not broken at their hyphens.
std::string filled(const std::string &text) {
    std::string page, line;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const bool is_option = word.compare(0, 2, "--") == 0;
        word = is_option ? literal(word) : line.empty() ? plain(word) : escaped(word);
        if (line.size() + word.size() > 78 || (!line.empty() && line.back() == '.')) {
            page += line + "\n";
            line.clear();
        }
        line.append(line.empty() ? "" : " ").append(word);
    }
    return page + line + "\n";
}

/// Lines of help: indented ones are shown as they are, the others make paragraphs, and an empty one ends a
/// paragraph.
std::string paragraphs(const std::string &lines) {
    std::string text;
    bool is_literal = false, is_begin = true;
    std::istringstream all(lines);
    for (std::string line; std::getline(all, line);) {
        const bool is_indented = line.compare(0, 2, "  ") == 0;
        if (is_literal && !is_indented)
            text += ".Ed\n";
        if (is_indented && !is_literal)
            text += ".Bd -literal -offset indent\n";
        else if (!is_indented && (is_begin || is_literal))
            text += ".Pp\n";
        is_begin = line.empty();
        is_literal = is_indented;
        if (!is_begin)
            text += is_indented ? literal(line.substr(2)) + "\n" : filled(line);
    }
    return text + (is_literal ? ".Ed\n" : "");
}

/// The argument with macros: `Fl o , Fl -output Ar FILE`.
std::string argument_macros(const argument &row, const char *between) {
    if (!is_option(row))
        return "Ar " + plain(row.names);
    std::vector<std::string> flags;
    for (const std::string &name : names_apart(row))
        flags.push_back("Fl " + plain(name.substr(1)));
    return joined(flags, between) + (is_flag(row) ? "" : std::string(" Ar ") + value_name(row));
}

std::string synopsis(const subcommand &one) {
    std::string text = std::string(".Nm\n.Cm ") + one.name + "\n";
    for (const argument &row : one.arguments) {
        const bool is_list = std::holds_alternative<std::vector<std::string> *>(row.target);
        text += (row.need == argument::REQUIRED ? "." : ".Op ") + argument_macros(row, " | ") +
                (is_list ? " ...\n" : "\n");
    }
    return text;
}

std::string arguments_of(const subcommand &one) {
    std::string text = ".Bl -tag -width indent\n";
    for (const argument &row : one.arguments) {
        text += ".It " + argument_macros(row, " , ") + "\n" + filled(row.help + std::string("."));
        if (!row.words.empty())
            text += "One of " + plain(joined(row.words, ", ")) + ".\n";
    }
    return one.arguments.empty() ? "" : text + ".El\n";
}

std::string examples_of(const subcommand &one) {
    std::string text;
    for (const example &row : one.examples)
        text += ".Pp\n" + filled(row.purpose + std::string(":")) + ".Dl " + literal(row.line) + "\n";
    return text;
}

/// Day of the page: that of the build, or SOURCE_DATE_EPOCH, so that a build can be reproduced.
std::string day() {
    const char *epoch = getenv("SOURCE_DATE_EPOCH");
    const time_t now = epoch && *epoch ? static_cast<time_t>(strtoll(epoch, nullptr, 10)) : time(nullptr);
    static const char *const months[] = {"January",   "February", "March",    "April",
                                         "May",       "June",     "July",     "August",
                                         "September", "October",  "November", "December"};
    tm parts{};
    gmtime_r(&now, &parts);
    return std::string(months[parts.tm_mon]) + " " + std::to_string(parts.tm_mday) + ", " +
           std::to_string(parts.tm_year + 1900);
}

const char description[] = R"(.Sh DESCRIPTION
The root element tells what a document is:
.Bl -column "CHANDESCRIPTIONS, DAQvariables" "channel descriptions"
.It Em Root Ta Em Document
.It CHANDESCRIPTIONS, DAQvariables Ta channel descriptions
.It BMR Ta event list
.It ENVINDEXDICT Ta env index dictionary
.It any other, with a camera feature inside Ta camera file
.El
.Pp
A
.Ar FILE
named
.Sq -
is standard input.
Documents of every kind and encoding can come from it and from pipes.
Data goes to standard output, or to the file given with
.Fl o .
A regular file is replaced by a complete new one, which is written beside it
and then moved there.
An existing device or pipe is written to directly; a symbolic link is followed.
.Pp
Reports of the library and its parser go to standard error, with the name
of the document.
They are the data of
.Cm check ,
which writes them to standard output.
.Pp
Types are given by number or by name, in any case, with or without the prefix
ZEB5_EV_ or ZEB5_.
)";

const char notes[] = R"(.Sh NOTES
XML is written without escaping and in ISO-8859-1: a value that holds & or <
makes the document ill-formed, and a character that this encoding has not comes
back as several others.
.Cm convert
and
.Cm merge
refuse to write these.
.Pp
A signal that ends the command (HUP, INT, TERM) removes the file that is being
written; the old one stays as it was.
)";

std::string status_list(const status_texts &texts) {
    std::string text = ".Bl -tag -width Ds -compact\n";
    for (const std::string &line : status_lines(texts))
        text += ".It " + line.substr(0, 1) + "\n" + filled(line.substr(3) + ".");
    return text + ".El\n";
}

int write_page() {
    const std::vector<subcommand> all = all_subcommands();
    std::string page = ".Dd " + day() +
                       "\n.Dt ZEB5XML 1\n.Os\n.Sh NAME\n.Nm zeb5xml\n"
                       ".Nd read, list, convert and check the XML documents of the data acquisition\n"
                       ".Sh SYNOPSIS\n";
    for (const subcommand &one : all)
        page += synopsis(one);
    page += ".Nm\n.Fl -help | Fl -version\n";
    page += description;
    page += ".Sh SUBCOMMANDS\n";
    for (const subcommand &one : all)
        page += std::string(".Ss ") + one.name + "\n" + filled(one.summary + std::string(".")) +
                paragraphs(one.details) + arguments_of(one) + ".Pp\nExit status:\n" +
                status_list(one.statuses) + examples_of(one);
    page += ".Sh ENVIRONMENT\n.Bl -tag -width NO_COLOR\n"
            ".It Ev NO_COLOR\nAny text turns colours off, unless\n.Fl -color Cm always\nasks for them.\n"
            ".It Ev TMPDIR\nFolder for what comes from a pipe and is read more than once; /tmp if not "
            "set.\n.El\n";
    page += ".Sh EXIT STATUS\n" + status_list(all_statuses) + ".Pp\n" + filled(pipe_help);
    write_standard_output(page + notes);
    return STATUS_DONE;
}

} // namespace

subcommand manual_subcommand() {
    return {"manual",
            "Write the manual page of this command",
            "It is in the mdoc language, and installed copies have it as zeb5xml(1).\n",
            {},
            write_page,
            {{"Read it without installing", "zeb5xml manual | man -l -"}},
            status_texts{}};
}
