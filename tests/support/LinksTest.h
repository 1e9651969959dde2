#ifndef TESTS_SUPPORT_LINKS_TEST_H
#define TESTS_SUPPORT_LINKS_TEST_H

#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include "tests/support/DocumentImage.h"
#include "tests/support/Fixture.h"

#include <memory>
#include <string>

// What the tests of the links have in common: texts instead of lists, and the operations on an image that a test made.

using namespace std::string_literals;

using Strings = VornToolsVector<VornToolsString>;

/** Identities of foreign containers: the last eight bytes tell them apart, NULs and all. */
inline const std::string kFirst = "\0\0\0\0\0\0\x1A\x60\x60\xC7\x4B\xFE\0\0\0\x83"s;
inline const std::string kSecond = "\0\0\0\0\0\0\x1A\x61\x61\xC7\0\xFF\0\0\0\x84"s;
inline const std::string kThird = "\0\0\0\0\0\0\x1A\x62\x62\0\0\0\0\0\0\x85"s;

inline VornToolsString stringOf(const std::string& bytes) {
    return VornToolsString(bytes.data(), static_cast<int>(bytes.size()));
}
inline std::string bytesOf(const VornToolsString& text) { return std::string(text.bytes(), text.size()); }
inline std::string bytesOf(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}
inline Texts textsOf(const Strings& strings) {
    Texts texts;
    for (unsigned int i = 0; i < strings.size(); ++i) texts.push_back(bytesOf(strings[i]));
    return texts;
}
inline Texts textsOf(const CATListValCATUnicodeString& list) {
    Texts texts;
    for (int i = 1; i <= list.Size(); ++i) texts.push_back(bytesOf(list[i]));
    return texts;
}
inline Strings stringsOf(const Texts& texts) {
    Strings strings;
    for (const std::string& text : texts) strings.append(stringOf(text));
    return strings;
}
/** "type|file|reference|flag" */
inline Texts textsOf(const VornToolsVector<VornToolsLink>& links) {
    Texts texts;
    for (unsigned int i = 0; i < links.size(); ++i)
        texts.push_back(bytesOf(links[i].get_type()) + "|" + bytesOf(links[i].get_linkedFileName()) + "|" +
                        bytesOf(links[i].get_reference()) + "|" + std::to_string(links[i].get_link_tag_found()));
    return texts;
}
inline Texts operator+(Texts left, const Texts& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

struct LinkedNamesOfImage {
    Texts partFiles, products, parts, references, ghosts;
    Texts others; ///< "kind|name|uses"
};

inline LinkedNamesOfImage namesIn(const DocumentImage& image, const std::string& fileName = "/nowhere/own.CATPart") {
    VornToolsString bytes = stringOf(image.bytes()), file = stringOf(fileName);
    Strings partFiles = stringsOf({"stale"}), products = partFiles, parts = partFiles, references = partFiles,
            ghosts = partFiles;
    const int position = image.propertyPosition();
    EXPECT_EQ(VornToolsLinks::getLinkedDocName(&bytes, position, &file, "", partFiles, products, parts, references), 0);
    EXPECT_EQ(VornToolsLinks::getGhosts(&bytes, position, ghosts), 0);
    Strings others = partFiles, kinds = partFiles;
    VornToolsVector<int> uses;
    uses.append(99);
    VornToolsFolderMemory folders;
    EXPECT_EQ(VornToolsLinks::getOtherDocuments(&bytes, position, &file, "", others, kinds, uses, folders), 0);
    Texts otherTexts;
    for (unsigned int i = 0; i < others.size(); ++i)
        otherTexts.push_back(bytesOf(kinds[i]) + "|" + bytesOf(others[i]) + "|" + std::to_string(uses[i]));
    EXPECT_EQ(kinds.size(), others.size());
    EXPECT_EQ(uses.size(), others.size());
    return {textsOf(partFiles), textsOf(products), textsOf(parts), textsOf(references), textsOf(ghosts), otherTexts};
}

/** The multi-model links, made step by step. */
inline Texts composedLinks(VornToolsString& image, VornToolsString* file, const CATUnicodeString& directory) {
    const auto positionOf = [&](const char* stream) { return image.indexOf(stringOf(stream), 0, 0xFFFFFFFFU, 0); };
    const int application = positionOf("AppliCont"), property = positionOf("CATDocumentProperty");
    int version = 0, release = 0, servicePack = 0;
    VornToolsLinks::getVersion(&image, version, release, servicePack);
    Strings tags, publications, documents = stringsOf({"stale"});
    EXPECT_EQ(VornToolsLinks::getMMLTag(&image, release, application, property, tags), 0);
    EXPECT_EQ(VornToolsLinks::getMmlPublication(&image, release, application, property, publications), 0);
    EXPECT_EQ(VornToolsLinks::getMmlDocuments(&image, release, application, property, file, directory, documents), 0);
    EXPECT_EQ(tags.size(), publications.size());
    EXPECT_GE(documents.size(), publications.size());
    VornToolsVector<VornToolsLink> links;
    EXPECT_EQ(VornToolsLinks::updateMMLLink(tags, publications, documents, links), 0);
    return textsOf(links);
}

class LinksTest : public PlatformTest {
protected:
    /** What a search of the whole file finds. */
    Texts searched(const DocumentImage& image, const char* type, int missing) {
        double count = 7;
        CATListValCATUnicodeString lists[5];
        VornToolsVector<unsigned char> flags;
        unsigned char missingTag = 7;
        EXPECT_EQ(VornToolsLinks::searchLinks(write("searched", image.bytes()).c_str(), type, "", count, lists[0],
                                              lists[1], lists[2], lists[3], lists[4], flags, missingTag),
                  0);
        EXPECT_EQ(missingTag, missing) << type;
        EXPECT_EQ(count, flags.size());
        Texts texts;
        for (unsigned int i = 0; i < flags.size(); ++i) {
            const int at = static_cast<int>(i) + 1;
            texts.push_back(bytesOf(lists[1][at]) + "|" + bytesOf(lists[0][at]) + "|" + bytesOf(lists[2][at]) + "|" +
                            std::to_string(flags[i]));
        }
        return texts;
    }
    /** Those of the image and of the file are the same; multi-model links are made in both ways. */
    Texts links(const DocumentImage& image, const char* type = "", int missing = 0) {
        VornToolsString bytes = stringOf(image.bytes()), file = stringOf("/nowhere/own.CATPart");
        unsigned char missingTag = 7;
        const Texts found = textsOf(VornToolsLinks::getLinks(&bytes, type, &file, "", missingTag));
        EXPECT_EQ(missingTag, missing) << type;
        EXPECT_EQ(searched(image, type, missing), found);
        EXPECT_EQ(type == "MML"s ? composedLinks(bytes, &file, "") : found, found);
        return found;
    }
    Texts references(const DocumentImage& image) {
        VornToolsString bytes = stringOf(image.bytes());
        Strings found = stringsOf({"stale"});
        EXPECT_EQ(VornToolsLinks::getExternalReference(&bytes, 0, image.applicationPosition(), image.propertyPosition(),
                                                       found),
                  0);
        return textsOf(found);
    }
    std::string located(const std::string& own, const std::string& file, const std::string& linked,
                        const std::string& directory = "") {
        VornToolsString ownPath = stringOf(own), fileName = stringOf(file), name = stringOf(linked);
        const CATUnicodeString place(directory.c_str());
        std::unique_ptr<VornToolsString> first(VornToolsLinks::realLinkedDocPath(&ownPath, &fileName, &name, place));
        std::unique_ptr<VornToolsString> second(VornToolsLinks::realLinkedDocPath_2(&ownPath, &fileName, &name, place));
        EXPECT_EQ(bytesOf(*first), bytesOf(*second));
        return bytesOf(*first);
    }
};

#endif
