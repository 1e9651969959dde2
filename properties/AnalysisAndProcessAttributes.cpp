#include "VornToolsCADDOCProperties.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/TextKeys.h"
#include "properties/CreationRules.h"
#include "properties/DocumentAttributes.h"
#include "properties/ParameterNames.h"
#include "properties/ParameterSets.h"

#include "CATDocument.h"
#include "CATICkeParmFactory.h"
#include "CATIContainer.h"
#include "CATISPPProcessContainer.h"
#include "CATISamAccess.h"
#include "CATISamAnalysisContainer.h"
#include "CATISamAnalysisManager.h"
#include "CATISpecAttrKey.h"
#include "CATInit.h"
#include "CATLISTV_CATISpecObject.h"

#include <memory>

using namespace vorntools;

namespace {

using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

/** The feature that a document keeps its parameters below, and the container that it is stored in. */
struct Home {
    InterfacePtr<CATISpecObject> feature;
    InterfacePtr<CATIContainer> container;
};

/** The home in an analysis; without a feature when a step failed, which is reported. */
Home analysisHome(const JournalFrame& i_frame, CATDocument* ip_document) {
    Home home;
    const auto sp_access = queryInterface<CATISamAccess>(ip_document);
    if (sp_access)
        home.container.receive([&](CATIContainer*& o_container) { return sp_access->GetSpecContainer(o_container); });
    const auto sp_analysis = home.container.query<CATISamAnalysisContainer>();
    CATISamAnalysisManager_var sp_manager;
    if (!sp_analysis || FAILED(sp_analysis->GetAnalysisManager(sp_manager)) || sp_manager == nullptr) {
        i_frame.missing("sp_analysis_manager");
        return home;
    }
    home.feature = queryInterface<CATISpecObject>(static_cast<CATISamAnalysisManager*>(sp_manager));
    if (!home.feature) i_frame.missing("pi_spec_object");
    return home;
}

/** The same for a process: its root process. */
Home processHome(const JournalFrame& i_frame, CATDocument* ip_document) {
    Home home;
    const auto report = [&](const char* i_variable) {
        i_frame.missing(i_variable);
        return home;
    };
    const auto sp_init = queryInterface<CATInit>(ip_document);
    if (!sp_init) return report("pi_init_on_doc");
    const auto sp_processes = InterfacePtr<CATISPPProcessContainer>::adopt(
        static_cast<CATISPPProcessContainer*>(sp_init->GetRootContainer(CATISPPProcessContainer::ClassName())));
    if (!sp_processes) return report("pi_process_cont");
    const ParameterList list(sp_processes->GetAllProcess());
    if (!list || list->Size() == 0) return report("p_process_list");
    home.feature = queryInterface<CATISpecObject>(static_cast<CATBaseUnknown*>((*list)[1]));
    if (!home.feature) return report("pi_spec_object");
    const CATIContainer_var sp_container = home.feature->GetFeatContainer();
    home.container = InterfacePtr<CATIContainer>::share(static_cast<CATIContainer*>(sp_container));
    return home;
}

/** The set of an analysis or process: its own, since others in the container are those of other features. Empty without
 * one. @return E_FAIL, reported, when it cannot be read */
HRESULT findSetAtHome(const JournalFrame& i_frame, const Home& i_home, InterfacePtr<CATICkeParameterSet>& o_set) {
    const auto sp_publisher = i_home.feature.query<CATIParmPublisher>();
    return sp_publisher && SUCCEEDED(findSetBelow(sp_publisher.get(), o_set)) ? S_OK : i_frame.missing("pi_set");
}

/** Lists the parameters that stand in a set. False when they are not to be had: listing has no result code, so a set
 * that lists none is asked a second way. */
bool listMembers(CATICkeParameterSet* ipi_set, CATIParmPublisher* ipi_publisher,
                 CATListValCATISpecObject_var& o_members) {
    listParameters(ipi_publisher, o_members);
    if (o_members.Size() > 0) return true;
    const ParameterList parameters(ipi_set->Parameters());
    return parameters && parameters->Size() == 0;
}

/** Calls `take(position, parameter, name)` for every parameter that stands in a set. @return E_FAIL when one of them or
 * its name is not to be had, which is reported, or when one was not taken; the others are taken all the same */
template <class Take>
HRESULT forEachMember(const JournalFrame& i_frame, CATICkeParameterSet* ipi_set, Take&& i_take) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_set);
    CATListValCATISpecObject_var members;
    if (!sp_publisher || !listMembers(ipi_set, sp_publisher.get(), members)) return i_frame.missing("pi_set");
    const CATIParmPublisher_var sp_root(sp_publisher.get());
    HRESULT code = S_OK;
    for (int i = 1; i <= members.Size(); ++i) {
        const auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATISpecObject*>(members[i]));
        const CATUnicodeString name = sp_parameter ? nameInSet(sp_parameter.get(), sp_root) : CATUnicodeString();
        const HRESULT taken = name.IsNull() ? i_frame.missing("pi_param") : i_take(i, sp_parameter.get(), name);
        if (FAILED(taken)) code = taken;
    }
    return code;
}

/** Updates what a set has of the attributes. @param o_present names of its parameters. @param io_code code of the last
 * update, if any. @return E_FAIL when a parameter is not known */
HRESULT updateMembers(const JournalFrame& i_frame, CATICkeParameterSet* ipi_set, const AttributesToWrite& i_attributes,
                      TextSet& o_present, HRESULT& io_code) {
    const auto positions = positionsOf(i_attributes.names);
    return forEachMember(i_frame, ipi_set,
                         [&](int i_member, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
                             i_frame.write("\t %d = %s", i_member, i_name);
                             o_present.insert(i_name);
                             if (hasPath(i_name)) return S_OK;
                             i_frame.write("------ %d = %s", i_member, i_name);
                             const auto entry = positions.find(i_name);
                             if (entry == positions.end()) return S_OK;
                             i_frame.write("\t------------- To Update");
                             io_code = i_attributes.update(ipi_parameter, entry->second);
                             return S_OK;
                         });
}

/** Creates the attributes that a set lacks, each name once, and shows them. @return the code of the last call */
HRESULT createMissing(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, CATICkeParameterSet* ipi_set,
                      const AttributesToWrite& i_attributes, TextSet& io_present, const CreationRules& i_rules,
                      HRESULT i_code) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_set);
    InterfacePtr<CATICkeParm> sp_made;
    bool created = false;
    for (int i = 1; i <= i_attributes.names.Size(); ++i) {
        const CATUnicodeString& name = i_attributes.names[i];
        if (io_present.count(name)) continue;
        i_code = createAttribute(i_frame, i_attributes, i, ipi_factory, sp_publisher.get(), i_rules.makesReadOnly(name),
                                 true, sp_made);
        if (FAILED(i_code)) continue;
        created = true;
        io_present.insert(name);
    }
    return created ? VornToolsCADDOCProperties::redrawParametersNode(ipi_set) : i_code;
}

/** Writes attributes below the feature of an analysis or process. */
HRESULT writeAtHome(const JournalFrame& i_frame, const Home& i_home, const AttributesToWrite& i_attributes) {
    if (!i_home.feature || !i_attributes.areParallel(i_frame)) return E_FAIL;
    const auto sp_factory = i_home.container.query<CATICkeParmFactory>();
    if (!sp_factory) return i_frame.missing("p_param_factory");
    CreationRules rules;
    if (FAILED(rules.read(i_frame))) return E_FAIL;
    HRESULT code = S_OK;
    InterfacePtr<CATICkeParameterSet> sp_set;
    if (FAILED(findSetAtHome(i_frame, i_home, sp_set))) return E_FAIL;
    if (!sp_set && !rules.creates) return S_OK;
    if (!sp_set) {
        sp_set = makeSet(i_home.feature.get());
        if (!sp_set) return i_frame.missing("pi_set");
        code = VornToolsCADDOCProperties::redrawParametersNode(sp_set.get());
    }
    TextSet present;
    // A parameter that did not tell its name may be one of those that seem to lack.
    if (FAILED(updateMembers(i_frame, sp_set.get(), i_attributes, present, code))) return E_FAIL;
    return rules.creates ? createMissing(i_frame, sp_factory.get(), sp_set.get(), i_attributes, present, rules, code)
                         : code;
}

HRESULT readAtHome(const JournalFrame& i_frame, const Home& i_home, JoinValues i_join,
                   CATListValCATUnicodeString& o_pairs) {
    if (!i_home.feature) return E_FAIL;
    InterfacePtr<CATICkeParameterSet> sp_set;
    if (FAILED(findSetAtHome(i_frame, i_home, sp_set))) return E_FAIL;
    if (!sp_set) return i_frame.missing("pi_set");
    AttributePairs pairs(o_pairs);
    const HRESULT code =
        forEachMember(i_frame, sp_set.get(), [&](int, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
            return hasPath(i_name) ? S_OK : addParameter(i_frame, ipi_parameter, i_name, i_join, pairs);
        });
    pairs.addGuaranteed();
    return code;
}

} // namespace

HRESULT VornToolsCADDOCProperties::setAnalysisParameters(CATDocument* ip_catdocument,
                                                         CATListValCATUnicodeString i_names,
                                                         CATListValCATUnicodeString i_values,
                                                         CATListValCATUnicodeString i_types) {
    JournalFrame frame(_CteCLASS_NAME, "setAnalysisParameters");
    if (!ip_catdocument) {
        frame.write("setAnalysisParameters :: ip_catdocument is NULL.");
        return frame.endWith(frame.badInput("ip_catdocument"));
    }
    const AttributesToWrite attributes{i_names, i_values, i_types};
    return frame.endWith(
        guarded([&] { return writeAtHome(frame, analysisHome(frame, ip_catdocument), attributes); }, E_FAIL));
}

HRESULT VornToolsCADDOCProperties::setProcessParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                                        CATListValCATUnicodeString i_values,
                                                        CATListValCATUnicodeString i_types) {
    JournalFrame frame(_CteCLASS_NAME, "setProcessParameters");
    if (!ip_catdocument) {
        frame.write("setProcessParameters :: ip_document est null.");
        return frame.endWith(frame.badInput("ip_catdocument"));
    }
    const AttributesToWrite attributes{i_names, i_values, i_types};
    return frame.endWith(
        guarded([&] { return writeAtHome(frame, processHome(frame, ip_catdocument), attributes); }, E_FAIL));
}

HRESULT VornToolsCADDOCProperties::retrieveAnalysisAttributes(CATDocument* ip_catdocument,
                                                              CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveAnalysisAttributes");
    o_pairs.RemoveAll();
    const auto read = [&] {
        return readAtHome(frame, analysisHome(frame, ip_catdocument), &getParamMultipleValues, o_pairs);
    };
    return frame.endWith(readGuarded(read, o_pairs));
}

HRESULT VornToolsCADDOCProperties::retrieveProcessAttributes(CATDocument* ip_catdocument,
                                                             CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveProcessAttributes");
    o_pairs.RemoveAll();
    const auto read = [&] {
        return readAtHome(frame, processHome(frame, ip_catdocument), &getParamMultipleValues, o_pairs);
    };
    return frame.endWith(readGuarded(read, o_pairs));
}
