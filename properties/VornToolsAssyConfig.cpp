#include "VornToolsAssyConfig.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATListOfCATUnicodeString.h"
#include "VornToolsCommon.h"

using namespace vorntools;

const CATUnicodeString VornToolsAssyConfig::_CteCLASS_NAME("VornToolsAssyConfig::");

namespace {

constexpr const char* kItemRevUid = "MaroAssyConfigItemRevUID";
constexpr const char* kDatasetUid = "MaroAssyConfigDatasetUID";
constexpr const char* kNamedRefUid = "MaroAssyConfigNamedRefUID";
constexpr const char* kFileName = "MaroAssyConfigFileName";

/** The user properties of a product; none when they cannot be read. */
struct UserProperties {
    explicit UserProperties(CATIProduct* ipi_product) {
        if (FAILED(VornToolsCommon::getUserProperties(ipi_product, names, values))) names.RemoveAll();
    }
    /** @return false, and nothing is written, when there is no property of that name */
    bool read(const char* i_name, CATUnicodeString& o_value) const {
        const int position = names.Locate(i_name);
        if (position < 1 || position > values.Size()) return false;
        o_value = values[position];
        return true;
    }

    CATListValCATUnicodeString names;
    CATListValCATUnicodeString values;
};

} // namespace

unsigned char VornToolsAssyConfig::hasMaroAssyConfigProperty(CATIProduct* ipi_product, CATUnicodeString& o_itemrev_uid,
                                                             CATUnicodeString& o_dataset_uid,
                                                             CATUnicodeString& o_named_ref_uid,
                                                             CATUnicodeString& o_file_name) {
    const JournalFrame frame(_CteCLASS_NAME, "hasMaroAssyConfigProperty");
    const struct {
        const char* name;
        CATUnicodeString& value;
    } keys[] = {{kItemRevUid, o_itemrev_uid},
                {kDatasetUid, o_dataset_uid},
                {kNamedRefUid, o_named_ref_uid},
                {kFileName, o_file_name}};
    const auto clear = [&] {
        for (const auto& key : keys) key.value = "";
    };
    clear();
    unsigned char found = 0;
    const bool read = guarded([&] {
        const UserProperties properties(ipi_product);
        for (const auto& key : keys)
            if (properties.read(key.name, key.value)) found = 1;
    });
    if (!read) {
        found = 0;
        clear();
    }
    frame.writeInDebug("Function hasMaroAssyConfigProperty returns %d, o_itemrev_uid=[%s], o_dataset_uid=[%s], "
                       "o_named_ref_uid=[%s], o_file_name=[%s]",
                       static_cast<int>(found), o_itemrev_uid, o_dataset_uid, o_named_ref_uid, o_file_name);
    return found;
}

unsigned char VornToolsAssyConfig::isAssyConfigRootProduct(CATIProduct* ipi_product) {
    const JournalFrame frame(_CteCLASS_NAME, "isAssyConfigRootProduct");
    const auto ask = [&] {
        CATUnicodeString dataset_uid;
        return UserProperties(ipi_product).read(kDatasetUid, dataset_uid);
    };
    const bool is_root = guarded(ask, false);
    frame.write("Function isAssyConfigRootProduct returns %d", is_root ? 1 : 0);
    return is_root ? 1 : 0;
}
