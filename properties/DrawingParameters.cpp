#include "properties/DrawingParameters.h"

#include "foundation/InterfaceIds.h"
#include "properties/ParametersByShortName.h"

#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParmFactory.h"
#include "CATIDftDocumentServices.h"
#include "CATIDrawing.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCommon.h"

using namespace vorntools;

namespace {

/** The publisher of a document's drawing; empty when a step failed, which is reported. */
InterfacePtr<CATIParmPublisher> publisherOf(const JournalFrame& i_frame, CATDocument* ip_document) {
    InterfacePtr<CATIParmPublisher> sp_publisher;
    if (!ip_document) {
        i_frame.badInput("ip_document");
        return sp_publisher;
    }
    const auto sp_drawing = drawingOf(i_frame, ip_document);
    if (!sp_drawing) return sp_publisher;
    sp_publisher = sp_drawing.query<CATIParmPublisher>();
    if (!sp_publisher) i_frame.missing("pi_parm_publisher");
    return sp_publisher;
}

/** The publisher of a drawing that the caller has. @return E_FAIL, reported, for bad input and without one */
HRESULT publisherOf(const JournalFrame& i_frame, CATDocument* ip_document, CATIDrawing* ipi_drawing,
                    InterfacePtr<CATIParmPublisher>& o_publisher) {
    if (!ip_document) return i_frame.badInput("ip_document");
    if (!ipi_drawing) return i_frame.badInput("ipi_drawing");
    o_publisher = queryInterface<CATIParmPublisher>(ipi_drawing);
    return o_publisher ? S_OK : i_frame.missing("pi_parm_publisher");
}

} // namespace

InterfacePtr<CATIDrawing> vorntools::drawingOf(const JournalFrame& i_frame, CATDocument* ip_document) {
    InterfacePtr<CATIDrawing> sp_drawing;
    const auto sp_services = queryInterface<CATIDftDocumentServices>(ip_document);
    if (!sp_services) {
        i_frame.missing("pi_dft_doc_services");
        return sp_drawing;
    }
    sp_drawing.receive([&](CATIDrawing*& o_drawing) {
        void* p_found = nullptr;
        const HRESULT code = sp_services->GetDrawing(IID_CATIDrawing, &p_found);
        o_drawing = static_cast<CATIDrawing*>(p_found);
        return code;
    });
    if (!sp_drawing) i_frame.missing("pi_drawing");
    return sp_drawing;
}

HRESULT VornToolsCommon::getDrawingParameters(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                              CATListValCATISpecObject_var& o_parameters) {
    const JournalFrame frame(_CteCLASS_NAME, "getDrawingParameters");
    o_parameters.RemoveAll();
    InterfacePtr<CATIParmPublisher> sp_publisher;
    const HRESULT code = publisherOf(frame, ip_document, ipi_drawing, sp_publisher);
    if (SUCCEEDED(code)) sp_publisher->GetAllChildren(CATICkeParm::ClassName(), o_parameters);
    return code;
}

HRESULT VornToolsCommon::getDrawingParametersAndParameterSets(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                                              CATListValCATISpecObject_var& o_parameters,
                                                              CATListValCATISpecObject_var& o_parameter_sets) {
    const JournalFrame frame(_CteCLASS_NAME, "getDrawingParametersAndParameterSets");
    o_parameters.RemoveAll();
    o_parameter_sets.RemoveAll();
    InterfacePtr<CATIParmPublisher> sp_publisher;
    const HRESULT code = publisherOf(frame, ip_document, ipi_drawing, sp_publisher);
    if (FAILED(code)) return code;
    sp_publisher->GetAllChildren(CATICkeParm::ClassName(), o_parameters);
    sp_publisher->GetAllChildren(CATICkeParameterSet::ClassName(), o_parameter_sets);
    return code;
}

HRESULT VornToolsCommon::setDrawingParameters(CATDocument* ip_document, CATListValCATUnicodeString i_names,
                                              CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types) {
    constexpr const char* kMethod = "setDrawingParameters";
    const JournalFrame frame(_CteCLASS_NAME, kMethod);
    if (!ip_document) return frame.badInput("ip_document");
    const AttributesToWrite parameters{i_names, i_values, i_types};
    if (!parameters.areParallel(frame)) return E_FAIL;
    const auto sp_publisher = publisherOf(frame, ip_document);
    const auto sp_factory =
        sp_publisher ? factoryOf(frame, sp_publisher.get(), "sp_container") : InterfacePtr<CATICkeParmFactory>();
    if (!sp_factory) return E_FAIL;
    return ParametersByShortName(sp_publisher, ParametersByShortName::Any)
        .write(frame, kMethod, sp_factory.get(), parameters);
}

HRESULT VornToolsCommon::removeDrawingParameter(CATDocument* ip_document, CATUnicodeString i_name) {
    const JournalFrame frame(_CteCLASS_NAME, "removeDrawingParameter");
    const auto sp_publisher = publisherOf(frame, ip_document);
    if (!sp_publisher) return E_FAIL;
    return ParametersByShortName(sp_publisher, ParametersByShortName::Any).remove(frame, i_name);
}

HRESULT VornToolsCommon::changeDrawingParameterAccess(CATDocument* ip_document, CATUnicodeString i_name,
                                                      int i_user_access_mode) {
    const JournalFrame frame(_CteCLASS_NAME, "changeDrawingParameterAccess");
    const auto sp_publisher = publisherOf(frame, ip_document);
    if (!sp_publisher) return E_FAIL;
    return ParametersByShortName(sp_publisher, ParametersByShortName::Any)
        .changeAccess(frame, i_name, i_user_access_mode);
}
