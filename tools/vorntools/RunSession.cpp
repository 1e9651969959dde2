#include "tools/vorntools/Files.h"
#include "tools/vorntools/RunCommand.h"

#include "CATDocument.h"
#include "CATDocumentsInSession.h"
#include "CATIProduct.h"
#include "CATListOfCATBaseUnknown.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include "embedded/Windows.h"

namespace {

bool contains(const CATListPtrCATDocument& list, CATDocument* document) { return list.Locate(document) > 0; }

int listDocuments(bool json) {
    CATListPtrCATDocument managed, roots;
    VornToolsCommon::getDocumentsInSession(managed, "");
    VornToolsCommon::getAllRootDocuments("", roots, 0);
    Listing listing(json, {"document", "type", "managed", "in_window"});
    const embedded::Session& session = embedded::Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const embedded::Document document = session.documentAt(i);
        if (!document.loaded()) continue;
        listing.add(
            {document.name(), document.type(), contains(managed, document.get()), contains(roots, document.get())});
    }
    listing.print();
    return ExitFine;
}

int listWindows(bool json) {
    CATListValCATUnicodeString names;
    VornToolsCommon::getAllRootDocNameFromWindows(names);
    unsigned char desktop = 0;
    VornToolsCommon::desktopIsActiveWindow(desktop);
    CATDocument* active = nullptr;
    VornToolsCommon::getActiveCATDocument(active, 0);
    // The list has file names without directory.
    const std::string activeName = active ? fileNameOf(bytesOf(active->StorageName())) : std::string();
    Listing listing(json, {"document", "active"});
    for (int i = 1; i <= names.Size(); ++i) listing.add({bytesOf(names[i]), active && bytesOf(names[i]) == activeName});
    if (desktop) listing.add({"(desk)", true});
    listing.print();
    return ExitFine;
}

/** Which window's document leads to a file. */
int findFile(bool json, const std::string& file, const std::string& shape) {
    VornToolsSwitchMgt switcher{1};
    CATDocument* document = nullptr;
    CATDocument* root = nullptr;
    CATIProduct* received = nullptr;
    unsigned char found = 0;
    const std::string asked = file == fileNameOf(file) ? file : fullNameOf(file);
    VornToolsCommon::analyzeWindowsInSession(textOf(asked), textOf(shape), &switcher, document, found, root, received);
    CATUnicodeString path;
    if (received) {
        VornToolsCommon::getProductPath(received, path);
        received->Release();
    }
    Listing listing(json, {"file", "found", "window", "document", "product"});
    listing.add({file, found != 0, root ? Json(bytesOf(root->StorageName())) : Json(),
                 document ? Json(bytesOf(document->StorageName())) : Json(), textOrNull(bytesOf(path))});
    listing.print();
    return found ? ExitFine : ExitFindings;
}

int listSelection(bool json) {
    CATListPtrCATBaseUnknown products;
    CATListValCATUnicodeString names;
    const HRESULT code = VornToolsCommon::getSelectedProducts(products);
    VornToolsCommon::getAllDocNameFromSelection(names);
    Listing listing(json, {"product", "document"});
    for (int i = 1; i <= products.Size(); ++i) {
        auto* const product = static_cast<CATIProduct*>(products[i]);
        CATUnicodeString path, name;
        CATDocument* document = nullptr;
        VornToolsCommon::getProductPath(product, path);
        VornToolsCommon::getDocumentFileName(product, document, name);
        listing.add({bytesOf(path), bytesOf(name)});
        product->Release();
    }
    listing.print();
    if (FAILED(code)) complain("no editor, or one without a selection");
    return FAILED(code) ? ExitFindings : ExitFine;
}

} // namespace

void addSessionTopics(Topics& topics) {
    const auto options = topics.options();
    topics.add("documents", "Documents in session: which ones the PDM manages, which ones have a window",
               [options] { return listDocuments(options->json); });

    const auto file = std::make_shared<std::string>();
    const auto shape = std::make_shared<std::string>();
    Command& windows =
        topics.add("windows", "Documents of the windows, or which window leads to a file", [options, file, shape] {
            return file->empty() ? listWindows(options->json) : findFile(options->json, *file, *shape);
        });
    windows.value("--find", "FILE", "File name to look for below the windows' documents", file.get());
    windows.value("--shape", "NAME", "Shape representation of a file that is no document of CATIA", shape.get());

    topics.add("selection", "Selected products and their documents",
               [options] { return listSelection(options->json); });
}
