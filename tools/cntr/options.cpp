// Options that several subcommands share.
#include "options.h"

#include <algorithm>
#include <map>

namespace qnTool {

namespace {

void addFormat(CLI::App& command, std::string const& name, InputOptions::Format& format,
               std::string const& text)
{
    auto const take = [&format, name](std::string const& word) {
        static std::map<std::string, InputOptions::Format> const formats{
            {"wkt", InputOptions::eWkt},
            {"csv", InputOptions::eCsv},
            {"archive", InputOptions::eArchive}};
        auto const found = formats.find(CLI::ignore_case(word));
        if (found == formats.end())
            throw CLI::ValidationError(name, "wkt, csv or archive, not '" + word + "'");
        format = found->second;
    };
    command.add_option_function<std::string>(name, take, text)->type_name("wkt|csv|archive");
}

void addPrecision(CLI::App& command, std::optional<int>& precision)
{
    command
        .add_option("--precision", precision, "Digits after the point (else as many as it takes)")
        ->check(CLI::Range(0, 100).description(""))
        ->type_name("N");
}

}  // namespace

void addInput(CLI::App& command, InputOptions& options, HowMany howMany)
{
    char const* const text = "Outlines: WKT, CSV or an archive; - reads the input";
    auto const only = [&options](std::string const& file) { options.files = {file}; };
    auto* const option = howMany == eOneFile
                             ? command.add_option_function<std::string>("FILE", only, text)
                             : command.add_option("FILE", options.files, text);
    option->required()->type_name("");
    addFormat(command, "--format", options.format, "Format of the input (else by its content)");
    command.add_flag("--closed", options.closed, "Take every outline of a text as closed");
}

void addReport(CLI::App& command, ReportOptions& options)
{
    command.add_flag("--json", options.json, "Print JSON");
    addPrecision(command, options.precision);
}

void addOutput(CLI::App& command, OutputOptions& options)
{
    command.add_option("-o,--output", options.file, "Where the outlines go (standard output)")
        ->type_name("OUT");
    addFormat(command, "--to", options.format, "Format of the output (else by the name of OUT)");
    addPrecision(command, options.precision);
}

void addPicture(CLI::App& command, PictureOptions& options)
{
    command.add_option("--svg", options.file, "Draw what was found")->type_name("OUT.svg");
    command.add_flag("--y-down", options.yDown, "In the picture y points down");
}

void checkFiles(std::vector<std::string> const& inputs, std::string const& output,
                PictureOptions const& picture)
{
    if (std::count(inputs.begin(), inputs.end(), "-") > 1)
        throw CommandError(eUsage, "-: standard input can be read once");
    if (picture.file.empty())
        return;
    if (isAmong(picture.file, inputs))
        throw CommandError(eUsage, "--svg " + picture.file + ": this is an input");
    if (sameFile(picture.file, output))
        throw CommandError(eUsage, "--svg " + picture.file + ": the result goes there");
}

}  // namespace qnTool
