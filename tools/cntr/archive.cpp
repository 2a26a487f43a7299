// cntr archive: the tree of records in an archive.
#include "archive_tree.h"
#include "commands.h"
#include "options.h"
#include "session.h"

namespace qnTool {

namespace {

struct Options {
    std::string file;
    bool json = false;
};

std::string line(ArchiveNode const& node)
{
    std::string text(2 * node.depth, ' ');
    if (!node.role.empty())
        text += node.role + ": ";
    if (node.className.empty())
        text += node.complete ? "null" : "unreadable";
    else if (node.reference)
        text += "see object " + std::to_string(node.object) + ", " + node.className;
    else
        text += "object " + std::to_string(node.object) + ", " + node.className + " [" +
                node.versions + "]";
    for (auto const& count : node.counts)
        text += ", " + counted(count.second, count.first.substr(0, count.first.size() - 1));
    return text + ", " + std::to_string(node.size) + " bytes at " + std::to_string(node.offset) +
           (node.complete ? "\n" : ", incomplete\n");
}

Row row(ArchiveNode const& node)
{
    Row result;
    result["depth"] = node.depth;
    result["role"] = node.role.empty() ? Row() : Row(node.role);
    result["offset"] = node.offset;
    result["size"] = node.size;
    result["object"] = node.object > 0 ? Row(node.object) : Row();
    result["reference"] = node.reference;
    result["complete"] = node.complete;
    result["class"] = node.className.empty() ? Row() : Row(node.className);
    result["versions"] = node.versions.empty() ? Row() : Row(node.versions);
    result["counts"] = Row::object();
    for (auto const& count : node.counts)
        result["counts"][count.first] = count.second;
    return result;
}

void archive(Session& session, Options const& options)
{
    auto const tree = readArchiveTree(readBytes(options.file), Limits::kRecords);
    std::string text;
    std::vector<Row> rows;
    for (auto const& node : tree.nodes) {
        if (options.json)
            rows.push_back(row(node));
        else
            text += line(node);
    }
    if (tree.status != eDone)
        session.fail(tree.status, options.file + ": " + tree.fault);
    writeWhole("-", options.json ? reportText("records", rows, {true, {}}) : text);
}

}  // namespace

void addArchive(CLI::App& app, Session& session)
{
    auto const options = std::make_shared<Options>();
    auto& command = *app.add_subcommand("archive", "Show the records of an archive");
    command.add_option("FILE", options->file, "The archive; - reads the input")
        ->required()
        ->type_name("");
    command.add_flag("--json", options->json, "Print JSON");
    whenChosen(command, session, [options, &session] { archive(session, *options); });
}

}  // namespace qnTool
