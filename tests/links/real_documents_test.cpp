#include "tests/support/LinksTest.h"

#include "VornToolsCommon.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>

namespace {

/** Base names of stored paths. */
Texts baseNames(const Texts& names) {
    Texts result;
    for (const std::string& name : names) result.push_back(name.substr(name.find_last_of("/\\") + 1));
    return result;
}

TEST_F(LinksTest, RealDocumentsHoldWhatTheirListSays) {
    const char* const documents = std::getenv("VORNTOOLS_DOCUMENTS");
    if (!documents || !std::filesystem::exists(documents)) GTEST_SKIP() << "VORNTOOLS_DOCUMENTS names no folder";
    std::ifstream list(std::filesystem::u8path(documents) / "EXPECTED.json");
    const nlohmann::json expected = nlohmann::json::parse(list).at("documents");
    EXPECT_FALSE(expected.empty());
    for (const auto& document : expected) {
        const std::string name = document.at("file");
        SCOPED_TRACE(name);
        const std::unique_ptr<VornToolsString> bytes(
            VornToolsCommon::readBinaryFile((documents + "/"s + name).c_str()));
        ASSERT_TRUE(bytes);
        DocumentImage image;
        image.raw(bytesOf(*bytes));
        const LinkedNamesOfImage names = namesIn(image);
        EXPECT_EQ(baseNames(names.partFiles), document.at("part_files").get<Texts>());
        EXPECT_EQ(baseNames(names.products), document.at("context_products").get<Texts>());
        EXPECT_EQ(baseNames(names.parts), document.at("context_parts").get<Texts>());
        for (const std::string& reference : names.references) EXPECT_EQ(reference.size(), 8U);
        EXPECT_EQ(references(image), document.at("external_references").get<Texts>());
        int version[3] = {7, 7, 7};
        EXPECT_EQ(VornToolsLinks::getVersion(bytes.get(), version[0], version[1], version[2]), 0);
        EXPECT_EQ(std::vector<int>(version, version + 3), document.at("version").get<std::vector<int>>());

        Strings publications;
        VornToolsLinks::getMmlPublication(bytes.get(), version[1], image.applicationPosition(),
                                          image.propertyPosition(), publications);
        unsigned char missing = 7;
        VornToolsString file = stringOf(documents + "/"s + name);
        const auto links = VornToolsLinks::getLinks(bytes.get(), "MML", &file, documents, missing);
        EXPECT_EQ(missing, 0);
        EXPECT_EQ(composedLinks(*bytes, &file, documents), textsOf(links));
        Texts elements;
        for (unsigned int i = 0; i < links.size() && i < publications.size(); ++i)
            elements.push_back(bytesOf(publications[i]) + " -> " +
                               baseNames({bytesOf(links[i].get_linkedFileName())}).front());
        EXPECT_EQ(elements, document.at("imported_elements").get<Texts>());
        EXPECT_EQ(links.size(), elements.size());
    }
}

} // namespace
