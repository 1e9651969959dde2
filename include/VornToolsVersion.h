#ifndef VornToolsVersion_H
#define VornToolsVersion_H

/** Version of these headers; the build reads it here. A program needs a library of the same major version whose minor
 * one is not less. */
#define VORNTOOLS_VERSION_MAJOR 1
#define VORNTOOLS_VERSION_MINOR 0
#define VORNTOOLS_VERSION_PATCH 0

/** For comparisons: VORNTOOLS_VERSION >= VORNTOOLS_VERSION_OF(1, 2, 0). */
#define VORNTOOLS_VERSION_OF(major, minor, patch) ((major)*10000 + (minor)*100 + (patch))
#define VORNTOOLS_VERSION                                                                                              \
    VORNTOOLS_VERSION_OF(VORNTOOLS_VERSION_MAJOR, VORNTOOLS_VERSION_MINOR, VORNTOOLS_VERSION_PATCH)

#endif
