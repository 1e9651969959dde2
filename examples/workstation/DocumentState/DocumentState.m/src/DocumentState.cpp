// The smallest module that uses the library: the state of each document named, and what it points to.

#include "VornCache.h"
#include "VornToolsCommon.h"
#include "VornToolsLinks.h"

#include <cstdio>
#include <memory>

namespace {

const char* nameOf(VornCache::EnumModifiedFlag i_flag) {
    if (i_flag == VornCache::ModifiedFlagNew) return "new";
    return i_flag == VornCache::ModifiedFlagNotModified ? "not modified" : "modified";
}

void printLinks(const CATUnicodeString& i_document) {
    const std::unique_ptr<VornToolsString> sp_image(VornToolsCommon::readBinaryFile(i_document));
    if (!sp_image) return;
    VornToolsString file_name(i_document.ConvertToChar(), i_document.GetLengthInByte());
    const VornToolsVector<VornToolsLink> links = VornToolsLinks::getAllLinks(sp_image.get(), &file_name, "");
    for (unsigned int i = 0; i < links.size(); ++i)
        std::printf("    %s %s\n", links[i].get_type().ConvertToChar(), links[i].get_linkedFileName().ConvertToChar());
}

} // namespace

int main(int i_count, char** ip_arguments) {
    VornCache cache;
    for (int i = 1; i < i_count; ++i) {
        const CATUnicodeString document(ip_arguments[i]);
        cache.addDocument(document, nullptr);
        VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
        cache.getModifiedStatus(document, flag);
        std::printf("%s: %s\n", document.ConvertToChar(), nameOf(flag));
        printLinks(document);
    }
    return 0;
}
