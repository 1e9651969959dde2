#include "VornToolsSwitchMgt.h"

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/HoldingSwitch.h"
#include "foundation/JournalFrame.h"
#include "foundation/PlatformErrors.h"
#include "session/ProductHelpers.h"
#include "session/Shapes.h"

#include "CATDocument.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "UTILFile.h"

#include <initializer_list>
#include <memory>
#include <utility>

using namespace vorntools;

const CATUnicodeString VornToolsSwitchMgt::_CteCLASS_NAME("VornToolsSwitchMgt::");

namespace {

using Modes = VornToolsWorkModeServices;

constexpr const char* kMapName = "MAP_CATIPRODUCT";

bool isPart(const CATUnicodeString& i_file_name) {
    return UTILFile::isACATPart(UTILFile::getExtension(i_file_name)) != 0;
}

/** File name, without directory, of the document that a product's reference lies in; empty while none is loaded.
 * @return the code of splitting its name, which the journal tells */
HRESULT readFileName(const JournalFrame& i_frame, CATIProduct* ipi_product, CATUnicodeString& o_file_name) {
    o_file_name = "";
    const auto read = [&]() -> HRESULT {
        const CATDocument* const p_document = documentOf(referenceOf(ipi_product));
        if (!p_document) return S_OK;
        const HRESULT code = fileNameOf(p_document->StorageName(), o_file_name);
        if (FAILED(code)) i_frame.write("UTILFile::splitPathAndFileName has failed");
        return code;
    };
    return onPlatform(read, S_OK); // a product that was switched is switched, whether it tells its name or not
}

bool isVisualised(Modes::EnumWorkMode i_mode) { return i_mode == Modes::WorkModeVisu; }
bool hasGeometry(Modes::EnumWorkMode i_mode) {
    return i_mode == Modes::WorkModeBrep || i_mode == Modes::WorkModeDesign;
}
bool lacksGeometry(Modes::EnumWorkMode i_mode) { return !hasGeometry(i_mode); }
bool isLoaded(Modes::EnumWorkMode i_mode) { return i_mode == Modes::WorkModeDefault || hasGeometry(i_mode); }
bool lacksDesign(Modes::EnumWorkMode i_mode) { return i_mode != Modes::WorkModeDesign; }

Modes::EnumWorkMode currentMode(CATIProduct* ipi_product) {
    Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
    Modes::getWorkMode(ipi_product, mode);
    return mode;
}

/** Restoring undoes what was done, so it asks nobody's leave. */
constexpr unsigned char kForced = 1;

/** A switch of the four. */
struct Switch {
    unsigned char switch_back; ///< of the switcher: whether it acts at all
    Modes::EnumWorkMode target;
    bool (*applies)(Modes::EnumWorkMode);
};

HRESULT perform(const JournalFrame& i_frame, VornToolsSwitchMgt& i_switcher, const Switch& i_switch,
                const CATUnicodeString& i_file_name, CATIProduct* ipi_product, unsigned char i_force) {
    i_frame.write("_b_switch_back = %d", static_cast<int>(i_switch.switch_back));
    if (i_switch.switch_back != 1) return S_OK;
    if (!ipi_product && FAILED(i_switcher.getCATIProduct(i_file_name, ipi_product))) {
        i_frame.write("Filename %s not found", i_file_name);
        return E_FAIL;
    }
    if (!isPart(i_file_name)) {
        i_frame.write("It is not a part");
        return E_FAIL;
    }
    const Modes::EnumWorkMode current = currentMode(ipi_product);
    if (i_switch.applies(current)) i_switcher.setWorkMode(ipi_product, i_switch.target, current, i_file_name, i_force);
    return S_OK;
}

/** The platform reaches the default mode from visualisation only. */
HRESULT restoreDefault(VornToolsSwitchMgt& i_switcher, const CATUnicodeString& i_file_name, CATIProduct* ipi_product) {
    i_switcher.switchVisu(i_file_name, ipi_product, kForced);
    return i_switcher.switchDefault(i_file_name, ipi_product, kForced);
}

/** The first of some lists that holds a name; null when none does. */
CATListValCATUnicodeString* firstWith(const CATUnicodeString& i_name,
                                      std::initializer_list<CATListValCATUnicodeString*> i_lists) {
    for (CATListValCATUnicodeString* const p_list : i_lists)
        if (p_list->Locate(i_name)) return p_list;
    return nullptr;
}

/** An entry of a map, which goes again unless it is to stay: a list beside the map may have no memory for it. */
class NewEntry {
public:
    NewEntry(TYPMapCATUnicodeStringPVoid& io_map, const CATUnicodeString& i_file_name, CATIProduct* ipi_product)
        : m_map(&io_map), m_file_name(i_file_name) {
        io_map.insert(i_file_name, ipi_product, kMapName);
    }
    ~NewEntry() {
        if (m_map) m_map->erase(m_file_name);
    }
    NewEntry(const NewEntry&) = delete;
    NewEntry& operator=(const NewEntry&) = delete;

    void stay() { m_map = nullptr; }

private:
    TYPMapCATUnicodeStringPVoid* m_map;
    const CATUnicodeString& m_file_name;
};

} // namespace

VornToolsSwitchMgt::VornToolsSwitchMgt(unsigned char switchBack)
    : m_products(nullptr), m_switchBack(switchBack), m_switchEnabled(1) {}

VornToolsSwitchMgt::~VornToolsSwitchMgt() { release(); }

HRESULT VornToolsSwitchMgt::release() {
    const JournalFrame frame(_CteCLASS_NAME, "release");
    const auto work = [&]() -> HRESULT {
        // Forgotten first: what fails on the way is not given back twice.
        const std::unique_ptr<TYPMapCATUnicodeStringPVoid> sp_products(std::exchange(m_products, nullptr));
        for (CATListValCATUnicodeString* const p_list : {&m_designs, &m_defaults, &m_visualisations})
            p_list->RemoveAll();
        if (sp_products) releaseProducts(*sp_products);
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsSwitchMgt::add(CATUnicodeString fileName, CATIProduct* product, EnumWorkMode originalMode) {
    const JournalFrame frame(_CteCLASS_NAME, "add");
    if (!product) return E_FAIL;
    CATListValCATUnicodeString* p_list = nullptr;
    if (originalMode == Modes::WorkModeVisu) p_list = &m_visualisations;
    if (originalMode == Modes::WorkModeDefault) p_list = &m_defaults;
    if (hasGeometry(originalMode)) p_list = &m_designs;
    if (!p_list || !isPart(fileName) || (m_products && m_products->contains(fileName))) return S_OK;
    if (!m_products) m_products = new TYPMapCATUnicodeStringPVoid;
    NewEntry entry(*m_products, fileName, product);
    if (!p_list->Locate(fileName)) p_list->Append(fileName);
    entry.stay();
    // Only the journal wants to know: the product is remembered whatever becomes of the question.
    if (onPlatform([product] { return product->IsReference(); }, E_FAIL) == S_OK)
        frame.write("WARNING : the product added to the switcher is a reference product");
    frame.write("Document %s has been added, its original work mode is %d", fileName, static_cast<int>(originalMode));
    return S_OK;
}

HRESULT VornToolsSwitchMgt::setWorkMode(CATIProduct* ipi_catiproduct, EnumWorkMode newMode, EnumWorkMode originalMode,
                                        CATUnicodeString fileName, unsigned char force) {
    const JournalFrame frame(_CteCLASS_NAME, "setWorkMode");
    const auto work = [&]() -> HRESULT {
        if (!force && !m_switchEnabled) {
            frame.write("Switch desabled");
            return S_OK;
        }
        if (!ipi_catiproduct) {
            frame.write("ipi_catiproduct is NULL");
            return S_OK;
        }
        if (fileName.IsNull()) readFileName(frame, ipi_catiproduct, fileName);
        if (originalMode == Modes::WorkModeUnknown && FAILED(Modes::getWorkMode(ipi_catiproduct, originalMode)))
            frame.write("VornToolsWorkModeServices::getWorkMode has failed");

        const HRESULT code = Modes::setWorkMode(ipi_catiproduct, newMode);
        if (FAILED(code)) frame.write("VornToolsWorkModeServices::setWorkMode has failed");
        if (code != S_OK || originalMode == Modes::WorkModeUnknown) return code;
        const auto remember = [&] {
            // The reference may be loaded only now.
            if (fileName.IsNull()) readFileName(frame, ipi_catiproduct, fileName);
            if (!fileName.IsNull() && FAILED(add(fileName, ipi_catiproduct, originalMode)))
                frame.write("Cannot add document %s to switcher", fileName);
        };
        if (guarded(remember)) return S_OK;
        Modes::setWorkMode(ipi_catiproduct, originalMode); // nobody else would put it back
        return E_FAIL;
    };
    return guardedButForeign(work, E_FAIL);
}

HRESULT VornToolsSwitchMgt::switchDesign(CATUnicodeString fileName, CATIProduct* product, unsigned char force) {
    const JournalFrame frame(_CteCLASS_NAME, "switchDesign");
    return guardedButForeign(
        [&] {
            return perform(frame, *this, {m_switchBack, Modes::WorkModeDesign, lacksDesign}, fileName, product, force);
        },
        E_FAIL);
}

HRESULT VornToolsSwitchMgt::switchVisu(CATUnicodeString fileName, CATIProduct* product, unsigned char force) {
    const JournalFrame frame(_CteCLASS_NAME, "switchVisu");
    return guardedButForeign(
        [&] {
            return perform(frame, *this, {m_switchBack, Modes::WorkModeVisu, isLoaded}, fileName, product, force);
        },
        E_FAIL);
}

HRESULT VornToolsSwitchMgt::switchBREP(CATUnicodeString fileName, CATIProduct* product, unsigned char force) {
    const JournalFrame frame(_CteCLASS_NAME, "switchBREP");
    return guardedButForeign(
        [&] {
            return perform(frame, *this, {m_switchBack, Modes::WorkModeBrep, lacksGeometry}, fileName, product, force);
        },
        E_FAIL);
}

HRESULT VornToolsSwitchMgt::switchDefault(CATUnicodeString fileName, CATIProduct* product, unsigned char force) {
    const JournalFrame frame(_CteCLASS_NAME, "switchDefault");
    return guardedButForeign(
        [&] {
            return perform(frame, *this, {m_switchBack, Modes::WorkModeDefault, isVisualised}, fileName, product,
                           force);
        },
        E_FAIL);
}

HRESULT VornToolsSwitchMgt::restore(CATUnicodeString fileName) {
    const JournalFrame frame(_CteCLASS_NAME, "restore");
    const auto work = [&]() -> HRESULT {
        frame.write("restoring %s", fileName);
        const CATListValCATUnicodeString* const list =
            firstWith(fileName, {&m_designs, &m_visualisations, &m_defaults});
        if (!list) return S_FALSE;
        CATIProduct* p_product = nullptr;
        if (FAILED(getCATIProduct(fileName, p_product))) {
            frame.write("Unable to get %s product in session", fileName);
            return S_FALSE;
        }
        // Kept because it is what users see: a part that was in design mode comes back as exact geometry.
        if (list == &m_designs) return switchBREP(fileName, p_product, kForced);
        if (list == &m_visualisations) return switchVisu(fileName, p_product, kForced);
        return currentMode(p_product) == Modes::WorkModeDefault ? S_FALSE : restoreDefault(*this, fileName, p_product);
    };
    return guardedButForeign(work, E_FAIL);
}

HRESULT VornToolsSwitchMgt::restoreAll(unsigned char skipModeCheck) {
    const JournalFrame frame(_CteCLASS_NAME, "restoreAll");
    const auto work = [&]() -> HRESULT {
        HRESULT code = S_FALSE;
        const auto restore_each = [&](const CATListValCATUnicodeString& i_names, const char* i_line, auto&& i_restore) {
            for (int i = 1; i <= i_names.Size(); ++i) {
                frame.write(i_line, i_names[i]);
                CATIProduct* p_product = nullptr;
                if (SUCCEEDED(getCATIProduct(i_names[i], p_product)))
                    i_restore(i_names[i], p_product);
                else
                    frame.write("Unable to get %s product in session", i_names[i]);
            }
        };
        restore_each(m_designs, "restoring %s in design", [&](const CATUnicodeString& i_name, CATIProduct* ip_product) {
            code = switchBREP(i_name, ip_product, kForced);
        });
        restore_each(m_visualisations, "restoring %s in visu",
                     [&](const CATUnicodeString& i_name, CATIProduct* ip_product) {
                         code = switchVisu(i_name, ip_product, kForced);
                     });
        restore_each(m_defaults, "restoring %s in default/visu",
                     [&](const CATUnicodeString& i_name, CATIProduct* ip_product) {
                         const bool done = !skipModeCheck && currentMode(ip_product) == Modes::WorkModeDefault;
                         if (!done) code = restoreDefault(*this, i_name, ip_product);
                     });
        return code;
    };
    return guardedButForeign(work, E_FAIL);
}

HRESULT VornToolsSwitchMgt::isInVisuMode(CATUnicodeString fileName, unsigned char& visu) {
    const JournalFrame frame(_CteCLASS_NAME, "isInVisuMode");
    visu = 0;
    const auto work = [&]() -> HRESULT {
        if (!isPart(fileName)) return S_OK;
        if (m_visualisations.Locate(fileName) || m_defaults.Locate(fileName)) {
            visu = 1;
            return S_OK;
        }
        CATIProduct* p_product = nullptr;
        if (FAILED(getCATIProduct(fileName, p_product))) {
            frame.write("Filename %s not found for SwitchDefault", fileName);
            return E_FAIL;
        }
        const EnumWorkMode current = currentMode(p_product);
        visu = current == Modes::WorkModeVisu || current == Modes::WorkModeDefault ? 1 : 0;
        return S_OK;
    };
    return guardedButForeign(work, E_FAIL);
}

unsigned char VornToolsSwitchMgt::isSwitchEnabled() const {
    const JournalFrame frame(_CteCLASS_NAME, "isSwitchEnabled");
    return m_switchEnabled;
}

void VornToolsSwitchMgt::setSwitchEnabled(unsigned char enabled) {
    const JournalFrame frame(_CteCLASS_NAME, "setSwitchEnabled");
    m_switchEnabled = enabled;
}

HRESULT VornToolsSwitchMgt::getDefaultRepName(CATIProduct* product, CATUnicodeString& name) {
    const JournalFrame frame(_CteCLASS_NAME, "getDefaultRepName");
    name = "";
    if (!product) return frame.badInput("ipi_catiproduct");
    const auto work = [&]() -> HRESULT {
        if (!referenceOf(product)) {
            EnumWorkMode mode = Modes::WorkModeUnknown;
            const HRESULT code = Modes::getWorkMode(product, mode);
            if (mode == Modes::WorkModeVisu && !m_switchEnabled) return code;
            if (mode == Modes::WorkModeVisu) setWorkMode(product, Modes::WorkModeDefault, Modes::WorkModeVisu, "", 0);
        }
        const auto sp_automation = queryInterface<CATIAProduct>(product);
        if (!sp_automation || FAILED(readDefaultShapeName(*sp_automation.get(), name)))
            frame.write("GetDefaultRepName failed.");
        else
            frame.write("o_default_shape_name : %s", name);
        return S_OK;
    };
    return guardedButForeign(work, E_FAIL);
}

HRESULT VornToolsSwitchMgt::updateDocumentName(CATUnicodeString oldName, CATUnicodeString newName) {
    const JournalFrame frame(_CteCLASS_NAME, "updateDocumentName");
    CATListValCATUnicodeString* const list = firstWith(oldName, {&m_designs, &m_defaults, &m_visualisations});
    if (!list) return S_FALSE;
    if (!guarded([&] { list->Append(newName); })) return E_FAIL;
    list->RemoveValue(oldName); // the first of the two, should they be the same
    return S_OK;
}

HRESULT VornToolsSwitchMgt::getCATIProduct(CATUnicodeString fileName, CATIProduct*& product) {
    const JournalFrame frame(_CteCLASS_NAME, "getCATIProduct");
    product = m_products ? static_cast<CATIProduct*>(m_products->find(fileName, "")) : nullptr;
    return product ? S_OK : E_FAIL;
}
