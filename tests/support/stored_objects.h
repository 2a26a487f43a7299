/// Objects on their way through archives: storing and loading by pointer, a full description to
/// compare them by, and every query at once.
#pragma once

#include <qc/core/archive.h>
#include <qc/core/handle.h>
#include <qc/core/persistent.h>

#include <memory>
#include <string>
#include <vector>

namespace qnTest {

using Bytes = std::vector<unsigned char>;

/// An object of any class, counted or not.
struct Root {
    qcPersistent* object = nullptr;
    qcPtrHandle<qcRepBase> counted;
    std::shared_ptr<qcPersistent> owned;
};

/// Shares a counted object or takes any other.
Root rootOf(qcPersistent* made);

/// One pointer record. Throws what the archive throws.
Bytes store(qcPersistent const& object);
Root load(Bytes const& bytes);

Bytes readFile(std::string const& path);
void writeFile(std::string const& path, Bytes const& bytes);

/// Everything that can be seen of an object and of what it holds, floating point numbers exactly.
/// Objects are numbered as they are met, so that sharing shows; `counts` adds the handles on each.
std::string describe(qcPersistent const* object, bool counts = false);

/// Puts every query of the object's class to it. Its own exceptions are the only ones expected;
/// the text names the query that threw another, and is empty where all is well.
std::string askEverything(qcPersistent& object);

}  // namespace qnTest
