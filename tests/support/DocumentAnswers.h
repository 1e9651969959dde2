#ifndef TESTS_SUPPORT_DOCUMENT_ANSWERS_H
#define TESTS_SUPPORT_DOCUMENT_ANSWERS_H

#include "VornToolsDocumentLinks.h"
#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include <string>
#include <string_view>
#include <vector>

/**
 * All that a document tells of others, as texts: from VornToolsDocumentLinks, and from the operations that each tell a
 * part of it about an image. For a test both must be the same.
 */
class DocumentAnswers {
public:
    using Texts = std::vector<std::string>;

    static Texts of(const VornToolsDocumentLinks& document) {
        Texts texts;
        int version[3] = {};
        const int code = document.getVersion(version[0], version[1], version[2]);
        texts.push_back(versionText(code, version));
        unsigned int count = 0;
        const auto* const documents = document.getDocuments(count);
        for (int kind = 0; kind <= VornToolsDocumentLinks::KindOther; ++kind) {
            for (unsigned int i = 0; i < count; ++i) {
                const auto& named = documents[i];
                if (named.kind != kind || named.uses == 0 || kind == VornToolsDocumentLinks::KindDrawing) continue;
                const std::string more =
                    kind == VornToolsDocumentLinks::KindOther ? text(named.type) + "|" + std::to_string(named.uses)
                    : kind == VornToolsDocumentLinks::KindContextPart ? text(named.identity).substr(8)
                                                                      : "";
                texts.push_back(std::to_string(kind) + "|" + text(named.foundName) + "|" + more);
            }
        }
        for (unsigned int i = 0; i < count; ++i)
            if (documents[i].uses == 0) texts.push_back("ghost|" + text(documents[i].storedName));
        const auto* const references = document.getExternalReferences(count);
        for (unsigned int i = 0; i < count; ++i) texts.push_back("reference|" + text(references[i]));
        const auto* const links = document.getLinks(count);
        for (unsigned int i = 0; i < count; ++i)
            texts.push_back(text(links[i].type) + "|" + text(links[i].foundName) + "|" + text(links[i].reference) +
                            "|" + std::to_string(links[i].isTagFound));
        texts.push_back("missing tag " + std::to_string(document.getMissingTag()));
        return texts;
    }

    static Texts of(VornToolsString& image, const std::string& path, const std::string& type,
                    const std::string& directory) {
        Texts texts;
        VornToolsString file(path.data(), static_cast<int>(path.size()));
        const CATUnicodeString place(directory.data(), directory.size());
        const int property = positionOf(image, "CATDocumentProperty");
        int version[3] = {};
        const int code = VornToolsLinks::getVersion(&image, version[0], version[1], version[2]);
        texts.push_back(versionText(code, version));
        VornToolsVector<VornToolsString> names[3], references, kinds, ghosts;
        VornToolsVector<int> uses;
        VornToolsLinks::getLinkedDocName(&image, property, &file, place, names[0], names[1], names[2], references);
        for (int kind = 0; kind < 3; ++kind)
            for (unsigned int i = 0; i < names[kind].size(); ++i)
                texts.push_back(std::to_string(kind) + "|" + text(names[kind][i]) + "|" +
                                (kind == 2 ? text(references[i]) : ""));
        VornToolsFolderMemory folders;
        VornToolsLinks::getOtherDocuments(&image, property, &file, place, names[0], kinds, uses, folders);
        for (unsigned int i = 0; i < kinds.size(); ++i)
            texts.push_back("4|" + text(names[0][i]) + "|" + text(kinds[i]) + "|" + std::to_string(uses[i]));
        VornToolsLinks::getGhosts(&image, property, ghosts);
        for (unsigned int i = 0; i < ghosts.size(); ++i) texts.push_back("ghost|" + text(ghosts[i]));
        VornToolsLinks::getExternalReference(&image, version[1], positionOf(image, "AppliCont"), property, references);
        for (unsigned int i = 0; i < references.size(); ++i) texts.push_back("reference|" + text(references[i]));
        unsigned char missing = 0;
        const auto links = type == "MMLDrawing" ? VornToolsLinks::getMMLDrawingLinks(&image, &file, place)
                                                : VornToolsLinks::getLinks(&image, type.c_str(), &file, place, missing);
        for (unsigned int i = 0; i < links.size(); ++i)
            texts.push_back(text(links[i].get_type()) + "|" + text(links[i].get_linkedFileName()) + "|" +
                            text(links[i].get_reference()) + "|" + std::to_string(links[i].get_link_tag_found()));
        texts.push_back("missing tag " + std::to_string(missing));
        return texts;
    }

private:
    static std::string text(const VornToolsDocumentLinks::Text& text) { return {text.bytes, text.length}; }
    static std::string text(const VornToolsString& text) { return {text.bytes(), text.size()}; }
    static std::string text(const CATUnicodeString& text) {
        return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
    }
    static std::string versionText(int code, const int (&version)[3]) {
        return "V" + std::to_string(version[0]) + " R" + std::to_string(version[1]) + " SP" +
               std::to_string(version[2]) + " code " + std::to_string(code);
    }
    static int positionOf(const VornToolsString& image, std::string_view marker) {
        const std::size_t found = std::string_view(image.bytes(), image.size()).find(marker);
        return found == std::string_view::npos ? -1 : static_cast<int>(found);
    }
};

#endif
