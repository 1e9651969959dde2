#ifndef TOOLS_VORNTOOLS_DOCUMENT_CONTENTS_H
#define TOOLS_VORNTOOLS_DOCUMENT_CONTENTS_H

#include "VornToolsDocumentFile.h"
#include "VornToolsDocumentLinks.h"

#include <array>
#include <string>
#include <vector>

/** A storage or stream of a document's file. */
struct ContentsEntry {
    std::string name;
    int parent = 0; ///< its number, from 1; 0 for none
    bool isStream = false;
    unsigned int size = 0;
    int pieces = 0;
    std::array<std::string, 3> dates;
};

/** All entries of an open file, in their order. */
std::vector<ContentsEntry> entriesOf(VornToolsDocumentFile& file);

/** The picture that is stored with a document. Empty without one, and for bytes that are no JPEG. */
std::string pictureOf(VornToolsDocumentFile& file);
/** Of a document that was read with its picture. */
std::string pictureOf(const VornToolsDocumentLinks& document);

#endif
