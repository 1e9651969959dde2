#ifndef VornToolsWorkModeServices_H
#define VornToolsWorkModeServices_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * How far the products of the session are loaded. Nothing is switched until the platform's cache is known to be
 * activated. Main thread only. VornToolsSwitchMgt remembers what it switched and puts it back.
 *
 * @par Example
 * @snippet session.cpp VornToolsWorkModeServices
 */
class ExportedByVornTools VornToolsWorkModeServices {
public:
    /** "VornToolsWorkModeServices::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** How much of a product is loaded; each mode holds more than the one before. */
    enum EnumWorkMode : int {
        WorkModeUnknown = 0, ///< what every failed reading gives
        WorkModeVisu = 1,    ///< visualisation: the picture of the cache
        WorkModeDefault = 2, ///< what the platform loads by itself
        WorkModeBrep = 3,    ///< exact geometry
        WorkModeDesign = 4   ///< everything
    };

    /**
     * The platform's answer.
     * @param product in its place in the structure: each place has a mode of its own
     * @param mode WorkModeUnknown on failure
     * @return S_OK; E_FAIL, reported, for a null product, a platform that does not tell and a number that is no mode
     */
    static HRESULT getWorkModeCAA(CATIProduct* product, EnumWorkMode& mode);
    /**
     * The platform's answer; where it does not tell, a product that shows the picture of a part is in visualisation.
     * @param product in its place in the structure: each place has a mode of its own
     * @param mode WorkModeUnknown on failure
     * @return S_OK; E_FAIL, reported, when neither tells
     */
    static HRESULT getWorkMode(CATIProduct* product, EnumWorkMode& mode);
    /**
     * Whether a part is shown by a ".cgr" file, by the name of its master representation; nothing is loaded.
     * @param product an instance of a part
     * @param visual 0 on failure
     * @return S_OK; E_FAIL when the product has no such representation (reported), it is not that of a part or memory
     * does not suffice
     */
    static HRESULT isVisualWorkMode(CATIProduct* product, unsigned char& visual);
    /**
     * Allows switches, or forbids them (at first), for the whole process.
     * @param activated whether the platform's visualisation cache is: without it the platform has only one mode
     * @return S_OK
     */
    static HRESULT setCatiaCacheActivated(unsigned char activated);
    /**
     * Switches a product and looks whether it followed.
     * @param product in its place in the structure
     * @param mode WorkModeVisu to WorkModeDesign
     * @return S_FALSE while switches are forbidden; S_OK, also when the new mode cannot be read back; E_FAIL for a null
     * product, an unknown mode, a platform that fails or throws one of its errors, and a product that did not follow.
     * Whatever else the platform throws passes through
     */
    static HRESULT setWorkMode(CATIProduct* product, EnumWorkMode mode);

private:
    static unsigned char _is_catia_cache_activated;
};

#endif
