#include "VornToolsCADDOCProperties.h"

#include "foundation/JournalFrame.h"
#include "properties/AttributePairs.h"
#include "properties/ParameterHelpers.h"

#include "CATDocument.h"
#include "CATIDftDocumentServices.h"
#include "CATIDrawing.h"
#include "CATISPPProcessContainer.h"
#include "CATISamAccess.h"
#include "CATISamAnalysisContainer.h"
#include "CATInit.h"
#include "CATLISTV_CATISpecObject.h"
#include "ENVManager.h"
#include "UTILLog.h"
#include "VornToolsCommon.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace vorntools;

namespace {

using Service = VornToolsCADDOCProperties;
using NameSet = std::unordered_set<CATUnicodeString>;
using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

constexpr const char* kSetType = "ParameterSet";
constexpr const char* kExternalSet = "ExternalParameterSet";

/** Joins the values that a parameter keeps. */
using JoinValues = HRESULT (*)(CATISpecAttrAccess*, CATISpecAttrKey*, const CATUnicodeString&, const CATICkeType_var&,
                               const CATUnicodeString&, CATUnicodeString&);

/** What is to be written. */
struct Attributes {
    const CATListValCATUnicodeString& names;
    const CATListValCATUnicodeString& values;
    const CATListValCATUnicodeString& types;

    /** Whether the lists are parallel; the first one that is not is reported. */
    bool check(const JournalFrame& i_frame) const {
        if (values.Size() != names.Size()) i_frame.badInput("i_values");
        if (types.Size() != names.Size()) i_frame.badInput("i_types");
        return values.Size() == names.Size() && types.Size() == names.Size();
    }
    HRESULT update(CATICkeParm* ipi_parameter, int i_entry) const {
        return Service::updateParameter(ipi_parameter, names[i_entry], values[i_entry], types[i_entry]);
    }
    /** An attribute without a name is refused: nobody could read a set with such a parameter again. */
    HRESULT create(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_set,
                   int i_entry, bool i_read_only, bool i_rename) const {
        if (names[i_entry].IsNull()) return i_frame.badInput("i_names");
        return Service::createParameter(ipi_factory, ipi_set, names[i_entry], values[i_entry], types[i_entry],
                                        i_read_only ? 1 : 0, 0, i_rename ? 1 : 0);
    }
};

/** Position of the first entry of each name. */
std::unordered_map<CATUnicodeString, int> positionsOf(const CATListValCATUnicodeString& i_names) {
    std::unordered_map<CATUnicodeString, int> positions;
    for (int i = 1; i <= i_names.Size(); ++i) positions.emplace(i_names[i], i);
    return positions;
}

bool mayCreate() {
    ENVManager* const p_environment = ENVManager::getInstance();
    return p_environment && p_environment->createPropsForMapping();
}

/** Names of the attributes that are created read-only. */
HRESULT readOnlyNames(const JournalFrame& i_frame, NameSet& o_names) {
    ENVManager* const p_environment = ENVManager::getInstance();
    CATListValCATUnicodeString names;
    if (!p_environment || FAILED(p_environment->getReadOnlyPropertiesOnCreate(names)))
        return i_frame.callFailed("getReadOnlyPropertiesOnCreate");
    for (int i = 1; i <= names.Size(); ++i) o_names.insert(names[i]);
    return S_OK;
}

// Parameter sets ------------------------------------------------------------------------------------------------------

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

/** The object as a parameter set; empty for another type. */
InterfacePtr<CATICkeParameterSet> asSet(CATBaseUnknown* ip_object) {
    const auto sp_object = queryInterface<CATISpecObject>(ip_object);
    if (!sp_object || sp_object->GetType() != kSetType) return {};
    return sp_object.query<CATICkeParameterSet>();
}

/** The first parameter set among a container's members; empty without one. */
InterfacePtr<CATICkeParameterSet> setInContainer(CATIContainer* ipi_container) {
    if (!ipi_container) return {};
    SEQUENCE(CATBaseUnknown_ptr) sequence;
    const CATLONG32 count = ipi_container->ListMembersHere(CATICkeParameterSet::ClassName(), sequence);
    std::vector<InterfacePtr<CATBaseUnknown>> members;
    members.reserve(static_cast<std::size_t>(std::max<CATLONG32>(count, 0)));
    for (CATLONG32 i = 0; i < count; ++i) members.push_back(InterfacePtr<CATBaseUnknown>::adopt(sequence[i]));
    for (const auto& sp_member : members)
        if (auto sp_set = asSet(sp_member.get())) return sp_set;
    return {};
}

/** The first set directly below a feature. Asked when the usual look-up finds none: one that failed must not give the
 * feature a second set. */
InterfacePtr<CATICkeParameterSet> setBelow(CATISpecObject* ipi_feature) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_feature);
    CATListValCATISpecObject_var children;
    if (sp_publisher) sp_publisher->GetDirectChildren(CATICkeParameterSet::ClassName(), children);
    for (int i = 1; i <= children.Size(); ++i) {
        auto sp_set = asSet(children[i]);
        if (sp_set && children[i]->GetDisplayName() != kExternalSet) return sp_set;
    }
    return {};
}

/** The set of an analysis or process; empty without one. */
InterfacePtr<CATICkeParameterSet> setAtHome(const Home& i_home) {
    auto sp_set = setInContainer(i_home.container.get());
    return sp_set ? sp_set : setBelow(i_home.feature.get());
}

InterfacePtr<CATICkeParameterSet> makeSet(CATISpecObject* ipi_feature) {
    InterfacePtr<CATICkeParameterSet> sp_set;
    sp_set.receive([&](CATICkeParameterSet*& o_set) { return Service::createParameterSet(ipi_feature, o_set); });
    return sp_set;
}

// Analysis and process documents --------------------------------------------------------------------------------------

/** Whether a parameter's name below its set is that of a parameter of a nested object. */
bool isNested(const CATUnicodeString& i_name) { return i_name.SearchSubString("\\") >= 0; }

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
        const CATUnicodeString name = sp_parameter ? sp_parameter->RelativeName(sp_root) : CATUnicodeString();
        const HRESULT taken = name.IsNull() ? i_frame.missing("pi_param") : i_take(i, sp_parameter.get(), name);
        if (FAILED(taken)) code = taken;
    }
    return code;
}

/** Updates what a set has of the attributes. @param o_present names of its parameters. @param io_code code of the last
 * update, if any. @return E_FAIL when a parameter is not known */
HRESULT updateMembers(const JournalFrame& i_frame, CATICkeParameterSet* ipi_set, const Attributes& i_attributes,
                      NameSet& o_present, HRESULT& io_code) {
    const auto positions = positionsOf(i_attributes.names);
    return forEachMember(i_frame, ipi_set,
                         [&](int i_member, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
                             i_frame.write("\t %d = %s", i_member, i_name);
                             if (isNested(i_name)) return S_OK;
                             o_present.insert(i_name);
                             i_frame.write("------ %d = %s", i_member, i_name);
                             const auto entry = positions.find(i_name);
                             if (entry == positions.end()) return S_OK;
                             i_frame.write("\t------------- To Update");
                             io_code = i_attributes.update(ipi_parameter, entry->second);
                             return S_OK;
                         });
}

/** Creates the attributes that a set lacks and shows them. @return the code of the last call */
HRESULT createMissing(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, CATICkeParameterSet* ipi_set,
                      const Attributes& i_attributes, const NameSet& i_present, const NameSet& i_read_only,
                      HRESULT i_code) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_set);
    bool created = false;
    for (int i = 1; i <= i_attributes.names.Size(); ++i) {
        const CATUnicodeString& name = i_attributes.names[i];
        if (i_present.count(name)) continue;
        i_code = i_attributes.create(i_frame, ipi_factory, sp_publisher.get(), i, i_read_only.count(name) != 0, true);
        created = created || SUCCEEDED(i_code);
    }
    return created ? Service::redrawParametersNode(ipi_set) : i_code;
}

/** Writes attributes below the feature of an analysis or process. */
HRESULT writeAtHome(const JournalFrame& i_frame, const Home& i_home, const Attributes& i_attributes) {
    if (!i_home.feature || !i_attributes.check(i_frame)) return E_FAIL;
    const auto sp_factory = i_home.container.query<CATICkeParmFactory>();
    if (!sp_factory) return i_frame.missing("p_param_factory");
    const bool create = mayCreate();
    NameSet read_only;
    if (create && FAILED(readOnlyNames(i_frame, read_only))) return E_FAIL;
    HRESULT code = S_OK;
    auto sp_set = setAtHome(i_home);
    if (!sp_set && !create) return S_OK;
    if (!sp_set) {
        sp_set = makeSet(i_home.feature.get());
        if (!sp_set) return i_frame.missing("pi_set");
        code = Service::redrawParametersNode(sp_set.get());
    }
    NameSet present;
    // A parameter that did not tell its name may be one of those that seem to lack.
    if (FAILED(updateMembers(i_frame, sp_set.get(), i_attributes, present, code))) return E_FAIL;
    return create ? createMissing(i_frame, sp_factory.get(), sp_set.get(), i_attributes, present, read_only, code)
                  : code;
}

// Parts and reference products ----------------------------------------------------------------------------------------

/** The parameters of an object's set as they were before anything was written. */
struct Present {
    std::vector<InterfacePtr<CATICkeParm>> parameters;
    CATListValCATUnicodeString names;
    CATListValCATUnicodeString flags;
};

/** Reads a set, whose members need not all be parameters. E_FAIL, reported, when one of those or its name is not to be
 * had. */
HRESULT readSet(const JournalFrame& i_frame, Service& i_service, CATICkeParameterSet* ipi_set, Present& o_present) {
    CATListValCATBaseUnknown_var* p_parameters = nullptr;
    CATListValCATUnicodeString values;
    CATListValCATUnicodeString types;
    const HRESULT code =
        i_service.getListOfParameters(ipi_set, p_parameters, o_present.names, values, types, o_present.flags);
    const ParameterList members(p_parameters);
    for (int i = 1; members && i <= members->Size(); ++i) {
        auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*members)[i]));
        if (sp_parameter) o_present.parameters.push_back(std::move(sp_parameter));
    }
    const bool whole =
        SUCCEEDED(code) && o_present.parameters.size() == static_cast<std::size_t>(o_present.names.Size());
    return whole && !o_present.names.Locate("") ? S_OK : i_frame.callFailed("getListOfParameters");
}

/** The set of an object. @return S_OK without a set when there is none and none is to be made */
HRESULT setOfObject(const JournalFrame& i_frame, Service& i_service, CATISpecObject* ipi_object,
                    const char* i_found_line, bool i_create, InterfacePtr<CATICkeParameterSet>& o_set, bool& o_made) {
    o_set.receive([&](CATICkeParameterSet*& o_found) { return i_service.getParameterSet(ipi_object, o_found); });
    if (o_set) i_frame.write(i_found_line);
    if (!o_set) o_set = setBelow(ipi_object);
    if (o_set || !i_create) return S_OK;
    o_set = makeSet(ipi_object);
    o_made = static_cast<bool>(o_set);
    return o_made ? S_OK : i_frame.callFailed("createParameterSet");
}

/** Writes attributes one by one. */
class ObjectWriter {
public:
    ObjectWriter(const Attributes& i_attributes, const Present& i_present, InterfacePtr<CATIParmPublisher> i_set)
        : m_attributes(i_attributes), m_present(i_present), m_positions(positionsOf(i_present.names)),
          m_set(std::move(i_set)) {}

    /** @return whether anything was created */
    bool write(const JournalFrame& i_frame, bool i_create, const CATUnicodeString& i_document_name) {
        InterfacePtr<CATICkeParmFactory> sp_factory;
        if (i_create && m_set) {
            const CATIContainer_var sp_container = m_set->GetContainer();
            sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
        }
        bool created = false;
        for (int i = 1; i <= m_attributes.names.Size(); ++i) {
            const auto found = m_positions.find(m_attributes.names[i]);
            if (found != m_positions.end()) {
                if (!update(found->second, i)) addError(m_attributes.names[i], i_document_name);
            } else if (i_create) {
                m_code = m_attributes.create(i_frame, sp_factory.get(), m_set.get(), i, false, false);
                created = created || SUCCEEDED(m_code);
            }
        }
        return created;
    }
    /** Code of the last call. */
    HRESULT code() const { return m_code; }
    /** One line for each attribute that was not set. */
    const CATUnicodeString& errors() const { return m_errors; }

private:
    bool update(int i_position, int i_entry) {
        if (m_present.flags[i_position] != "false") return false;
        const auto& sp_parameter = m_present.parameters[static_cast<std::size_t>(i_position) - 1];
        m_code = m_attributes.update(sp_parameter.get(), i_entry);
        return SUCCEEDED(m_code);
    }
    void addError(const CATUnicodeString& i_name, const CATUnicodeString& i_document_name) {
        m_errors += "unable to set the value to the " + i_name + " parameter of " + i_document_name + "\n";
    }

    const Attributes& m_attributes;
    const Present& m_present;
    const std::unordered_map<CATUnicodeString, int> m_positions;
    const InterfacePtr<CATIParmPublisher> m_set;
    HRESULT m_code = S_OK;
    CATUnicodeString m_errors;
};

/** Writes attributes to the set of a part or reference product. @param i_found_line journalled when it has one */
HRESULT writeToObject(const JournalFrame& i_frame, Service& i_service, const CATUnicodeString& i_document_name,
                      CATISpecObject* ipi_object, const Attributes& i_attributes, const char* i_found_line) {
    if (!i_attributes.check(i_frame)) return E_FAIL;
    const bool create = mayCreate();
    bool made = false;
    InterfacePtr<CATICkeParameterSet> sp_set;
    if (FAILED(setOfObject(i_frame, i_service, ipi_object, i_found_line, create, sp_set, made))) return E_FAIL;
    if (!sp_set) return S_OK;
    Present present;
    if (FAILED(readSet(i_frame, i_service, sp_set.get(), present))) return E_FAIL;
    ObjectWriter writer(i_attributes, present, sp_set.query<CATIParmPublisher>());
    const bool created = writer.write(i_frame, create, i_document_name);
    if (!writer.errors().IsNull() && FAILED(UTILLog::writeInLogFile("Error:", writer.errors())))
        i_frame.callFailed("writeInLogFile");
    return made || created ? Service::redrawParametersNode(sp_set.get()) : writer.code();
}

// Reading -------------------------------------------------------------------------------------------------------------

/** Adds a parameter with the values that it keeps, else the one that it shows. E_FAIL, reported, when the parameter
 * does not let its values be seen. */
HRESULT addParameter(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                     JoinValues i_join, AttributePairs& io_pairs) {
    if (io_pairs.has(i_name)) return S_OK;
    const auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_parameter);
    if (!sp_access) return i_frame.missing("pi_param");
    CATUnicodeString value = ipi_parameter->Show();
    if (const auto sp_key = keyOf(sp_access.get(), kListOfValues)) {
        const CATUnicodeString shown = value;
        if (FAILED(i_join(sp_access.get(), sp_key.get(), i_name, ipi_parameter->Type(), shown, value)))
            i_frame.write("Multiple value but empty list\n");
    }
    io_pairs.addWithAlias(i_name, value);
    return S_OK;
}

HRESULT readAtHome(const JournalFrame& i_frame, const Home& i_home, JoinValues i_join,
                   CATListValCATUnicodeString& o_pairs) {
    if (!i_home.feature) return E_FAIL;
    const auto sp_set = setAtHome(i_home);
    if (!sp_set) return i_frame.missing("pi_set");
    AttributePairs pairs(o_pairs);
    const HRESULT code =
        forEachMember(i_frame, sp_set.get(), [&](int, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name) {
            return isNested(i_name) ? S_OK : addParameter(i_frame, ipi_parameter, i_name, i_join, pairs);
        });
    if (FAILED(code))
        o_pairs.RemoveAll();
    else
        pairs.addGuaranteed();
    return code;
}

/** The drawing of a document; empty when a step failed, which is reported. */
InterfacePtr<CATIDrawing> drawingOf(const JournalFrame& i_frame, CATDocument* ip_document) {
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
        if (SUCCEEDED(code)) continue;
        o_pairs.RemoveAll();
        return code;
    }
    pairs.addGuaranteed();
    return S_OK;
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
    return frame.endWith(writeAtHome(frame, analysisHome(frame, ip_catdocument), {i_names, i_values, i_types}));
}

HRESULT VornToolsCADDOCProperties::setProcessParameters(CATDocument* ip_catdocument, CATListValCATUnicodeString i_names,
                                                        CATListValCATUnicodeString i_values,
                                                        CATListValCATUnicodeString i_types) {
    JournalFrame frame(_CteCLASS_NAME, "setProcessParameters");
    if (!ip_catdocument) {
        frame.write("setProcessParameters :: ip_document est null.");
        return frame.endWith(frame.badInput("ip_catdocument"));
    }
    return frame.endWith(writeAtHome(frame, processHome(frame, ip_catdocument), {i_names, i_values, i_types}));
}

HRESULT VornToolsCADDOCProperties::setMechanicalPartParameters(
    CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref, CATListValCATUnicodeString i_names,
    CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types, unsigned char& o_need_update) {
    JournalFrame frame(_CteCLASS_NAME, "setMechanicalPartParameters");
    if (!ipi_spec_obj_ref) return frame.endWith(frame.missing("ipi_spec_obj_ref"));
    const HRESULT code = writeToObject(frame, *this, i_document_name, ipi_spec_obj_ref, {i_names, i_values, i_types},
                                       "getParameterSet returns a parameter_set collection for object MechanicalPart");
    if (!ipi_spec_obj_ref->IsUpToDate()) {
        frame.write("o_need_update is set to TRUE");
        o_need_update = 1;
    }
    return frame.endWith(code);
}

HRESULT VornToolsCADDOCProperties::setReferenceProductParameters(CATUnicodeString i_document_name,
                                                                 CATISpecObject* ipi_spec_obj_ref,
                                                                 CATListValCATUnicodeString i_names,
                                                                 CATListValCATUnicodeString i_values,
                                                                 CATListValCATUnicodeString i_types) {
    JournalFrame frame(_CteCLASS_NAME, "setReferenceProductParameters");
    if (!ipi_spec_obj_ref) return frame.endWith(frame.missing("ipi_spec_obj_ref"));
    return frame.endWith(writeToObject(frame, *this, i_document_name, ipi_spec_obj_ref, {i_names, i_values, i_types},
                                       "getParameterSet returns a parameter_set collection"));
}

HRESULT VornToolsCADDOCProperties::retrieveAnalysisAttributes(CATDocument* ip_catdocument,
                                                              CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveAnalysisAttributes");
    o_pairs.RemoveAll();
    return frame.endWith(readAtHome(frame, analysisHome(frame, ip_catdocument), &getParamMultipleValues, o_pairs));
}

HRESULT VornToolsCADDOCProperties::retrieveProcessAttributes(CATDocument* ip_catdocument,
                                                             CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveProcessAttributes");
    o_pairs.RemoveAll();
    return frame.endWith(readAtHome(frame, processHome(frame, ip_catdocument), &getParamMultipleValues, o_pairs));
}

HRESULT VornToolsCADDOCProperties::retrieveDrawingAttributes(CATDocument* ip_catdocument,
                                                             CATListValCATUnicodeString& o_pairs) {
    JournalFrame frame(_CteCLASS_NAME, "retrieveDrawingAttributes");
    o_pairs.RemoveAll();
    return frame.endWith(readDrawing(frame, ip_catdocument, &getParamMultipleValues, o_pairs));
}
