/// \file
/// The name of a class as C++ source has it.
#pragma once

#include <string>
#include <typeinfo>

namespace qnInternal {

/// "qcContourDefs::BadParams" for the class of that name.
std::string plainClassName(std::type_info const& type);

}  // namespace qnInternal
