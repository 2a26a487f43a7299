// Messages on standard error.
#include "session.h"

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
    std::string const message = error.what();
    return name + " (" + number + ")" + (message == name ? "" : ": " + message);
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
