#ifndef VornToolsSwitchMgt_H
#define VornToolsSwitchMgt_H

#include "CATErrorDef.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"
#include "VornToolsWorkModeServices.h"

namespace vorntools {
class HoldingSwitch;
}
class CATIProduct;
class TYPMapCATUnicodeStringPVoid;

/**
 * Switches parts to another work mode and puts them back as the user had them. One switcher serves one operation: it
 * remembers each part by its file name, without directory, with the mode that it had before its first switch. A product
 * that somebody switches through these methods is not referenced: it must outlive the switcher or its release(). One
 * that a search or another service of the library switched holds a reference until then.
 */
class ExportedByVornTools VornToolsSwitchMgt {
public:
    using EnumWorkMode = VornToolsWorkModeServices::EnumWorkMode;

    static const CATUnicodeString _CteCLASS_NAME;

    /** @param switchBack 1: the four switches act; any other value turns them off */
    explicit VornToolsSwitchMgt(unsigned char switchBack);
    virtual ~VornToolsSwitchMgt();
    VornToolsSwitchMgt(const VornToolsSwitchMgt&) = delete;
    VornToolsSwitchMgt& operator=(const VornToolsSwitchMgt&) = delete;

    /** Forgets every part and gives back the references on those that the library switched. */
    HRESULT release();
    /**
     * Puts one part back, whether switching is enabled or not. It stays remembered.
     * @return S_FALSE for a name that is not remembered, a product that is not known any more, and a part that has its
     * default mode already; else the code of the last switch. A part found in design mode comes back as exact geometry
     */
    HRESULT restore(CATUnicodeString fileName);
    /** Puts all parts back. @param skipModeCheck 0: a part that has its default mode already is left alone.
     * @return the last switch's code; S_FALSE when nothing was switched */
    HRESULT restoreAll(unsigned char skipModeCheck);

    // The four switches. @param product null: the one remembered under the name. @param force 1: also while switching
    // is disabled. @return E_FAIL for a name that is not remembered and for a file that is no part; else S_OK, whatever
    // came of the switch

    /** From 1, 2 and 3. */
    HRESULT switchDesign(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /** From 2, 3 and 4. */
    HRESULT switchVisu(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /** From 1 and 2. */
    HRESULT switchBREP(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /** From 1. */
    HRESULT switchDefault(CATUnicodeString fileName, CATIProduct* product, unsigned char force);

    /**
     * Switches a product and remembers a part with the mode that it had.
     * @param originalMode WorkModeUnknown: the product is asked. @param fileName empty: taken from the product
     * @return S_OK also for a null product and while switching is disabled; else the code of the switch
     */
    HRESULT setWorkMode(CATIProduct* ipi_catiproduct, EnumWorkMode newMode, EnumWorkMode originalMode,
                        CATUnicodeString fileName, unsigned char force);
    /** Whether a part is, or was before its first switch, in visualisation or default mode; 0 for every other file.
     * @return E_FAIL for a part that is not remembered */
    HRESULT isInVisuMode(CATUnicodeString fileName, unsigned char& visu);
    unsigned char isSwitchEnabled() const;
    void setSwitchEnabled(unsigned char enabled);
    /** Name of the default shape representation; a part in visualisation is switched to its default mode for that.
     * @param name empty when the product does not tell, which is S_OK. @return E_FAIL, reported, for a null product;
     * while switching is disabled a part in visualisation is not asked */
    HRESULT getDefaultRepName(CATIProduct* product, CATUnicodeString& name);
    /** A remembered name gets a new one and moves to the end of its list; its product stays under the old name. Kept
     * because callers look products up by the name they switched. @return S_FALSE when the name is not remembered */
    HRESULT updateDocumentName(CATUnicodeString oldName, CATUnicodeString newName);
    /** @param product remembered under the name, whoever switched it; no reference is added; null, with E_FAIL, when
     * there is none */
    HRESULT getCATIProduct(CATUnicodeString fileName, CATIProduct*& product);

private:
    friend class vorntools::HoldingSwitch;

    HRESULT add(CATUnicodeString fileName, CATIProduct* product, EnumWorkMode originalMode);

    TYPMapCATUnicodeStringPVoid* m_products; ///< file name to product, "MAP_CATIPRODUCT"
    unsigned char m_switchBack;
    unsigned char m_switchEnabled;
    CATListValCATUnicodeString m_designs;        ///< file names first found in mode 3 or 4
    CATListValCATUnicodeString m_defaults;       ///< in mode 2
    CATListValCATUnicodeString m_visualisations; ///< in mode 1
};

#endif
