#include "tools/vorntools/RunValues.h"

#include "CATIProduct.h"
#include "VornToolsMask.h"
#include "VornToolsScenes.h"

namespace {

constexpr int kGroup = 4; ///< path, scene, position, hidden

/** The library's flag; null where a scene says nothing. */
Json truthOrNull(const std::string& flag) { return flag.empty() ? Json() : Json(flag == "TRUE"); }

int listScenes(bool json) {
    Listing listing(json, {"assembly", "scene", "product", "position", "hidden"});
    const embedded::Session& session = embedded::Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i) {
        const embedded::Document document = session.documentAt(i);
        CATIProduct* const root = document.root() ? document.root().get() : nullptr;
        IEnumVARIANT* scenes = nullptr;
        long count = 0;
        if (!root || document.type() != "CATProduct" ||
            FAILED(VornToolsScenes::getAllScenesOnRoot(root, scenes, count)))
            continue;
        CATListValCATUnicodeString data;
        if (count > 0)
            VornToolsScenes::readScenesDataInAssy(textOf(document.name()), root, scenes,
                                                  CATListPtrCATMathTransformation(), count, data);
        if (scenes) scenes->Release();
        for (int at = 3; at + kGroup - 1 < data.Size(); at += kGroup)
            listing.add({document.name(), bytesOf(data[at + 1]), bytesOf(data[at]), textOrNull(bytesOf(data[at + 2])),
                         truthOrNull(bytesOf(data[at + 3]))});
    }
    listing.print();
    return ExitFine;
}

struct MaskOptions {
    std::string product;
    int mask = -1;
    std::string save;
};

int listMasks(bool json, const MaskOptions& options) {
    if (options.mask >= 0) {
        const embedded::Product product = findProduct(options.product);
        if (!product) return ExitUnusable;
        if (FAILED(VornToolsMask::setMask(product.get(), options.mask, 0))) {
            complain("the mask cannot be set");
            return ExitUnusable;
        }
    }
    Listing listing(json, {"product", "mask"});
    for (const ListedProduct& listed : allProducts()) {
        int mask = 0;
        const HRESULT code = VornToolsMask::getMask(listed.product.get(), &mask);
        listing.add({listed.path, FAILED(code) ? Json() : Json(mask)});
    }
    listing.print();
    return saveSession(options.save, ExitFine);
}

} // namespace

void addSceneTopics(Topics& topics) {
    const auto common = topics.options();
    topics.add("scenes", "Where each product stands in each scene, and whether it is hidden",
               [common] { return listScenes(common->json); });
    const auto options = std::make_shared<MaskOptions>();
    Command& masks = topics.add("masks", "The mask of every product",
                                [common, options] { return listMasks(common->json, *options); });
    masks.value("--product", "PRODUCT", "Product to mark, by the path that is shown", &options->product);
    masks.value("--set", "MASK", "Its new mask, 1 to 10; 0 takes it off", &options->mask)
        .between(0, 10)
        .needs("--product");
    masks.value("--save", "FILE", "Session file that receives the session as it is afterwards", &options->save);
}
