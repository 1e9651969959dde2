#ifndef LINKS_DOCUMENT_FIELDS_H
#define LINKS_DOCUMENT_FIELDS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorntools {

/** Version of the program that saved the document last. */
struct DocumentVersion {
    int version = 0;
    int release = 0;
    int servicePack = 0;
    bool complete = true; ///< false when the summary lacks one of the three
};

/** @param i_summary position of the summary stream; notFound gives zeros, complete */
DocumentVersion readVersion(std::string_view i_image, std::size_t i_summary);

/**
 * External references ("..!", parent levels, instance, published element) in the string table of the application
 * container, each once, in order.
 * @param i_names position of the container names; the table ends at the next catalog, or else the next signature,
 * before i_end. @return none when there is no such end
 */
std::vector<std::string> externalReferences(std::string_view i_image, std::size_t i_names, std::size_t i_end);

/** The same with the table ending at the next catalog anywhere. */
std::vector<std::string> publishedReferences(std::string_view i_image, std::size_t i_names);

/** Identifiers of five bytes behind a key: those led in by D3 B5, then those led in by two zeros. They stay in the
 * image. */
std::vector<std::string_view> identifiersBehind(std::string_view i_image, std::string_view i_key);

/** Whether one of the keys is published by the document, imports left out. */
bool publishes(std::string_view i_image, const std::vector<std::string_view>& i_keys);

} // namespace vorntools

#endif
