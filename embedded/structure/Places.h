// Where a product stands in its tree.
#ifndef EMBEDDED_STRUCTURE_PLACES_H
#define EMBEDDED_STRUCTURE_PLACES_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded {

class ProductObject;
struct SessionData;

/** The reference that the product's tree begins with. */
const ProductObject& rootOf(const ProductObject& product);
/** From below the root down to the product, the root's own child first: instance names, and indices. */
std::vector<std::string> namesBelowRoot(const ProductObject& product);
std::vector<std::size_t> indicesBelowRoot(const ProductObject& product);

/** Instance names from below the direct instance down to the place. */
std::vector<std::string> namesBelowInstance(const ProductObject& product);

/** Places further down than a direct instance that were given something of their own, with the instance each is below.
 * In the order of the structure: the place in each list is by position, not by time. */
std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> ownOccurrences(const SessionData& session);

} // namespace embedded

#endif
