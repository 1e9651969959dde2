#ifndef EMBEDDED_SESSION_DATA_H
#define EMBEDDED_SESSION_DATA_H

#include "embedded/Documents.h"
#include "embedded/Environment.h"
#include "embedded/Products.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded {

/**
 * Everything that the session owns. Objects hold plain pointers to each other and die together, in flat lists: however
 * deep a structure is, taking it down needs no recursion.
 */
struct SessionData {
    Environment environment;
    std::vector<std::string> updatedDrawings;
    std::vector<std::unique_ptr<DocumentObject>> documents;
    std::unordered_map<std::string, DocumentObject*> documentIndex; ///< by foldedName()
    std::vector<std::unique_ptr<Reference>> references;
    std::vector<std::unique_ptr<ProductObject>> products;
    std::uint64_t lastMark = 0; ///< counts the searches through the structure

    Reference& newReference(DocumentObject& document, bool component);
    ProductObject* newProduct(std::unique_ptr<ProductObject> product);
};

/** A storage name for looking it up: names that differ in letter case only give the same text. */
std::string foldedName(const std::string& name);

/** The file name of a path, behind its last slash or backslash. */
std::string fileNameOf(const std::string& path);
/** Text behind the last dot of the file name; empty when there is none. */
std::string suffixOf(const std::string& path);
bool hasDirectory(const std::string& path);

/** Places further down than a direct instance that were given something of their own, with the instance each is below.
 * In the order of the structure: the place in each list is by position, not by time. */
std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> ownOccurrences(const SessionData& session);

/** Instance names from below the direct instance down to the place. */
std::vector<std::string> pathBelowInstance(const ProductObject& product);

} // namespace embedded

#endif
