// cntr convert: outlines from one format to another.
#include "commands.h"
#include "options.h"

#include <memory>

namespace qnTool {

namespace {

struct Options {
    InputOptions input;
    OutputOptions output;
};

void convert(Session& session, Options const& options)
{
    outputFormat(options.output);
    auto const shapes = loadShapes(session, options.input);
    if (shapes.empty())
        return;  // why has been said
    saveShapes(session, shapes, options.input.files, options.output);
}

}  // namespace

void addConvert(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("convert", "Convert between WKT, CSV and archives");
    addInput(command, options->input, eOneFile);
    addOutput(command, options->output);
    command.remove_option(command.get_option("--output"));
    command.add_option("OUT", options->output.file, "Where the outlines go; - for the output")
        ->required()
        ->type_name("");
    whenChosen(command, session, [options, &session] { convert(session, *options); });
}

}  // namespace qnTool
