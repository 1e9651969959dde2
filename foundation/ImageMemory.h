#ifndef FOUNDATION_IMAGE_MEMORY_H
#define FOUNDATION_IMAGE_MEMORY_H

#include <cstddef>

namespace vorntools {

/**
 * A buffer for the bytes of a file and a NUL behind them, for free(); null when there is no memory for it. Above 32 MiB
 * the system is advised to use huge pages where it can: making fresh small pages costs more than searching them.
 */
char* allocateImage(std::size_t i_length);

} // namespace vorntools

#endif
