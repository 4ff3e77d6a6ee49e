#pragma once

/// Stands before every class and function that the libraries offer: a shared library shows these
/// and nothing else. On Windows the libraries are static.
#ifdef _WIN32
#define VXPRIVACY_EXPORT
#else
#define VXPRIVACY_EXPORT __attribute__((visibility("default")))
#endif
