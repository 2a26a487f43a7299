/// The subcommands, each in a file of its own name.
#pragma once

namespace CLI {
class App;
}

namespace qnTool {

class Session;

/// Each adds its subcommand, which reports to `session`.
void addMeasure(CLI::App& app, Session& session);
void addLocate(CLI::App& app, Session& session);
void addClean(CLI::App& app, Session& session);
void addHull(CLI::App& app, Session& session);
void addCross(CLI::App& app, Session& session);
void addMerge(CLI::App& app, Session& session);
void addConvert(CLI::App& app, Session& session);
void addArchive(CLI::App& app, Session& session);

}  // namespace qnTool
