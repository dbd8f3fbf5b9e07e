#include <cerrno>
#include <cstdio>
#include <sstream>

#include "command.h"
#include "failure.h"
#include "output.h"
#include "standard_streams.h"
#include "xml_platform.h"

namespace {

struct command {
    const char *name;
    const char *summary;
    command_action (*declare)(CLI::App &app);
};

const command commands[] = {
    {"show", "List the records of documents of any kind", declare_show},
    {"convert", "Write channel descriptions or an env index dictionary in another form", declare_convert},
    {"select", "Tell event types, data type, speed and class of channels", declare_select},
    {"check", "Tell what a process that reads the documents would miss", declare_check},
};

/// Prints help and version to standard output; anything else is a wrong command line.
int answer_parser(const CLI::App &app, const CLI::ParseError &error) {
    std::ostringstream out, err;
    if (app.exit(error, out, err) == 0) {
        write_standard_output(out.str());
        return STATUS_DONE;
    }
    tell(std::string(error.what()) + "\nTry: zeb5xml --help");
    return STATUS_USAGE;
}

int run(int argc, char **argv) {
    CLI::App app("Reads, lists and converts the XML documents of the data acquisition.\n"
                 "Kinds of document are known by their root element: CHANDESCRIPTIONS, DAQvariables, BMR, "
                 "ENVINDEXDICT;\n"
                 "any other that holds a camera feature is a camera file. A file named - is standard input.",
                 "zeb5xml");
    app.footer(EXIT_STATUS_HELP);
    app.set_version_flag("--version", "zeb5xml " ZEB5XML_VERSION);
    app.require_subcommand(1);
    command_action chosen;
    for (const command &row : commands) {
        CLI::App *sub = app.add_subcommand(row.name, row.summary);
        sub->callback([&chosen, action = row.declare(*sub)] { chosen = action; });
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return answer_parser(app, error);
    }
    xml_platform platform; // held here, so that readers need not start and stop it
    return chosen();
}

} // namespace

int main(int argc, char **argv) {
    int status;
    try {
        occupy_standard_descriptors();
        status = run(argc, argv);
        close_standard_output();
    } catch (const closed_pipe &) {
        status = STATUS_OUTPUT; // only when SIGPIPE is ignored; otherwise the signal ends the command
    } catch (const failure &problem) {
        tell(problem.what());
        status = problem.status();
    } catch (const std::exception &problem) {
        tell(problem.what());
        status = STATUS_OUTPUT;
    } catch (...) { // what the XML library throws is not derived from std::exception
        tell("the XML library failed: out of memory, or its start was refused");
        status = STATUS_OUTPUT;
    }
    return status;
}
