#include <exception>

#include "command_line/command_line.h"
#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "subcommands.h"
#include "xml_platform.h"

namespace {

int run(int argc, char **argv) {
    const std::vector<subcommand> subcommands = all_subcommands();
    int status = STATUS_DONE;
    const subcommand *chosen = chosen_subcommand(subcommands, argc, argv, status);
    if (!chosen)
        return status;
    xml_platform platform; // held here, so that readers need not start and stop it
    return chosen->run();
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
