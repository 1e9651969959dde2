#ifndef TOOLS_VORNTOOLS_DOCUMENT_LINKS_H
#define TOOLS_VORNTOOLS_DOCUMENT_LINKS_H

#include "tools/vorntools/DocumentCondition.h"

#include "VornToolsDocumentLinks.h"
#include "VornToolsFolderMemory.h"

#include <cstddef>
#include <string>
#include <vector>

/** A document that another one names. */
struct NamedDocument {
    std::string name; ///< its full name where it was found, else as stored
    bool exists = false;
    std::string stored = {}; ///< as the other one names it
    int uses = 0;            ///< pointers of the document that go through its first record
};

/** What a document names that is neither part, product nor drawing. */
struct OtherNamed {
    std::string kind; ///< as stored
    NamedDocument document;
    int uses = 0;
};

/** A link as the library lists it. */
struct TypedLink {
    std::string type;
    NamedDocument document; ///< no name: the link says only which element it means
    std::string reference;
    bool tagFound = false;

    bool isMissing() const { return !document.name.empty() && !document.exists; }
};

/** What a document points to, as the library finds it in the document's file. */
struct DocumentLinks {
    bool read = false; ///< false: the file could not be read, nothing else is known
    DocumentCondition condition;
    int version = 0, release = 0, servicePack = 0;
    std::string savedPath; ///< of the document when it was saved last
    std::string save;      ///< what copies of one save share; bytes that are only good for comparing
    std::vector<NamedDocument> partFiles, contextProducts, contextParts;
    std::vector<std::string> externalReferences;
    std::vector<TypedLink> links;
    std::vector<OtherNamed> others;
    std::vector<std::string> ghosts; ///< as stored

    /** Whether a document that is pointed to is nowhere to be found. */
    bool anyMissing() const;
    /** Parts and products pointed to, each counted once. */
    std::size_t countDocuments() const;
};

/** What reading one document leaves to the next. */
struct LinkMemory {
    VornToolsFolderMemory folders;
    VornToolsDocumentLinks reader;
};

/** @param document its full name
 * @param filter "MML", "MMLASSY", "MMLDrawing", or empty: what fits the document, by its suffix
 * @param memory the same for all documents */
DocumentLinks readDocumentLinks(const std::string& document, const std::string& filter, LinkMemory& memory);

#endif
