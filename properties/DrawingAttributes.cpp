#include "VornToolsCADDOCProperties.h"

#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/DocumentAttributes.h"
#include "properties/DrawingParameters.h"
#include "properties/ParameterNames.h"

#include "CATDocument.h"
#include "CATIDrawing.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCommon.h"

using namespace vorntools;

namespace {

HRESULT readDrawing(const JournalFrame& i_frame, CATDocument* ip_document, JoinValues i_join,
                    CATListValCATUnicodeString& o_pairs) {
    const auto sp_drawing = drawingOf(i_frame, ip_document);
    if (!sp_drawing) return E_FAIL;
    CATListValCATISpecObject_var parameters;
    if (FAILED(VornToolsCommon::getDrawingParameters(ip_document, sp_drawing.get(), parameters)))
        return i_frame.callFailed("getDrawingParameters");
    AttributePairs pairs(o_pairs);
    for (int i = 1; i <= parameters.Size(); ++i) {
        const auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATISpecObject*>(parameters[i]));
        const CATUnicodeString full_name = sp_parameter ? sp_parameter->Name() : CATUnicodeString();
        const CATUnicodeString name = lastSegment(full_name);
        HRESULT code = S_OK;
        if (full_name.IsNull())
            code = i_frame.missing("pi_param");
        else if (!name.IsNull())
            code = addParameter(i_frame, sp_parameter.get(), name, i_join, pairs);
        if (FAILED(code)) return code;
    }
    pairs.addGuaranteed();
    return S_OK;
}

} // namespace

HRESULT VornToolsCADDOCProperties::retrieveDrawingAttributes(CATDocument* ip_catdocument,
                                                             CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveDrawingAttributes");
    o_pairs.RemoveAll();
    const auto read = [&] { return readDrawing(frame, ip_catdocument, &getParamMultipleValues, o_pairs); };
    return frame.endWith(readGuarded(read, o_pairs));
}
