#ifndef VornToolsScenes_H
#define VornToolsScenes_H

#include "CATErrorDef.h"
#include "CATLISTP_CATMathTransformation.h"
#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"
#include "IEnumVARIANT.h"

class CATIProduct;

/**
 * Reads the scenes of an assembly: named views in which each product may stand elsewhere or be hidden. All static.
 *
 * A product path is the product's instance name and those of its parents up to the root, joined by "!". A position is
 * 12 numbers: the three columns of the rotation, then the translation. The scenes data list is flat:
 *
 *     "<CATProduct>", NAME, { PATH, SCENE, POSITION, HIDDEN } for each product and scene, "</CATProduct>"
 *
 * with HIDDEN "TRUE", "FALSE" or empty; docs/scenes.md describes it. A group is shorter when its scene does not answer.
 */
class ExportedByVornTools VornToolsScenes {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * The scenes that a root product keeps.
     * @param opi_scenes a walk that stands before the first scene, released by the caller; null on failure
     * @param o_count number of scenes; 0 on failure
     * @return S_OK or the code of what failed
     */
    static HRESULT getAllScenesOnRoot(CATIProduct* ipi_root, IEnumVARIANT*& opi_scenes, long& o_count);

    /** Names of the scenes of a root product, in their order. A scene that does not tell its name is reported and left
     * out; a walk that breaks off is reported and gives the names before. @return the code of getAllScenesOnRoot */
    static HRESULT readScenesNamesInAssy(CATIProduct* ipi_root, CATListValCATUnicodeString& o_names);

    /**
     * Reads the scenes data list of an assembly.
     * @param i_root_name name of the root document, which is emptied for a call on a part of an assembly: the groups
     * are then appended to what the list holds, and the next two arguments count
     * @param ipi_scenes the scenes of the root, before the first one; ends there again
     * @param i_parent_positions absolute position of the parent in each scene; a scene for which there is none is read
     * as if the parent were not in it
     * @param i_count number of scenes
     * @param o_data emptied at the start when there is a root name
     * @return S_OK, also when there are no scenes or no children to read (reported); E_FAIL for a null parent, when the
     * root name cannot be split and for want of memory: nothing has been appended then
     */
    static HRESULT readScenesDataInAssy(CATUnicodeString i_root_name, CATIProduct* ipi_parent, IEnumVARIANT* ipi_scenes,
                                        CATListPtrCATMathTransformation i_parent_positions, long i_count,
                                        CATListValCATUnicodeString& o_data);

    /**
     * @param o_path the product path; a name that cannot be read is an empty one
     * @param o_has_component_parent 1 when a parent is a component
     * @return S_OK; E_FAIL for a null product, the outputs are then empty and 0
     */
    static HRESULT getParentsWithComponents(CATIProduct* ipi_product, CATUnicodeString& o_path,
                                            unsigned char& o_has_component_parent);

    /**
     * Whether a parent of a product is hidden in a scene. Goes up to the first hidden parent that is no component.
     * @param o_hidden_by_parent "TRUE" when such a parent is hidden, else "FALSE"
     * @param o_hidden_by_component "TRUE" when a component below it, or any without it, is hidden, else "FALSE"
     * @return S_OK; E_FAIL for a null product, both are then "FALSE"
     */
    static HRESULT hasParentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                        CATUnicodeString i_scene_name, CATUnicodeString& o_hidden_by_parent,
                                        CATUnicodeString& o_hidden_by_component);

    /** Whether one of the components directly above a product, up to the first parent that is none, is hidden.
     * @param o_hidden "TRUE" or "FALSE"; "FALSE" on failure. @return as hasParentHideInScene */
    static HRESULT hasParentComponentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                                 CATUnicodeString i_scene_name, CATUnicodeString& o_hidden);

    /** Writes a position as text: 12 numbers of up to 16 digits with a point, one blank between them.
     * @param op_buffer room for 300 characters; null is allowed, null numbers give the empty text */
    static void getMatrixString(double i_values[12], char* op_buffer);

    /** Composes two positions: `b` within `a`. @param op_result 12 numbers; may be one of the two. Nothing happens when
     * one of them is null. */
    static void multiplyPositionMatrix(double* ip_a, double* ip_b, double* op_result);

    /** The text with every occurrence of a pattern replaced. An empty pattern occurs nowhere. */
    static CATUnicodeString replaceAll(CATUnicodeString i_text, const CATUnicodeString& i_pattern,
                                       const CATUnicodeString& i_replacement);
};

#endif
