#include "properties/DesignTableSources.h"

#include "VornToolsCommon.h"

#include "foundation/DesignMode.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterSets.h"

#include "CATDocument.h"
#include "CATICkeNaming.h"
#include "CATICkeRelation.h"
#include "CATIContainer.h"
#include "CATIDesignTable.h"
#include "CATIParmPublisher.h"
#include "CATIPrtContainer.h"
#include "CATISPPProcessContainer.h"
#include "CATISamAccess.h"
#include "CATISamAnalysisContainer.h"
#include "CATISamAnalysisManager.h"
#include "CATInit.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "UTILFile.h"

#include <memory>

using namespace vorntools;

namespace {

constexpr const char* kTableInterface = "CATIDesignTable";
constexpr const char* kTableType = "DesignTable";

/** A document's root container as the named interface T, whose name is given, too. */
template <class T>
InterfacePtr<T> rootContainer(const InterfacePtr<CATInit>& i_init, const char* i_interface_name) {
    return InterfacePtr<T>::adopt(static_cast<T*>(i_init->GetRootContainer(i_interface_name)));
}

// Each finds the publisher below which the tables of its kind of document stand. E_FAIL, reported, when there is no way
// to it.

using PublisherPtr = InterfacePtr<CATIParmPublisher>;

HRESULT publisherOf(const JournalFrame& i_frame, CATBaseUnknown* ip_object, PublisherPtr& o_publisher) {
    o_publisher = queryInterface<CATIParmPublisher>(ip_object);
    return o_publisher ? S_OK : i_frame.missing("pi_parm_publisher");
}

HRESULT findAnalysisPublisher(const JournalFrame& i_frame, CATDocument* ip_document, PublisherPtr& o_publisher) {
    const auto sp_access = queryInterface<CATISamAccess>(ip_document);
    InterfacePtr<CATIContainer> sp_spec_container;
    if (sp_access)
        sp_spec_container.receive(
            [&](CATIContainer*& o_container) { return sp_access->GetSpecContainer(o_container); });
    if (!sp_spec_container) return i_frame.missing("pi_spec_container");
    const auto sp_container = sp_spec_container.query<CATISamAnalysisContainer>();
    CATISamAnalysisManager_var sp_analysis_manager;
    const HRESULT code = sp_container ? sp_container->GetAnalysisManager(sp_analysis_manager) : E_FAIL;
    if (FAILED(code) || !sp_analysis_manager) return i_frame.missing("sp_analysis_manager");
    return publisherOf(i_frame, static_cast<CATISamAnalysisManager*>(sp_analysis_manager), o_publisher);
}

/** That of the first process. */
HRESULT findProcessPublisher(const JournalFrame& i_frame, CATDocument* ip_document, PublisherPtr& o_publisher) {
    const auto sp_init = queryInterface<CATInit>(ip_document);
    if (!sp_init) return i_frame.missing("pi_init_on_doc");
    const auto sp_container = rootContainer<CATISPPProcessContainer>(sp_init, "CATISPPProcessContainer");
    if (!sp_container) return i_frame.missing("pi_process_cont");
    const std::unique_ptr<CATListValCATBaseUnknown_var> processes(sp_container->GetAllProcess());
    if (!processes || processes->Size() == 0) return i_frame.missing("p_process_list");
    return publisherOf(i_frame, static_cast<CATBaseUnknown*>((*processes)[1]), o_publisher);
}

HRESULT findPartPublisher(const JournalFrame& i_frame, CATDocument* ip_document, PublisherPtr& o_publisher) {
    const auto sp_init = queryInterface<CATInit>(ip_document);
    if (!sp_init) return i_frame.missing("pi_init_on_doc");
    const auto sp_container = rootContainer<CATIPrtContainer>(sp_init, "CATIPrtContainer");
    if (!sp_container) return i_frame.missing("pi_prt_container");
    const CATISpecObject_var sp_part = sp_container->GetPart();
    return publisherOf(i_frame, static_cast<CATISpecObject*>(sp_part), o_publisher);
}

HRESULT appendTablesOfPart(const JournalFrame& i_frame, CATDocument* ip_document, const SwitchWay& i_way,
                           CATListValCATISpecObject_var& io_design_tables) {
    InterfacePtr<CATIProduct> sp_root;
    if (FAILED(sp_root.receive(
            [&](CATIProduct*& o_root) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_root); })))
        return i_frame.callFailed("getActiveCATIProduct");
    const DesignMode design_mode(sp_root.get(), i_way);
    PublisherPtr sp_publisher;
    if (FAILED(findPartPublisher(i_frame, ip_document, sp_publisher))) return E_FAIL;
    CATListValCATISpecObject_var relations;
    sp_publisher->GetAllChildren(CATICkeRelation::ClassName(), relations);
    for (int i = 1; i <= relations.Size(); ++i)
        if (!!relations[i] && relations[i]->GetType() == kTableType) io_design_tables.Append(relations[i]);
    return S_OK;
}

} // namespace

namespace vorntools {

HRESULT appendTablesOfRootContainer(const JournalFrame& i_frame, CATDocument* ip_document,
                                    CATListValCATISpecObject_var& io_design_tables) {
    const auto sp_init = queryInterface<CATInit>(ip_document);
    if (!sp_init) return i_frame.missing("p_init_on_doc");
    const auto sp_container = rootContainer<CATIContainer>(sp_init, "CATIContainer");
    if (!sp_container) return i_frame.missing("p_container");
    SEQUENCE(CATBaseUnknown_ptr) members;
    const CATLONG32 count = sp_container->ListMembersHere(kTableInterface, members);
    for (CATLONG32 i = 0; i < count; ++i) {
        const auto sp_member = InterfacePtr<CATBaseUnknown>::adopt(members[i]);
        const CATISpecObject_var sp_design_table(sp_member.get());
        if (!sp_design_table)
            i_frame.missing("sp_design_table");
        else
            io_design_tables.Append(sp_design_table);
    }
    return S_OK;
}

DocumentKind kindOf(CATDocument* ip_document) {
    const CATUnicodeString extension = UTILFile::getExtension(ip_document->StorageName());
    if (UTILFile::isACATAnalysis(extension)) return DocumentKind::Analysis;
    if (UTILFile::isACATProcess(extension)) return DocumentKind::Process;
    if (UTILFile::isACATPart(extension)) return DocumentKind::Part;
    if (UTILFile::isACATProduct(extension)) return DocumentKind::Product;
    return UTILFile::isACATDrawing(extension) ? DocumentKind::Drawing : DocumentKind::Other;
}

} // namespace vorntools

HRESULT VornToolsCommon::getDesignTableList(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                            unsigned char i_switch_flag,
                                            CATListValCATISpecObject_var* iop_design_tables) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableList");
    if (!ip_document) return frame.badInput("ip_document");
    if (!iop_design_tables) return frame.badInput("iop_design_tables");
    const auto list = [&] {
        switch (kindOf(ip_document)) {
        case DocumentKind::Analysis: return getDesignTableInAnalysisDocument(ip_document, iop_design_tables);
        case DocumentKind::Process: return getDesignTableInProcessDocument(ip_document, iop_design_tables);
        case DocumentKind::Part:
            return getDesignTableInPartDocument(ip_document, ip_switcher, i_switch_flag, iop_design_tables);
        case DocumentKind::Product:
        case DocumentKind::Drawing: return appendTablesOfRootContainer(frame, ip_document, *iop_design_tables);
        default: return S_OK;
        }
    };
    const HRESULT code = guarded(list, E_FAIL);
    frame.write(" Nb DesignTable in CATIA structure = %d", iop_design_tables->Size());
    return code;
}

HRESULT VornToolsCommon::getDesignTableInAnalysisDocument(CATDocument* ip_document,
                                                          CATListValCATISpecObject_var* iop_design_tables) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableInAnalysisDocument");
    if (!ip_document) return frame.badInput("ip_document");
    if (!iop_design_tables) return frame.badInput("iop_design_tables");
    const auto append = [&] {
        PublisherPtr sp_publisher;
        if (FAILED(findAnalysisPublisher(frame, ip_document, sp_publisher))) return E_FAIL;
        CATListValCATISpecObject_var design_tables;
        const HRESULT code = getDirectDesignTablesChildren(sp_publisher.get(), design_tables);
        iop_design_tables->Append(design_tables);
        return code;
    };
    return guarded(append, E_FAIL);
}

HRESULT VornToolsCommon::getDesignTableInProcessDocument(CATDocument* ip_document,
                                                         CATListValCATISpecObject_var* iop_design_tables) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableInProcessDocument");
    if (!ip_document) return frame.badInput("ip_document");
    if (!iop_design_tables) return frame.badInput("iop_design_tables");
    const auto append = [&] {
        PublisherPtr sp_publisher;
        if (FAILED(findProcessPublisher(frame, ip_document, sp_publisher))) return E_FAIL;
        CATListValCATISpecObject_var design_tables;
        const HRESULT code = getDirectDesignTablesChildren(sp_publisher.get(), design_tables);
        iop_design_tables->Append(design_tables);
        return code;
    };
    return guarded(append, E_FAIL);
}

HRESULT VornToolsCommon::getDesignTableInPartDocument(CATDocument* ip_document, VornToolsSwitchMgt* ip_switcher,
                                                      unsigned char i_switch_flag,
                                                      CATListValCATISpecObject_var* iop_design_tables) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTableInPartDocument");
    if (!ip_document) return frame.badInput("ip_document");
    if (!iop_design_tables) return frame.badInput("iop_design_tables");
    const SwitchWay way{ip_switcher, i_switch_flag};
    return guarded([&] { return appendTablesOfPart(frame, ip_document, way, *iop_design_tables); }, E_FAIL);
}

HRESULT VornToolsCommon::getDirectDesignTablesChildren(CATIParmPublisher* ipi_publisher,
                                                       CATListValCATISpecObject_var& o_design_tables) {
    const JournalFrame frame(_CteCLASS_NAME, "getDirectDesignTablesChildren");
    o_design_tables.RemoveAll();
    if (!ipi_publisher) return frame.badInput("ipi_publisher");
    CATListValCATISpecObject_var children;
    ipi_publisher->GetDirectChildren(CATICkeNaming::ClassName(), children);
    for (int i = 1; i <= children.Size(); ++i) {
        const auto sp_set = queryInterface<CATIParmPublisher>(static_cast<CATISpecObject*>(children[i]));
        if (sp_set) sp_set->GetDirectChildren(kTableInterface, o_design_tables);
    }
    dropNulls(o_design_tables);
    return S_OK;
}

unsigned char VornToolsCommon::getDesignTable(CATDocument* ip_document, CATUnicodeString i_full_file_name,
                                              VornToolsSwitchMgt* ip_switcher, unsigned char i_switch_flag,
                                              CATIDesignTable*& opi_design_table) {
    const JournalFrame frame(_CteCLASS_NAME, "getDesignTable");
    opi_design_table = nullptr;
    CATListValCATISpecObject_var design_tables;
    if (FAILED(getDesignTableList(ip_document, ip_switcher, i_switch_flag, &design_tables))) return 0;
    for (int i = 1; i <= design_tables.Size(); ++i) {
        auto sp_design_table = queryInterface<CATIDesignTable>(static_cast<CATISpecObject*>(design_tables[i]));
        CATUnicodeString full_file_name;
        if (!sp_design_table || FAILED(getDesignTableFullFilename(sp_design_table.get(), full_file_name))) continue;
        if (!UTILFile::filesAreEqual(full_file_name, i_full_file_name)) continue;
        opi_design_table = sp_design_table.detach();
        return 1;
    }
    return 0;
}
