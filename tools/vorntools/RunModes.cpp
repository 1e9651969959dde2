#include "tools/vorntools/RunValues.h"

#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"

#include <array>

namespace {

using Modes = VornToolsWorkModeServices;

constexpr std::array<const char*, 5> kModeNames = {"unknown", "visu", "default", "brep", "design"};

const char* modeOf(const embedded::Product& product) {
    Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
    Modes::getWorkMode(product.get(), mode);
    return kModeNames[static_cast<std::size_t>(mode)];
}

int listModes(bool json) {
    Listing listing(json, {"product", "mode"});
    for (const ListedProduct& listed : allProducts()) listing.add({listed.path, modeOf(listed.product)});
    listing.print();
    return ExitFine;
}

struct SwitchOptions {
    std::vector<std::string> products;
    std::string mode = "design";
    std::string save;
};

Modes::EnumWorkMode modeNamed(const std::string& name) {
    for (std::size_t i = 1; i < kModeNames.size(); ++i)
        if (name == kModeNames[i]) return static_cast<Modes::EnumWorkMode>(i);
    return Modes::WorkModeUnknown;
}

/** Switches products, shows how they followed and, when wanted, puts them back. */
int switchProducts(bool json, const SwitchOptions& options, bool restores) {
    std::vector<ListedProduct> products;
    for (const std::string& path : options.products) {
        const embedded::Product product = findProduct(path);
        if (!product) return ExitUnusable;
        products.push_back({product, path});
    }
    VornToolsSwitchMgt switcher{1};
    std::vector<const char*> keys = {"product", "before", "switched"};
    if (restores) keys.push_back("restored");
    std::vector<std::vector<Json>> rows;
    bool followed = true;
    for (const ListedProduct& listed : products) {
        const std::string before = modeOf(listed.product);
        switcher.setWorkMode(listed.product.get(), modeNamed(options.mode), Modes::WorkModeUnknown, "", 0);
        const std::string switched = modeOf(listed.product);
        followed = followed && switched == options.mode;
        rows.push_back({listed.path, before, switched});
    }
    if (restores) switcher.restoreAll(0);
    Listing listing(json, keys);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (restores) rows[i].push_back(modeOf(products[i].product));
        listing.add(rows[i]);
    }
    listing.print();
    return saveSession(options.save, followed ? ExitFine : ExitFindings);
}

void addSwitchTopic(Topics& topics, const char* name, const char* description, bool restores) {
    const auto common = topics.options();
    const auto options = std::make_shared<SwitchOptions>();
    Command& topic = topics.add(
        name, description, [common, options, restores] { return switchProducts(common->json, *options, restores); });
    topic.value("product", "PRODUCT", "Products, by the path that \"modes\" shows", &options->products).required();
    topic.value("--to", "MODE", "The mode to switch to: visu, default, brep or design (the usual one)", &options->mode)
        .oneOf({"visu", "default", "brep", "design"});
    topic.value("--save", "FILE", "Session file that receives the session as it is afterwards", &options->save);
}

} // namespace

void addModeTopics(Topics& topics) {
    const auto options = topics.options();
    topics.add("modes", "How far every product is loaded", [options] { return listModes(options->json); });
    addSwitchTopic(topics, "switch", "Switches products to another mode", false);
    addSwitchTopic(topics, "restore", "Switches products and puts them back as a command would", true);
}
