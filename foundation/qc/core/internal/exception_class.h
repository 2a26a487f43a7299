/// \file
/// The members that every concrete exception class has.
#pragma once

/// Defines copying, destruction, the error number and the rethrow of the exception Class, whose
/// destructor is named Name.
#define QC_EXCEPTION_MEMBERS(Class, Name, number)                                                  \
    Class::Name(Name const& other) = default;                                                      \
    Class::~Name() = default;                                                                      \
    long Class::errorNumber() const                                                                \
    {                                                                                              \
        return number;                                                                             \
    }                                                                                              \
    void Class::suicideAndRethrow()                                                                \
    {                                                                                              \
        suicideAndRethrowAs(this);                                                                 \
    }
