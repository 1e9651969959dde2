#include "properties/DrawingParameters.h"

#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "properties/ParameterSets.h"
#include "properties/ParametersByShortName.h"

#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParmFactory.h"
#include "CATIDftDocumentServices.h"
#include "CATIDrawing.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCommon.h"

#include <initializer_list>

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

/** A list to fill, and what it is to hold. */
struct Wanted {
    CATClassId class_name;
    CATListValCATISpecObject_var* p_objects;
};

/** Lists what stands below a drawing, at any depth. */
HRESULT list(const JournalFrame& i_frame, CATDocument* ip_document, CATIDrawing* ipi_drawing,
             std::initializer_list<Wanted> i_wanted) {
    for (const Wanted& wanted : i_wanted) wanted.p_objects->RemoveAll();
    if (!ip_document) return i_frame.badInput("ip_document");
    if (!ipi_drawing) return i_frame.badInput("ipi_drawing");
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_drawing);
    if (!sp_publisher) return i_frame.missing("pi_parm_publisher");
    const bool whole = guarded([&] {
        for (const Wanted& wanted : i_wanted) {
            sp_publisher->GetAllChildren(wanted.class_name, *wanted.p_objects);
            dropNulls(*wanted.p_objects);
        }
    });
    for (const Wanted& wanted : i_wanted)
        if (!whole) wanted.p_objects->RemoveAll();
    return whole ? S_OK : E_FAIL;
}

/** Calls `work(publisher, parameters)` with those of a document's drawing. */
template <class Work>
HRESULT withParameters(const JournalFrame& i_frame, CATDocument* ip_document, Work&& i_work) {
    const auto sp_publisher = publisherOf(i_frame, ip_document);
    if (!sp_publisher) return E_FAIL;
    const auto run = [&]() -> HRESULT {
        ParametersByShortName present(sp_publisher, ParametersByShortName::Any);
        return i_work(sp_publisher.get(), present);
    };
    return guarded(run, E_FAIL);
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
    return guarded(
        [&] {
            return list(frame, ip_document, ipi_drawing, {{CATICkeParm::ClassName(), &o_parameters}});
        },
        E_FAIL);
}

HRESULT VornToolsCommon::getDrawingParametersAndParameterSets(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                                              CATListValCATISpecObject_var& o_parameters,
                                                              CATListValCATISpecObject_var& o_parameter_sets) {
    const JournalFrame frame(_CteCLASS_NAME, "getDrawingParametersAndParameterSets");
    const auto work = [&]() -> HRESULT {
        return list(frame, ip_document, ipi_drawing,
                    {{CATICkeParm::ClassName(), &o_parameters}, {CATICkeParameterSet::ClassName(), &o_parameter_sets}});
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::setDrawingParameters(CATDocument* ip_document, CATListValCATUnicodeString i_names,
                                              CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types) {
    constexpr const char* kMethod = "setDrawingParameters";
    const JournalFrame frame(_CteCLASS_NAME, kMethod);
    if (!ip_document) return frame.badInput("ip_document");
    const auto work = [&]() -> HRESULT {
        const AttributesToWrite parameters{i_names, i_values, i_types};
        if (!parameters.areParallel(frame)) return E_FAIL;
        return withParameters(
            frame, ip_document, [&](CATIParmPublisher* ipi_publisher, ParametersByShortName& io_present) {
                const auto sp_factory = factoryOf(frame, ipi_publisher, "sp_container");
                return sp_factory ? io_present.write(frame, kMethod, sp_factory.get(), parameters) : E_FAIL;
            });
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::removeDrawingParameter(CATDocument* ip_document, CATUnicodeString i_name) {
    const JournalFrame frame(_CteCLASS_NAME, "removeDrawingParameter");
    const auto work = [&]() -> HRESULT {
        return withParameters(frame, ip_document, [&](CATIParmPublisher*, const ParametersByShortName& i_present) {
            return i_present.remove(frame, i_name);
        });
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::changeDrawingParameterAccess(CATDocument* ip_document, CATUnicodeString i_name,
                                                      int i_user_access_mode) {
    const JournalFrame frame(_CteCLASS_NAME, "changeDrawingParameterAccess");
    const auto work = [&]() -> HRESULT {
        return withParameters(frame, ip_document, [&](CATIParmPublisher*, const ParametersByShortName& i_present) {
            return i_present.changeAccess(frame, i_name, i_user_access_mode);
        });
    };
    return guarded(work, E_FAIL);
}
