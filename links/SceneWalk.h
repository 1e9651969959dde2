#ifndef LINKS_SCENE_WALK_H
#define LINKS_SCENE_WALK_H

#include "foundation/AutomationValue.h"
#include "foundation/JournalFrame.h"

#include "IEnumVARIANT.h"

namespace vorntools {

/** Calls `visit(CATBaseDispatch* scene, long index)` for each scene from where the walk stands, index from 1. A walk
 * that breaks off is reported; the scenes before count. */
template <class Visit>
void forEachScene(const JournalFrame& i_frame, IEnumVARIANT* ipi_scenes, long i_count, Visit&& i_visit) {
    for (long index = 1; index <= i_count; ++index) {
        AutomationValue scene;
        ULONG fetched = 0;
        const HRESULT code = scene.receive([&](CATVariant& o_item) { return ipi_scenes->Next(1, &o_item, &fetched); });
        if (FAILED(code)) i_frame.callFailed("Next");
        if (code != S_OK) return;
        if (fetched == 1) i_visit(scene.object(), index);
    }
}

/** @return E_FAIL, reported, for a scene that does not tell its name */
HRESULT readSceneName(const JournalFrame& i_frame, CATBaseDispatch* ipi_scene, CATUnicodeString& o_name);

} // namespace vorntools

#endif
