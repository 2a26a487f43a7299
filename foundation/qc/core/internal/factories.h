/// \file
/// What the archive asks the registered factories.
#pragma once

#include <qc/core/persistent.h>

namespace qnInternal {

/// The factory of the class with this plain name, or null.
qc_Instantiator::Factory findFactory(std::string const& name);

/// The name under which the class is registered; empty when it is not.
std::string registeredName(std::type_info const& type);

}  // namespace qnInternal
