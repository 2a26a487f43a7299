/// @file
/// Export macro and version of the contour library.
#pragma once

#ifndef __GNUC__
/// Who sees a name: what the two below are made of.
#define CNTR_VISIBILITY(which)
#else
#define CNTR_VISIBILITY(which) __attribute__((visibility(which)))
#endif

/// Makes a name visible outside the library.
#define CNTR_EXPORT CNTR_VISIBILITY("default")
/// Keeps a private member of a visible class inside: the library then calls it directly.
#define CNTR_HIDDEN CNTR_VISIBILITY("hidden")

/// First number of the version; a change may break programs.
#define CNTR_VERSION_MAJOR 0
/// Second number; before 1.0 it may break programs too.
#define CNTR_VERSION_MINOR 1
/// Third number: repairs only.
#define CNTR_VERSION_PATCH 0
