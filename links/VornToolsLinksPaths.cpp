#include "VornToolsLinks.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/FolderSearch.h"
#include "links/LinkLists.h"
#include "links/LinkedNames.h"

#include <memory>
#include <new>
#include <string>

// Names and paths.

using namespace vorntools;

namespace {

VornToolsString* resolved(const JournalFrame& i_frame, const VornToolsString* ip_own_path,
                          const VornToolsString* ip_file_name, const VornToolsString* ip_linked_name,
                          const CATUnicodeString& i_directory) {
    if (!ip_linked_name) {
        i_frame.badInput("ip_linked_name");
        return new (std::nothrow) VornToolsString;
    }
    std::unique_ptr<VornToolsString> sp_found(
        new (std::nothrow) VornToolsString(ip_linked_name->bytes(), static_cast<int>(ip_linked_name->size())));
    if (!sp_found) return nullptr;
    guarded([&] {
        KnownFolders folders;
        LinkedNames names(viewOf(ip_own_path), viewOf(ip_file_name), viewOf(i_directory), folders);
        *sp_found = stringOf(names.resolve(std::string(viewOf(*ip_linked_name))));
    });
    return sp_found.release();
}

} // namespace

unsigned char VornToolsLinks::isAFilename(const VornToolsString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "isAFilename");
    return isBareName(viewOf(name)) ? 1 : 0;
}

const char* VornToolsLinks::findFileInPath(const char* fileName, const char* directory) {
    const JournalFrame frame(_CteCLASS_NAME, "findFileInPath");
    if (fileName && directory) return guarded([&] { return findBelow(fileName, directory); }, nullptr);
    frame.badInput(fileName ? "ip_directory" : "ip_file_name");
    return nullptr;
}

int VornToolsLinks::replaceSeparatorInString(VornToolsString& path) {
    const JournalFrame frame(_CteCLASS_NAME, "replaceSeparatorInString");
    path.replaceAll(VornToolsString("/", 1), VornToolsString("\\", 1));
    return 0;
}

VornToolsString* VornToolsLinks::realLinkedDocPath(VornToolsString* ownPath, VornToolsString* fileName,
                                                   VornToolsString* linkedName, CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "realLinkedDocPath");
    return resolved(frame, ownPath, fileName, linkedName, directory);
}

VornToolsString* VornToolsLinks::realLinkedDocPath_2(VornToolsString* ownPath, VornToolsString* fileName,
                                                     VornToolsString* linkedName, CATUnicodeString directory) {
    const JournalFrame frame(_CteCLASS_NAME, "realLinkedDocPath_2");
    return resolved(frame, ownPath, fileName, linkedName, directory);
}
