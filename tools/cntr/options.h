/// Options that several subcommands share.
#pragma once

#include "files.h"
#include "picture.h"
#include "report.h"
#include "save.h"
#include "shapes.h"

#include <CLI/CLI.hpp>

namespace qnTool {

enum HowMany { eOneFile, eAnyFiles };

/// FILE, --format and --closed.
void addInput(CLI::App& command, InputOptions& options, HowMany howMany);
/// --json and --precision.
void addReport(CLI::App& command, ReportOptions& options);
/// --output, --to and --precision.
void addOutput(CLI::App& command, OutputOptions& options);
/// --svg and --y-down.
void addPicture(CLI::App& command, PictureOptions& options);

/// Refuses standard input read twice, and a picture that would replace an input or the output.
/// Throws CommandError eUsage.
void checkFiles(std::vector<std::string> const& inputs, std::string const& output,
                PictureOptions const& picture);

/// Runs `work` when the subcommand is chosen; what the work cannot go on from is reported.
template <class Work>
void whenChosen(CLI::App& command, Session& session, Work work)
{
    command.callback([&session, work] {
        try {
            work();
        } catch (CommandError const& error) {
            session.fail(error.status(), error.what());
        }
    });
}

}  // namespace qnTool
