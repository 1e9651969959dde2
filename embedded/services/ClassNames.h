// The class names that the typed maps keep beside their pointers.
#ifndef EMBEDDED_SERVICES_CLASS_NAMES_H
#define EMBEDDED_SERVICES_CLASS_NAMES_H

namespace embedded {

/** A class name that lives as long as the process; there are few of them. */
const char* internedClassName(const char* name);

/** Whether an entry of the class `held` is one for somebody who asks for `wanted`; empty and null ask for any. */
bool acceptsClass(const char* held, const char* wanted);

} // namespace embedded

#endif
