// Walks the records by the sizes that the format gives them.
#include "archive_tree.h"

#include <qc/core/archive.h>

#include <algorithm>
#include <cctype>
#include <map>

namespace qnTool {

namespace {

struct Fault {
    ExitStatus status;
    std::string message;
};

constexpr unsigned long kPoint = 16;  // two doubles
constexpr unsigned long kDouble = 8;
constexpr unsigned long kDatum = 19;  // a point, the magnitude, the angle
constexpr std::size_t kMaxName = 60;  // of an unknown class, in a message

class TreeReader {
public:
    TreeReader(std::vector<unsigned char> const& bytes, std::size_t maxNodes, ArchiveTree& tree)
        : bytes_(bytes), maxNodes_(maxNodes), tree_(tree)
    {
    }

    void readAll()
    {
        try {
            if (bytes_.empty())
                throw Fault{eBadInput, "an archive without records"};
            while (position_ < bytes_.size())
                record("");
        } catch (Fault const& fault) {
            tree_.status = fault.status;
            tree_.fault = "byte " + std::to_string(position_) + ": " + fault.message;
            while (!open_.empty())
                close(false);
        }
    }

private:
    using Block = void (TreeReader::*)();

    // --- values

    std::size_t remaining() const { return bytes_.size() - position_; }

    void skip(unsigned long count, unsigned long bytesEach = 1)
    {
        if (count > remaining() / bytesEach)
            throw Fault{eBadInput, "the data end before the value"};
        position_ += count * bytesEach;
    }

    unsigned byte()
    {
        skip(1);
        return bytes_[position_ - 1];
    }

    unsigned long number()
    {
        skip(4);
        unsigned long value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value |= static_cast<unsigned long>(bytes_[position_ - 4 + i]) << (8 * i);
        return value;
    }

    unsigned long count(unsigned long bytesEach)
    {
        unsigned long const items = number();
        if (items > remaining() / bytesEach)
            throw Fault{eBadInput, "a count of " + std::to_string(items) + " items where " +
                                       std::to_string(remaining()) + " bytes remain"};
        return items;
    }

    void boolean()
    {
        if (byte() > 1)
            throw Fault{eBadInput, "a bool that is neither 0 nor 1"};
    }

    std::string text()
    {
        unsigned long const length = count(1);
        std::string result;
        for (unsigned long i = 0; i < std::min<unsigned long>(length, kMaxName); ++i) {
            char const c = static_cast<char>(bytes_[position_ + i]);
            result += std::isprint(static_cast<unsigned char>(c)) ? c : '?';
        }
        skip(length);
        return result;
    }

    // --- blocks

    ArchiveNode& node() { return tree_.nodes[open_.back()]; }

    /// A version byte of a class, noted; up to `newest`.
    unsigned version(char const* className, unsigned newest)
    {
        unsigned const found = byte();
        if (found > newest)
            throw Fault{eBadInput, std::string("unknown version ") + std::to_string(found) +
                                       " of " + className};
        auto& versions = node().versions;
        versions +=
            (versions.empty() ? "" : ", ") + std::string(className) + " " + std::to_string(found);
        return found;
    }

    /// The block of a list: a version byte 0 and a count.
    unsigned long list(char const* what, unsigned long bytesEach)
    {
        if (byte() != 0)
            throw Fault{eBadInput, std::string("unknown version of the list of ") + what};
        unsigned long const items = count(bytesEach);
        node().counts.emplace_back(what, items);
        return items;
    }

    void points() { skip(list("points", kPoint), kPoint); }

    void pointers(char const* what, char const* role)
    {
        unsigned long const items = list(what, 1);
        for (unsigned long i = 1; i <= items; ++i)
            record(std::string(role) + " " + std::to_string(i));
    }

    void persistent()
    {
        if (byte() != 0)
            throw Fault{eBadInput, "unknown version of qcPersistent"};
    }

    /// The base of former versions, whose block stands once in an archive.
    void legacyBase(bool& seen)
    {
        if (seen)
            return;
        if (byte() != 0)
            throw Fault{eBadInput, "unknown version of a former base"};
        persistent();
        seen = true;
    }

    void contour()
    {
        if (version("qcContour", 1) == 0) {
            legacyBase(legacyContourBase_);
            points();
            skip(1 + 4);
            boolean();
            return;
        }
        persistent();
        skip(4);
        boolean();
        points();
        skip(4);
    }

    void region()
    {
        if (version("qcRegion", 1) == 0) {
            legacyBase(legacyRegionBase_);
            points();
            skip(1 + 4);
            return;
        }
        contour();
        pointers("holes", "hole");
    }

    void regionSet()
    {
        unsigned const found = version("qcRegionSet", 1);
        persistent();
        pointers("regions", "region");
        if (found == 1)
            skip(4);
    }

    void dataContour()
    {
        unsigned const found = version("qcContourT<qcEdgelet>", 1);
        contour();
        skip(list("edge points", kDatum), kDatum);
        if (found == 1)
            record("transform");
    }

    void dataRegion()
    {
        version("qcRegionT<qcEdgelet>", 0);
        region();
    }

    void dataSet()
    {
        version("qcRegionSetT<qcEdgelet>", 0);
        regionSet();
        pointers("typed regions", "typed region");
    }

    void exception()
    {
        version("qcException", 0);
        persistent();
        unsigned long const characters = count(4);
        node().counts.emplace_back("characters", characters);
        skip(characters, 4);
    }

    void contourError()
    {
        version(node().className.c_str(), 0);
        version("qcContourDefs::Errors", 0);
        exception();
    }

    template <unsigned long Doubles>
    void shape()
    {
        version(node().className.c_str(), 0);
        persistent();
        skip(Doubles, kDouble);
    }

    static Block blockOf(std::string const& className)
    {
        static std::map<std::string, Block> const blocks{
            {"qcContour", &TreeReader::contour},
            {"qcRegion", &TreeReader::region},
            {"qcRegionSet", &TreeReader::regionSet},
            {"qcContourT<qcEdgelet>", &TreeReader::dataContour},
            {"qcRegionT<qcEdgelet>", &TreeReader::dataRegion},
            {"qcRegionSetT<qcEdgelet>", &TreeReader::dataSet},
            {"qcContourDefs::EmptyContour", &TreeReader::contourError},
            {"qcContourDefs::EmptyRegionSet", &TreeReader::contourError},
            {"qcContourDefs::BadParams", &TreeReader::contourError},
            {"qcContourDefs::RegionCannotBeSetOpen", &TreeReader::contourError},
            {"qcBadPointer", &TreeReader::exception},
            {"qcMathError::Singular", &TreeReader::exception},
            {"qcPel::BadWindow", &TreeReader::exception},
            {"qcFitError::BadParams", &TreeReader::exception},
            {"qcFitError::NotFinite", &TreeReader::exception},
            {"qcFitError::TooFewPoints", &TreeReader::exception},
            {"qcFitError::Degenerate", &TreeReader::exception},
            {"qcFitError::NotAnEllipse", &TreeReader::exception},
            {"qcFitError::ResidualTooLarge", &TreeReader::exception},
            {"qcLine", &TreeReader::shape<4>},
            {"qcLineSeg", &TreeReader::shape<4>},
            {"qcRect", &TreeReader::shape<4>},
            {"qcCircle", &TreeReader::shape<3>},
            {"qc2XformLinear", &TreeReader::shape<6>},
            {"qc2Rigid", &TreeReader::shape<3>},
        };
        auto const found = blocks.find(className);
        return found == blocks.end() ? nullptr : found->second;
    }

    // --- records

    void record(std::string const& role)
    {
        if (tree_.nodes.size() >= maxNodes_)
            throw Fault{eOverLimit, "more than " + std::to_string(maxNodes_) + " records"};
        open_.push_back(tree_.nodes.size());
        tree_.nodes.emplace_back();
        node().depth = open_.size() - 1;
        node().offset = position_;
        node().role = role;
        unsigned const tag = byte();
        if (tag == 1)
            newObject();
        else if (tag == 2)
            reference();
        else if (tag != 0)
            throw Fault{eBadInput, "a pointer record that is neither null, new nor a reference"};
        close(true);
    }

    void close(bool complete)
    {
        node().complete = complete;
        node().size = position_ - node().offset;
        open_.pop_back();
    }

    void newObject()
    {
        if (++depth_ > static_cast<std::size_t>(qcArchive::kDefaultNestingLimit))
            throw Fault{eOverLimit, "objects within objects beyond the limit of " +
                                        std::to_string(qcArchive::kDefaultNestingLimit)};
        std::string const name = text();
        Block const block = blockOf(name);
        if (!block)
            throw Fault{eBadInput, "unknown class '" + name + "'"};
        node().className = name;
        classes_.push_back(name);
        node().object = classes_.size();
        (this->*block)();
        --depth_;
    }

    void reference()
    {
        unsigned long const target = number();
        if (target == 0 || target > classes_.size())
            throw Fault{eBadInput, "a reference to object " + std::to_string(target) + " of " +
                                       std::to_string(classes_.size())};
        node().reference = true;
        node().object = target;
        node().className = classes_[target - 1];
    }

    std::vector<unsigned char> const& bytes_;
    std::size_t maxNodes_;
    ArchiveTree& tree_;
    std::size_t position_ = 0;
    std::size_t depth_ = 0;
    std::vector<std::size_t> open_;     // the nodes under way, outermost first
    std::vector<std::string> classes_;  // of the objects, by number less 1
    bool legacyContourBase_ = false;
    bool legacyRegionBase_ = false;
};

}  // namespace

ArchiveTree readArchiveTree(std::vector<unsigned char> const& bytes, std::size_t maxNodes)
{
    ArchiveTree tree;
    TreeReader(bytes, maxNodes, tree).readAll();
    return tree;
}

}  // namespace qnTool
