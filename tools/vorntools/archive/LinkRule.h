#ifndef TOOLS_VORNTOOLS_ARCHIVE_LINK_RULE_H
#define TOOLS_VORNTOOLS_ARCHIVE_LINK_RULE_H

#include <cstdint>
#include <string_view>

/** The rule of docs/links.md by which the file was found that a stored name means. */
enum class LinkRule : std::uint8_t {
    NotFound,
    AsStored,
    Relative,  ///< a name without directory or a relative path, beside the document
    Moved,     ///< along with the document, from the folder where that was saved last to the one where it lies now
    TreeAbove, ///< along with a tree of folders that holds the document
    ByName     ///< by its last name alone, in the document's folder or below
};

/** "as stored", "relative", "moved along with the document", "tree above", "by name"; empty for NotFound. */
const char* ruleName(LinkRule rule);

/**
 * The rule, from what it led to: nothing is looked up.
 * @param stored name in the document. @param found name of the file, empty when there is none
 * @param savedPath of the document when it was saved last, may be empty. @param document its full name now
 */
LinkRule ruleOf(std::string_view stored, std::string_view found, std::string_view savedPath, std::string_view document);

#endif
