// Any bytes as a document file: the link scan reads them, and its operations agree with each other.

#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Links = VornToolsVector<VornToolsLink>;
using Strings = VornToolsVector<VornToolsString>;

constexpr unsigned int kEnd = 0xFFFFFFFFU;

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

VornToolsString stringOf(const std::uint8_t* data, std::size_t size) {
    char* const buffer = static_cast<char*>(std::malloc(size + 1));
    if (size > 0) std::memcpy(buffer, data, size);
    buffer[size] = '\0';
    return VornToolsString(static_cast<int>(size), buffer);
}

int positionOf(VornToolsString& image, const char* marker) {
    return image.indexOf(VornToolsString(marker, static_cast<int>(std::strlen(marker))), 0, kEnd, 0);
}

/** Whether `whole` holds the links of `first` and then those of `second`. */
bool isJoined(const Links& whole, const Links& first, const Links& second) {
    if (whole.size() != first.size() + second.size()) return false;
    for (unsigned int i = 0; i < whole.size(); ++i)
        if (!(whole[i] == (i < first.size() ? first[i] : second[i - first.size()]))) return false;
    return true;
}

void checkLinks(VornToolsString& image, VornToolsString& file) {
    unsigned char missing = 1;
    const Links all = VornToolsLinks::getLinks(&image, "", &file, "", missing);
    require(missing == 0, "a missing tag that nobody asked for");
    const Links assembly = VornToolsLinks::getMMLAssyLinks(&image, &file, "");
    const Links multiModel = VornToolsLinks::getLinks(&image, "MML", &file, "", missing);
    require(isJoined(all, assembly, multiModel), "all links are those of the assembly and the multi-model ones");
    require(isJoined(VornToolsLinks::getAllLinks(&image, &file, ""), multiModel, assembly), "the two halves turned");
    bool tags = true;
    for (unsigned int i = 0; i < multiModel.size(); ++i) {
        require(!multiModel[i].get_linkedFileName().IsNull(), "a link without a name");
        tags = tags && multiModel[i].get_link_tag_found();
    }
    require(tags || missing == 1, "a tag is missing and nobody says so");
    const Links context = VornToolsLinks::getContextLinks(&image, &file, "");
    const Links imports = VornToolsLinks::getImportLinks(&image, &file, "");
    require(isJoined(assembly, context, imports), "the links of the assembly are its context and the imports");
    VornToolsLinks::getMMLDrawingLinks(&image, &file, "");
    VornToolsLinks::getImportLinksWithPub(&image);
}

/** The exported steps, one after the other, make the multi-model links. */
void checkSteps(VornToolsString& image, VornToolsString& file) {
    const int application = positionOf(image, "AppliCont"), property = positionOf(image, "CATDocumentProperty");
    int version = 0, release = 0, servicePack = 0;
    VornToolsLinks::getVersion(&image, version, release, servicePack);
    Strings tags, publications, documents;
    VornToolsLinks::getMMLTag(&image, release, application, property, tags);
    VornToolsLinks::getMmlPublication(&image, release, application, property, publications);
    VornToolsLinks::getMmlDocuments(&image, release, application, property, &file, "", documents);
    require(documents.size() >= publications.size(), "documents are not parallel to publications");
    Links composed;
    VornToolsLinks::updateMMLLink(tags, publications, documents, composed);
    require(isJoined(VornToolsLinks::getMMLLinks(&image, &file, ""), composed, Links()), "steps that make other links");
}

void checkNames(VornToolsString& image, VornToolsString& file) {
    const int application = positionOf(image, "AppliCont"), property = positionOf(image, "CATDocumentProperty");
    Strings partFiles, products, parts, references, ghosts, tags, publications, unpublished, older;
    VornToolsLinks::getLinkedDocName(&image, property, &file, "", partFiles, products, parts, references);
    VornToolsLinks::getGhosts(&image, property, ghosts);
    VornToolsFolderMemory folders;
    Strings others, kinds;
    VornToolsVector<int> uses;
    VornToolsLinks::getOtherDocuments(&image, property, &file, "", others, kinds, uses, folders);
    require(others.size() == kinds.size() && others.size() == uses.size(), "other documents are not parallel");
    for (unsigned int i = 0; i < others.size(); ++i)
        require(uses[i] != 0 && others[i].size() > 0, "another document without a name or a use");
    require(parts.size() == references.size(), "references are not parallel to parts");
    for (unsigned int i = 0; i < references.size(); ++i) require(references[i].size() == 8, "a cut reference");
    for (const int release : {12, 21}) {
        VornToolsLinks::getMMLTag(&image, release, application, property, tags);
        VornToolsLinks::getMmlPublication(&image, release, application, property, publications);
        require(tags.size() == publications.size(), "tags are not parallel to publications");
        VornToolsLinks::sortImportUnpublished_and_MMLR12(&image, release, application, property, parts, references,
                                                         unpublished, older);
        require(unpublished.size() + older.size() <= parts.size(), "more imports than parts");
        require(release == 12 || older.size() == 0, "a late release in the older form");
    }
    VornToolsLinks::getExternalReference(&image, 0, application, property, references);
    VornToolsLinks::getExternalReference(&image, 0, property, application, references);
}

void checkKeys(VornToolsString& image, const std::uint8_t* data, std::size_t size) {
    VornToolsString key = stringOf(data, size < 4 ? size : 4);
    Strings keys;
    keys.append(key);
    VornToolsLinks::isKeyInFile(image, keys);
    const Strings identifiers = VornToolsLinks::findKey(&image, key);
    for (unsigned int i = 0; i < identifiers.size(); ++i) {
        require(identifiers[i].size() == 5, "an identifier of another length");
        require(image.indexOf(identifiers[i], 0, kEnd, 0) != -1, "an identifier that is not there");
    }
    int version = 0, release = 0, servicePack = 0;
    VornToolsLinks::getVersion(&image, version, release, servicePack);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const long objects = embedded::Accounting::get().live().objects;
    {
        VornToolsString image = stringOf(data, size), file("own.CATPart", 11);
        checkLinks(image, file);
        checkSteps(image, file);
        checkNames(image, file);
        checkKeys(image, data, size);
    }
    require(embedded::Accounting::get().live().objects == objects, "objects left alive");
    require(embedded::Accounting::get().live().files == 0, "files left open");
    require(embedded::Journal::get().open() == 0, "journal frames left open");
    require(embedded::ErrorReports::get().take().empty(), "an error report without an error");
    embedded::Journal::get().clear();
    return 0;
}
