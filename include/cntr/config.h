/// @file
/// Export macro and version of the contour library.
#pragma once

#if defined(__GNUC__)
#define CNTR_EXPORT __attribute__((visibility("default")))
#define CNTR_HIDDEN __attribute__((visibility("hidden")))
#else
/// Makes a name visible outside the library.
#define CNTR_EXPORT
/// Keeps a private member of a visible class inside: the library then calls it directly.
#define CNTR_HIDDEN
#endif

/// First number of the version; a change may break programs.
#define CNTR_VERSION_MAJOR 0
/// Second number; before 1.0 it may break programs too.
#define CNTR_VERSION_MINOR 1
/// Third number: repairs only.
#define CNTR_VERSION_PATCH 0
