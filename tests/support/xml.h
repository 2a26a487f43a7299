/// Whether a text is XML as far as pictures need it.
#pragma once

#include <string>

namespace qnTest {

/// Elements that end in their order, attributes in quotes, no raw character that XML forbids.
bool isWellFormed(std::string xml);

}  // namespace qnTest
