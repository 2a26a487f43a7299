/// \file
/// Export macro of the foundation library.
#pragma once

/// Marks what the shared foundation library shows: everything else is compiled hidden.
#if defined(__GNUC__)
#define QC_EXPORT __attribute__((visibility("default")))
#else
#define QC_EXPORT
#endif
