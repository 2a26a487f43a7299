// Messages on standard error.
#include "session.h"

#include <cntr/contour_defs.h>

#include <cxxabi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <typeinfo>

namespace qnTool {

std::string errorText(qcException const& error)
{
    char const* const mangled = typeid(error).name();
    std::unique_ptr<char, void (*)(void*)> const plain(
        abi::__cxa_demangle(mangled, nullptr, nullptr, nullptr), std::free);
    std::string const name = plain ? plain.get() : mangled;
    char number[32];
    std::snprintf(number, sizeof number, "0x%lx", static_cast<unsigned long>(error.errorNumber()));
    std::string message = error.what();
    if (message.compare(0, name.size(), name) == 0)  // alone, or before a colon and a text
        message.erase(0, message.find_first_not_of(": ", name.size()));
    if (message.empty() && dynamic_cast<qcContourDefs::EmptyContour const*>(&error))
        message = "too few points";
    return name + " (" + number + ")" + (message.empty() ? "" : ": " + message);
}

std::string counted(std::size_t count, std::string const& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void Session::fail(ExitStatus status, std::string const& message)
{
    status_ = std::max(status_, status);
    std::cerr << "cntr: " << message << '\n';
}

void Session::note(std::string const& message) const
{
    std::cerr << message << '\n';
}

}  // namespace qnTool
