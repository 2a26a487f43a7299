/// \file
/// The registry of factories.
#include <qc/core/internal/class_name.h>
#include <qc/core/internal/factories.h>

#include <algorithm>
#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <mutex>

namespace {

struct Registration {
    qc_Instantiator const* owner;
    std::string name;
    std::type_info const* type;
    qc_Instantiator::Factory make;
};

struct Registry {
    std::mutex mutex;
    std::vector<Registration> registrations;  // some dozens: searched from the front
};

// Made by the first registration, therefore destroyed after the last.
Registry& registry()
{
    static Registry theRegistry;
    return theRegistry;
}

}  // namespace

std::string qnInternal::plainClassName(std::type_info const& type)
{
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> const plain(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    return plain ? plain.get() : type.name();
}

qc_Instantiator::Factory qnInternal::findFactory(std::string const& name)
{
    Registry& all = registry();
    std::lock_guard<std::mutex> const lock(all.mutex);
    for (Registration const& one : all.registrations) {
        if (one.name == name)
            return one.make;
    }
    return nullptr;
}

std::string qnInternal::registeredName(std::type_info const& type)
{
    Registry& all = registry();
    std::lock_guard<std::mutex> const lock(all.mutex);
    for (Registration const& one : all.registrations) {
        if (*one.type == type)
            return one.name;
    }
    return {};
}

qc_Instantiator::qc_Instantiator(std::type_info const& type, Factory make)
{
    Registration registration{this, qnInternal::plainClassName(type), &type, make};
    Registry& all = registry();
    std::lock_guard<std::mutex> const lock(all.mutex);
    all.registrations.push_back(std::move(registration));
}

qc_Instantiator::~qc_Instantiator()
{
    Registry& all = registry();
    std::lock_guard<std::mutex> const lock(all.mutex);
    auto const mine = [this](Registration const& one) { return one.owner == this; };
    auto& list = all.registrations;
    list.erase(std::remove_if(list.begin(), list.end(), mine), list.end());
}

std::vector<std::string> qcPersistent::registeredClasses()
{
    Registry& all = registry();
    std::lock_guard<std::mutex> const lock(all.mutex);
    std::vector<std::string> names;
    for (Registration const& one : all.registrations)
        names.push_back(one.name);
    return names;
}
