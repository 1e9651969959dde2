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
 *
 * @par Example
 * @snippet nodes.cpp VornToolsScenes
 */
class ExportedByVornTools VornToolsScenes {
public:
    /** "VornToolsScenes::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * The scenes that a root product keeps.
     * @param ipi_root a root product; null is reported
     * @param opi_scenes a walk that stands before the first scene, released by the caller; null on failure
     * @param o_count number of scenes; 0 on failure
     * @return S_OK or the code of what failed
     */
    static HRESULT getAllScenesOnRoot(CATIProduct* ipi_root, IEnumVARIANT*& opi_scenes, long& o_count);

    /**
     * Names of the scenes of a root product, in their order. A scene that does not tell its name is reported and left
     * out; a walk that breaks off is reported and gives the names before.
     * @param ipi_root a root product; null is reported
     * @param o_names empty on failure
     * @return the code of getAllScenesOnRoot
     */
    static HRESULT readScenesNamesInAssy(CATIProduct* ipi_root, CATListValCATUnicodeString& o_names);

    /**
     * Reads the scenes data list of an assembly.
     * @param i_root_name name of the root document, which is emptied for a call on a part of an assembly: the groups
     * are then appended to what the list holds, and the next two arguments count
     * @param ipi_parent the root, or a part of the assembly
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
     * The product path, by which the scenes data list names a product.
     * @param ipi_product an instance
     * @param o_path a name that cannot be read is an empty one
     * @param o_has_component_parent 1 when a parent is a component
     * @return S_OK; E_FAIL, reported, for a null product, and the code of a parent that cannot be reached: the outputs
     * are then empty and 0
     */
    static HRESULT getParentsWithComponents(CATIProduct* ipi_product, CATUnicodeString& o_path,
                                            unsigned char& o_has_component_parent);

    /**
     * Whether a parent of a product is hidden in a scene. Goes up to the first hidden parent that is no component.
     * @param ipi_product an instance
     * @param i_scenes_data as readScenesDataInAssy gives it
     * @param i_scene_name letter case included
     * @param o_hidden_by_parent "TRUE" when such a parent is hidden, else "FALSE"
     * @param o_hidden_by_component "TRUE" when a component below it, or any without it, is hidden, else "FALSE"
     * @return S_OK; E_FAIL, reported, for a null product, and the code of a parent that cannot be reached: both are
     * then "FALSE"
     */
    static HRESULT hasParentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                        CATUnicodeString i_scene_name, CATUnicodeString& o_hidden_by_parent,
                                        CATUnicodeString& o_hidden_by_component);

    /**
     * Whether one of the components directly above a product, up to the first parent that is none, is hidden.
     * @param ipi_product an instance
     * @param i_scenes_data as readScenesDataInAssy gives it
     * @param i_scene_name letter case included
     * @param o_hidden "TRUE" or "FALSE"; "FALSE" on failure
     * @return as hasParentHideInScene
     */
    static HRESULT hasParentComponentHideInScene(CATIProduct* ipi_product, CATListValCATUnicodeString i_scenes_data,
                                                 CATUnicodeString i_scene_name, CATUnicodeString& o_hidden);

    /**
     * Writes a position as text: 12 numbers of up to 16 digits with a point, one blank between them, and a NUL.
     * @param i_values null gives the empty text
     * @param op_buffer room for 300 characters; null is allowed
     */
    static void getMatrixString(double i_values[12], char* op_buffer);

    /**
     * Composes two positions: `b` within `a`. Nothing happens when an argument is null.
     * @param ip_a position of the parent
     * @param ip_b position within the parent
     * @param op_result 12 numbers; may be one of the two
     */
    static void multiplyPositionMatrix(double* ip_a, double* ip_b, double* op_result);

    /**
     * Replaces every occurrence of a pattern, left to right. An empty pattern occurs nowhere.
     * @param i_text where the pattern is looked for
     * @param i_pattern letter case included
     * @param i_replacement may hold the pattern
     * @return the new text; the old one, reported, for want of memory
     */
    static CATUnicodeString replaceAll(CATUnicodeString i_text, const CATUnicodeString& i_pattern,
                                       const CATUnicodeString& i_replacement);
};

#endif
