/// @file
/// Export macro and version of the contour library.
#pragma once

#if defined(__GNUC__)
#define CNTR_EXPORT __attribute__((visibility("default")))
#else
#define CNTR_EXPORT
#endif

#define CNTR_VERSION_MAJOR 0
#define CNTR_VERSION_MINOR 1
#define CNTR_VERSION_PATCH 0
