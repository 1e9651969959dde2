#include "VornToolsCADDOCProperties.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/TextKeys.h"
#include "properties/CreationRules.h"
#include "properties/DocumentAttributes.h"
#include "properties/ParameterSets.h"

#include "CATICkeParmFactory.h"
#include "CATIContainer.h"
#include "CATISpecAttrKey.h"
#include "UTILLog.h"

#include <memory>
#include <utility>
#include <vector>

using namespace vorntools;

namespace {

using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

/** The parameters of an object's set, by their position. */
struct Present {
    std::vector<InterfacePtr<CATICkeParm>> parameters;
    CATListValCATUnicodeString names;
    CATListValCATUnicodeString flags; ///< "false" for one that may be changed
};

/** Reads a set, whose members need not all be parameters. E_FAIL, reported, when one of those or its name is not to be
 * had. */
HRESULT readSet(const JournalFrame& i_frame, VornToolsCADDOCProperties& i_service, CATICkeParameterSet* ipi_set,
                Present& o_present) {
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
HRESULT setOfObject(const JournalFrame& i_frame, VornToolsCADDOCProperties& i_service, CATISpecObject* ipi_object,
                    const char* i_found_line, bool i_create, InterfacePtr<CATICkeParameterSet>& o_set, bool& o_made) {
    o_set.receive([&](CATICkeParameterSet*& o_found) { return i_service.getParameterSet(ipi_object, o_found); });
    if (o_set) i_frame.write(i_found_line);
    if (o_set) return S_OK;
    if (!hasNoSet(ipi_object)) return i_frame.callFailed("getParameterSet");
    if (!i_create) return S_OK;
    o_set = makeSet(ipi_object);
    o_made = static_cast<bool>(o_set);
    return o_made ? S_OK : i_frame.callFailed("createParameterSet");
}

/** Writes attributes one by one. */
class ObjectWriter {
public:
    ObjectWriter(const JournalFrame& i_frame, const AttributesToWrite& i_attributes, Present i_present,
                 InterfacePtr<CATIParmPublisher> i_set)
        : m_frame(i_frame), m_attributes(i_attributes), m_present(std::move(i_present)),
          m_positions(positionsOf(m_present.names)), m_set(std::move(i_set)) {}

    void write(bool i_create, const CATUnicodeString& i_document_name) {
        InterfacePtr<CATICkeParmFactory> sp_factory;
        if (i_create && m_set) {
            const CATIContainer_var sp_container = m_set->GetContainer();
            sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
        }
        for (int i = 1; i <= m_attributes.names.Size(); ++i) {
            const auto found = m_positions.find(m_attributes.names[i]);
            if (found == m_positions.end() && i_create) create(i, sp_factory.get());
            if (found != m_positions.end() && !update(found->second, i))
                addError(m_attributes.names[i], i_document_name);
        }
    }
    bool hasCreated() const { return m_created; }
    /** Code of the last call. */
    HRESULT code() const { return m_code; }
    /** One line for each attribute that was not set. */
    const CATUnicodeString& errors() const { return m_errors; }

private:
    /** What is made is known from then on: the same name again changes it. */
    void create(int i_entry, CATICkeParmFactory* ipi_factory) {
        InterfacePtr<CATICkeParm> sp_made;
        m_code = createAttribute(m_frame, m_attributes, i_entry, ipi_factory, m_set.get(), false, false, sp_made);
        if (!sp_made) return;
        m_created = true;
        m_present.parameters.push_back(std::move(sp_made));
        m_present.flags.Append("false");
        m_positions.emplace(m_attributes.names[i_entry], m_present.flags.Size());
    }
    bool update(int i_position, int i_entry) {
        if (m_present.flags[i_position] != "false") return false;
        const auto& sp_parameter = m_present.parameters[static_cast<std::size_t>(i_position) - 1];
        m_code = m_attributes.update(sp_parameter.get(), i_entry);
        return SUCCEEDED(m_code);
    }
    void addError(const CATUnicodeString& i_name, const CATUnicodeString& i_document_name) {
        m_errors += "unable to set the value to the " + i_name + " parameter of " + i_document_name + "\n";
    }

    const JournalFrame& m_frame;
    const AttributesToWrite& m_attributes;
    Present m_present;
    TextMap<int> m_positions;
    const InterfacePtr<CATIParmPublisher> m_set;
    bool m_created = false;
    HRESULT m_code = S_OK;
    CATUnicodeString m_errors;
};

/** Writes attributes to the set of a part or reference product. @param i_found_line journalled when it has one */
HRESULT writeToObject(const JournalFrame& i_frame, VornToolsCADDOCProperties& i_service,
                      const CATUnicodeString& i_document_name, CATISpecObject* ipi_object,
                      const AttributesToWrite& i_attributes, const char* i_found_line) {
    if (!i_attributes.areParallel(i_frame)) return E_FAIL;
    const bool create = createsWhatLacks();
    bool made = false;
    InterfacePtr<CATICkeParameterSet> sp_set;
    if (FAILED(setOfObject(i_frame, i_service, ipi_object, i_found_line, create, sp_set, made))) return E_FAIL;
    if (!sp_set) return S_OK;
    Present present;
    if (FAILED(readSet(i_frame, i_service, sp_set.get(), present))) return E_FAIL;
    ObjectWriter writer(i_frame, i_attributes, std::move(present), sp_set.query<CATIParmPublisher>());
    writer.write(create, i_document_name);
    if (!writer.errors().IsNull() && FAILED(UTILLog::writeInLogFile("Error:", writer.errors())))
        i_frame.callFailed("writeInLogFile");
    return made || writer.hasCreated() ? VornToolsCADDOCProperties::redrawParametersNode(sp_set.get()) : writer.code();
}

} // namespace

HRESULT VornToolsCADDOCProperties::setMechanicalPartParameters(
    CATUnicodeString i_document_name, CATISpecObject* ipi_spec_obj_ref, CATListValCATUnicodeString i_names,
    CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types, unsigned char& o_need_update) {
    JournalFrame frame(_CteCLASS_NAME, "setMechanicalPartParameters");
    if (!ipi_spec_obj_ref) return frame.endWith(frame.missing("ipi_spec_obj_ref"));
    const AttributesToWrite attributes{i_names, i_values, i_types};
    const auto write = [&] {
        return writeToObject(frame, *this, i_document_name, ipi_spec_obj_ref, attributes,
                             "getParameterSet returns a parameter_set collection for object MechanicalPart");
    };
    const HRESULT code = guarded(write, E_FAIL);
    const auto is_up_to_date = [&] { return ipi_spec_obj_ref->IsUpToDate() != 0; };
    if (!guarded(is_up_to_date, false)) {
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
    const AttributesToWrite attributes{i_names, i_values, i_types};
    const auto write = [&] {
        return writeToObject(frame, *this, i_document_name, ipi_spec_obj_ref, attributes,
                             "getParameterSet returns a parameter_set collection");
    };
    return frame.endWith(guarded(write, E_FAIL));
}
