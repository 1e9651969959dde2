#include "VornToolsLinks.h"

#include "tests/support/DocumentImage.h"
#include "tests/support/Fixture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>

using namespace std::string_literals;

namespace {

using Strings = VornToolsVector<VornToolsString>;

const std::string kIdentity = "\0\0\0\0\0\0\x1A\x60\x60\xC7\x4B\xFE\0\0\0\x83"s;
const std::string kOtherIdentity = "\0\0\0\0\0\0\x1A\x60\x61\xC7\x4B\xFE\0\0\0\x84"s;

/** A part with every kind of link, in 4 KiB. */
DocumentImage wholeImage() {
    DocumentImage image;
    image.application().references({"..!A.1!x", "..!B.1!" + std::string(60, 'y'), "..!C.1!z"});
    image.raw("CATPrdInputProxy").pointer(kIdentity, "\x09\x92\0\0\0"s);
    image.imports({{1, {4, 5}}, {2, {5}}}, {"InputToDoc:Doc!Geometry:AJADAAAAAA!", "InputToDoc:Doc!Parameters:Depth!"});
    image.properties("C:\\w\\own.CATPart",
                     {ImageRecord::whole("CATPart", "f1.CATPart"), ImageRecord::whole("CATPart", "f2.CATPart"),
                      ImageRecord::object("CATProduct", "p1.CATProduct", kIdentity),
                      ImageRecord::object("CATPart", "c1.CATPart", kIdentity),
                      ImageRecord::whole("CATPart", "f3.CATPart", 0),
                      ImageRecord::object("CATPart", "c2.CATPart", kOtherIdentity),
                      ImageRecord::object("CATDrawing", "d1.CATDrawing", kOtherIdentity)});
    return image.summary(5, 11, 0);
}

/** The bytes in a buffer of their own, so that a read beyond them is seen. */
VornToolsString stringOf(const std::string& bytes) {
    char* const buffer = static_cast<char*>(std::malloc(bytes.size() + 1));
    std::memcpy(buffer, bytes.c_str(), bytes.size() + 1);
    return VornToolsString(static_cast<int>(bytes.size()), buffer);
}

struct Findings {
    Texts documents;  ///< in stream order as far as one list can tell: part files, products, parts
    Texts references; ///< external ones
};

/** Runs the scan; what two of its operations find. */
Findings scan(const std::string& bytes) {
    VornToolsString image = stringOf(bytes), file = stringOf("own.CATPart");
    unsigned char missing = 0;
    VornToolsLinks::getLinks(&image, "", &file, "", missing);
    int version = 0, release = 0, servicePack = 0;
    VornToolsLinks::getVersion(&image, version, release, servicePack);
    const auto positionOf = [&](const std::string& marker) {
        return image.indexOf(stringOf(marker), 0, 0xFFFFFFFFU, 0);
    };
    const int property = positionOf("CATDocumentProperty");
    Strings partFiles, products, parts, identities, references;
    VornToolsLinks::getExternalReference(&image, release, positionOf("AppliCont"), property, references);
    VornToolsLinks::getLinkedDocName(&image, property, &file, "", partFiles, products, parts, identities);
    EXPECT_EQ(parts.size(), identities.size());
    Findings findings;
    for (const Strings* list : {&partFiles, &products, &parts})
        for (unsigned int i = 0; i < list->size(); ++i)
            findings.documents.emplace_back((*list)[i].bytes(), (*list)[i].size());
    for (unsigned int i = 0; i < references.size(); ++i)
        findings.references.emplace_back(references[i].bytes(), references[i].size());
    embedded::Journal::get().clear();
    return findings;
}

bool isBeginning(const Texts& part, const Texts& whole) {
    return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

class LinksDamageTest : public PlatformTest {};

TEST_F(LinksDamageTest, ACutDocumentKeepsWhatStandsBeforeTheCut) {
    const DocumentImage image = wholeImage();
    const std::string& bytes = image.bytes();
    const Findings whole = scan(bytes);
    ASSERT_EQ(whole.documents, Texts({"f1.CATPart", "f2.CATPart", "p1.CATProduct", "c1.CATPart", "c2.CATPart"}));
    ASSERT_EQ(whole.references.size(), 3U);
    std::size_t found = 0;
    for (std::size_t length = 0; length <= bytes.size() && length <= 4096; ++length) {
        const Findings cut = scan(bytes.substr(0, length));
        ASSERT_TRUE(isBeginning(cut.documents, whole.documents)) << length;
        ASSERT_GE(cut.documents.size(), found) << length << ": a finding is lost again";
        ASSERT_TRUE(isBeginning(cut.references, whole.references)) << length;
        found = cut.documents.size();
    }
    EXPECT_EQ(found, whole.documents.size());
}

/** Position behind the record of a document. */
std::size_t endOfRecord(const std::string& image, const std::string& name) {
    std::string text;
    for (const char byte : name) text += "\x3B\x01"s + byte;
    return image.find(text) + text.size() + 45;
}

TEST_F(LinksDamageTest, ADamagedWordLeavesTheRecordsBeforeIt) {
    const std::string whole = wholeImage().bytes();
    const Texts names = scan(whole).documents;
    const std::size_t stream = whole.find("CATDocumentProperty");
    std::size_t start = 0; // a small and a large value meet each place
    for (const std::uint32_t value : {0U, 0xFFFFFFFFU, 0x7FFFFFFFU, 0x7FFFFFFEU, 1U}) {
        for (std::size_t at = start++ % 2; at + 4 <= whole.size(); at += 2) {
            std::string bytes = whole;
            for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> 8 * i & 0xFF);
            const Texts found = scan(bytes).documents;
            ASSERT_LE(found.size(), names.size() + 1) << at;
            for (const std::string& name : names) {
                const bool untouched = at + 4 <= stream || endOfRecord(whole, name) <= at;
                ASSERT_TRUE(!untouched || std::count(found.begin(), found.end(), name)) << at << " " << name;
            }
        }
    }
}

TEST_F(LinksDamageTest, NoiseInOneByteOfAHundredNeverHurts) {
    const DocumentImage image = wholeImage();
    std::mt19937 random(20261121);
    for (int run = 0; run < 1000; ++run) {
        std::string bytes = image.bytes();
        for (std::size_t i = 0; i < bytes.size() / 100; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        const Findings damaged = scan(bytes);
        for (const std::string& name : damaged.documents) ASSERT_LT(name.size(), bytes.size() / 3);
    }
}

} // namespace
