#ifndef FOUNDATION_DYNAMIC_LIBRARY_H
#define FOUNDATION_DYNAMIC_LIBRARY_H

namespace vorntools {

/** Loads a dynamic library by its name without suffix, the way the system looks for one; null when there is none. It is
 * never unloaded. */
void* loadLibrary(const char* i_name);

/** An exported function of a library; null when it has none of that name. */
void (*functionOf(void* ip_library, const char* i_name))();

} // namespace vorntools

#endif
