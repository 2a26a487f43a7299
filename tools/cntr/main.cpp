// The command cntr: its subcommands and the status it ends with.
#include "commands.h"
#include "session.h"

#include <CLI/CLI.hpp>

#include <cntr/config.h>

#include <csignal>
#include <iostream>

namespace {

char const* const kFooter =
    "Exit status: 0 done; 2 usage; 3 input unreadable or malformed; 4 a geometry error;\n"
    "5 a limit was exceeded; 6 output failed. Of several the largest; whatever is good is\n"
    "still worked on.";

/// An argument that nothing takes comes first: it may be why another is missing.
std::string usageText(CLI::App const* app, CLI::Error const& error)
{
    auto const left = app->remaining(true);
    std::string text = error.what();
    if (!left.empty() && left[0].size() > 1 && left[0][0] == '-')
        text = "there is no option '" + left[0] + "'";
    else if (!left.empty() && app->get_subcommands().empty())
        text = "there is no subcommand '" + left[0] + "'";
    else if (!left.empty())
        text = "one argument too many: '" + left[0] + "'";
    return "cntr: " + text + "\nRun with --help for more information.\n";
}

int run(CLI::App& app, qnTool::Session& session, int argc, char** argv)
{
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        bool const help = error.get_exit_code() == 0;
        int const status = app.exit(error, std::cout, std::cerr);
        if (!std::cout.flush())
            session.fail(qnTool::eOutputLost, "standard output: cannot be written");
        return status == 0 && help ? session.status() : qnTool::eUsage;
    } catch (std::bad_alloc const&) {
        session.fail(qnTool::eOverLimit, "out of memory");
    } catch (std::exception const& error) {
        session.fail(qnTool::eGeometry, error.what());
    }
    return session.status();
}

}  // namespace

int main(int argc, char** argv)
{
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is an output error like any other,
    std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that may not grow
    CLI::App app("Measures, locates, cleans and merges outlines and regions.", "cntr");
    app.set_version_flag("--version", "cntr " + std::to_string(CNTR_VERSION_MAJOR) + "." +
                                          std::to_string(CNTR_VERSION_MINOR) + "." +
                                          std::to_string(CNTR_VERSION_PATCH));
    app.require_subcommand(1);
    app.footer(kFooter);
    app.failure_message(usageText);
    qnTool::Session session;
    qnTool::addMeasure(app, session);
    qnTool::addLocate(app, session);
    qnTool::addClean(app, session);
    qnTool::addHull(app, session);
    qnTool::addCross(app, session);
    qnTool::addMerge(app, session);
    qnTool::addConvert(app, session);
    qnTool::addArchive(app, session);
    return run(app, session, argc, argv);
}
