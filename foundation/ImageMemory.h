#ifndef FOUNDATION_IMAGE_MEMORY_H
#define FOUNDATION_IMAGE_MEMORY_H

#include <cstddef>

namespace vorntools {

// Fresh memory for a large image costs more than searching it: the system makes and clears every page. Above 32 MiB it
// is advised to use huge pages where it can, and one buffer is kept from image to image, its pages for the system to
// take back at any time.

/** A buffer for the bytes of a file and a NUL behind them, for releaseImage; null when there is no memory for it. */
char* allocateImage(std::size_t i_length);

/** Releases such a buffer, or one that came from malloc. */
void releaseImage(char* ip_buffer);

} // namespace vorntools

#endif
