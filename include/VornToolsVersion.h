#ifndef VornToolsVersion_H
#define VornToolsVersion_H

/**
 * @file
 * Version of these headers; the build reads it here. A program needs a library of the same major version whose minor
 * one is not less.
 */

/** Changes break programs. */
#define VORNTOOLS_VERSION_MAJOR 1
/** Changes add to what programs may use. */
#define VORNTOOLS_VERSION_MINOR 0
/** Changes mend what programs use. */
#define VORNTOOLS_VERSION_PATCH 0

/** A version as a number, for comparisons: VORNTOOLS_VERSION >= VORNTOOLS_VERSION_OF(1, 2, 0). */
#define VORNTOOLS_VERSION_OF(major, minor, patch) ((major)*10000 + (minor)*100 + (patch))
/** The version of these headers as a number. */
#define VORNTOOLS_VERSION                                                                                              \
    VORNTOOLS_VERSION_OF(VORNTOOLS_VERSION_MAJOR, VORNTOOLS_VERSION_MINOR, VORNTOOLS_VERSION_PATCH)

#endif
