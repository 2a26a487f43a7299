/// The records of an archive as a tree, read from the documented format without making any object.
#pragma once

#include "session.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace qnTool {

/// One pointer record.
struct ArchiveNode {
    std::size_t depth = 0;
    std::size_t offset = 0;    ///< of the record's first byte
    std::size_t size = 0;      ///< in bytes, the records within included
    std::string role;          ///< what it is to the record around it; empty at the top
    unsigned long object = 0;  ///< the number of the object made or referred to; 0 for null
    bool reference = false;    ///< to an object that stands elsewhere in the archive
    bool complete = false;     ///< else the fault lies within it, and the size reaches to there
    std::string className;     ///< empty for null
    std::string versions;      ///< of the class and of its bases, in the order of their blocks
    std::vector<std::pair<std::string, unsigned long>>
        counts;  ///< of the lists in it, named by plurals in -s
};

struct ArchiveTree {
    std::vector<ArchiveNode> nodes;  ///< a record before the records in it
    ExitStatus status = eDone;       ///< eBadInput or eOverLimit after a fault
    std::string fault;               ///< with the byte where it was found; empty where all is well
};

/// Reads every record of the classes that this version of the library knows. Nothing in the bytes
/// makes it read past their end, nest deeper than an archive may, or keep more than `maxNodes`.
ArchiveTree readArchiveTree(std::vector<unsigned char> const& bytes, std::size_t maxNodes);

}  // namespace qnTool
