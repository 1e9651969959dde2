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
 * that a search or another service of the library switched holds a reference until then. docs/work-modes.md tells the
 * modes and when a switch is possible.
 *
 * @par Example
 * @snippet session.cpp VornToolsSwitchMgt
 */
class ExportedByVornTools VornToolsSwitchMgt {
public:
    /** The work modes, under the switcher's own name. */
    using EnumWorkMode = VornToolsWorkModeServices::EnumWorkMode;

    /** "VornToolsSwitchMgt::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * No part is remembered, and switching is enabled.
     * @param switchBack 1: switchDesign, switchVisu, switchBREP and switchDefault act; any other value turns these four
     * off, and with them restore and restoreAll
     */
    explicit VornToolsSwitchMgt(unsigned char switchBack);
    /** Forgets every part as release() does; none is put back. */
    virtual ~VornToolsSwitchMgt();
    VornToolsSwitchMgt(const VornToolsSwitchMgt&) = delete;
    VornToolsSwitchMgt& operator=(const VornToolsSwitchMgt&) = delete;

    /**
     * Forgets every part and gives back the references on those that the library switched. None is put back.
     * @return S_OK
     */
    HRESULT release();
    /**
     * Puts one part back, whether switching is enabled or not. It stays remembered. A part found in design mode comes
     * back as exact geometry.
     * @param fileName without directory, as it was remembered
     * @return S_FALSE for a name that is not remembered, a product that is not known any more, and a part that has its
     * default mode already; else the code of the last switch
     */
    HRESULT restore(CATUnicodeString fileName);
    /**
     * Puts all parts back, whether switching is enabled or not. They stay remembered.
     * @param skipModeCheck 0: a part that has its default mode already is left alone
     * @return the last switch's code; S_FALSE when nothing was switched
     */
    HRESULT restoreAll(unsigned char skipModeCheck);

    /**
     * Switches a part to design mode, whatever other mode it has.
     * @param fileName without directory; one that is no part's fails
     * @param product null: the one remembered under the name
     * @param force 1: also while switching is disabled
     * @return E_FAIL for a name that is not remembered and for a file that is no part; else S_OK, whatever came of the
     * switch
     */
    HRESULT switchDesign(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /**
     * Switches a part to visualisation from the default mode, exact geometry or design mode.
     * @param fileName without directory; one that is no part's fails
     * @param product null: the one remembered under the name
     * @param force 1: also while switching is disabled
     * @return as switchDesign
     */
    HRESULT switchVisu(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /**
     * Switches a part to exact geometry, unless it has that or design mode.
     * @param fileName without directory; one that is no part's fails
     * @param product null: the one remembered under the name
     * @param force 1: also while switching is disabled
     * @return as switchDesign
     */
    HRESULT switchBREP(CATUnicodeString fileName, CATIProduct* product, unsigned char force);
    /**
     * Switches a part from visualisation to the default mode.
     * @param fileName without directory; one that is no part's fails
     * @param product null: the one remembered under the name
     * @param force 1: also while switching is disabled
     * @return as switchDesign
     */
    HRESULT switchDefault(CATUnicodeString fileName, CATIProduct* product, unsigned char force);

    /**
     * Switches a product and remembers a part with the mode that it had.
     * @param ipi_catiproduct any product; parts alone are remembered
     * @param newMode the mode to reach
     * @param originalMode the mode that the product has; WorkModeUnknown: it is asked
     * @param fileName without directory; empty: taken from the product
     * @param force 1: also while switching is disabled
     * @return S_OK also for a null product and while switching is disabled; else the code of
     * VornToolsWorkModeServices::setWorkMode
     */
    HRESULT setWorkMode(CATIProduct* ipi_catiproduct, EnumWorkMode newMode, EnumWorkMode originalMode,
                        CATUnicodeString fileName, unsigned char force);
    /**
     * Whether a part is, or was before its first switch, in visualisation or default mode.
     * @param fileName without directory
     * @param visu 1 or 0; 0 for every file that is no part
     * @return S_OK; E_FAIL for a part that is not remembered
     */
    HRESULT isInVisuMode(CATUnicodeString fileName, unsigned char& visu);
    /**
     * Whether searches and switches without force may switch.
     * @return as setSwitchEnabled was told; 1 at first
     */
    unsigned char isSwitchEnabled() const;
    /**
     * Enables or disables what switches without force. Putting back always acts.
     * @param enabled 1 or 0
     */
    void setSwitchEnabled(unsigned char enabled);
    /**
     * Name of the default shape representation; a part in visualisation that is not loaded is switched to its default
     * mode for that.
     * @param product any product
     * @param name empty when the product does not tell, which is S_OK
     * @return S_OK; E_FAIL, reported, for a null product. While switching is disabled a part in visualisation is not
     * asked
     */
    HRESULT getDefaultRepName(CATIProduct* product, CATUnicodeString& name);
    /**
     * A remembered name gets a new one and moves to the end of its list; its product stays under the old name. Kept
     * because callers look products up by the name they switched.
     * @param oldName without directory
     * @param newName without directory
     * @return S_OK; S_FALSE when the name is not remembered; E_FAIL, and the old name stays, for want of memory
     */
    HRESULT updateDocumentName(CATUnicodeString oldName, CATUnicodeString newName);
    /**
     * The product that is remembered under a name, whoever switched it.
     * @param fileName without directory, as it was switched
     * @param product no reference is added; null on failure
     * @return S_OK; E_FAIL when there is none
     */
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
