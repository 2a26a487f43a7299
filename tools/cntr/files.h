/// Files by their names: which names mean one file, and writing that leaves no half of one.
#pragma once

#include <string>
#include <vector>

namespace qnTool {

/// Writes all of `bytes` to the file, or to standard output for `-`.
///
/// A regular file is replaced in one step, after everything has been written beside it: until then,
/// and when anything fails or a signal ends the process, it is as it was. A link stays, and the file
/// behind it is the one replaced or made. Throws CommandError eOutputLost.
void writeWhole(std::string const& file, std::string const& bytes);

/// Whether the names lead to one regular file, or will once it is written.
bool sameFile(std::string const& a, std::string const& b);

/// Whether the file is one of the inputs, `-` among which is standard input.
bool isAmong(std::string const& file, std::vector<std::string> const& inputs);

}  // namespace qnTool
