#include "embedded/DesignTables.h"

#include "embedded/Profile.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/tables/DesignTableObjects.h"
#include "embedded/text/Numbers.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

EMBEDDED_INTERFACE(CATICkeRelation, CATICkeNaming, 0x400);
EMBEDDED_INTERFACE(CATIDesignTable, CATBaseUnknown, 0x401);
EMBEDDED_INTERFACE(CATICkeSheet, CATBaseUnknown, 0x402);
EMBEDDED_INTERFACE(CATICkeOleSheet, CATICkeSheet, 0x403);
EMBEDDED_INTERFACE(CATIADesignTable, CATIABase, 0x404);

namespace embedded {

namespace {

std::size_t contentOf(const std::string& bytes) { return std::hash<std::string>()(bytes); }

} // namespace

bool SheetState::read() {
    FileFacts facts;
    if (isOpenElsewhere || !examineFile(file, facts)) return false;
    const std::optional<std::string> bytes = readSheetFile(file);
    if (!bytes) return false;
    std::optional<SheetRows> found = readSheet(*bytes, sheetFileKind(file), index, sessionDecimalMark());
    if (!found) return false;
    rows = std::move(*found);
    date = facts.changed;
    content = contentOf(*bytes);
    return true;
}

bool SheetState::isModified(long long& fileDate) const {
    FileFacts facts;
    if (!examineFile(file, facts)) return false;
    fileDate = facts.changed;
    if (fileDate != date) return true;
    const std::optional<std::string> bytes = readSheetFile(file);
    return bytes && contentOf(*bytes) != content;
}

int SheetState::columns() const {
    std::size_t result = 0;
    for (const auto& row : rows) result = std::max(result, row.size());
    return static_cast<int>(result);
}

std::string SheetState::cell(int row, int column) const {
    if (row < 1 || column < 1 || static_cast<std::size_t>(row) > rows.size()) return std::string();
    const auto& cells = rows[static_cast<std::size_t>(row) - 1];
    return static_cast<std::size_t>(column) > cells.size() ? std::string()
                                                           : cells[static_cast<std::size_t>(column) - 1];
}

void SheetState::lengthenFile() const {
    std::fstream opened(std::filesystem::u8path(file), std::ios::binary | std::ios::in | std::ios::out);
    opened.seekp(0, std::ios::end).put('\n');
}

void SpreadsheetObject::SetSheetIndex(int iIndex) {
    if (failing("CATICkeOleSheet::SetSheetIndex")) return;
    if (switches().selectingWritesTables && iIndex != state().index) state().lengthenFile();
    if (switches().sheetSelectsFirstConfiguration) m_configuration = 1;
    state().index = iIndex;
}

DesignTableObject::DesignTableObject(DocumentObject& document, const std::string& name, const std::string& file)
    : Implements("DesignTable"), m_document(document), m_name(name), m_textSheet(sheet),
      m_spreadsheet(sheet, configuration) {
    sheet.file = file;
    sheet.document = &document;
}

bool DesignTableObject::answers(const IID& iid) const { return hasAutomation || !Identity<CATIADesignTable>::has(iid); }

bool DesignTableObject::associate(const std::string& title, ParameterObject& parameter) {
    const auto isTaken = [&](const Association& one) { return one.title == title || one.parameter == &parameter; };
    if (std::any_of(associations.begin(), associations.end(), isTaken)) return false;
    associations.push_back({title, &parameter});
    m_outParameters = nullptr;
    return true;
}

bool DesignTableObject::hasConfiguration(int number) const {
    return number >= 1 && static_cast<std::size_t>(number) < sheet.rows.size();
}

CATBoolean DesignTableObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_document.upToDate ? TRUE : FALSE;
}

CATUnicodeString DesignTableObject::GetDisplayName() const {
    return failing("CATISpecObject::GetDisplayName") ? CATUnicodeString() : toText(m_name);
}

CATUnicodeString DesignTableObject::GetType() const {
    return failing("CATISpecObject::GetType") ? CATUnicodeString() : toText(kType);
}

CATIContainer_var DesignTableObject::GetFeatContainer() const {
    return failing("CATISpecObject::GetFeatContainer") ? CATIContainer_var() : AttributeCalls::containerOf(*this);
}

const CATICkeSheet_var DesignTableObject::Sheet() const {
    if (failing("CATIDesignTable::Sheet") || !hasSheet) return CATICkeSheet_var();
    return sheet.isSpreadsheet() ? handleOf<CATICkeSheet_var>(static_cast<CATICkeSheet*>(&m_spreadsheet))
                                 : handleOf<CATICkeSheet_var>(static_cast<CATICkeSheet*>(&m_textSheet));
}

int DesignTableObject::ConfigurationRow() const {
    return failing("CATIDesignTable::ConfigurationRow") ? 0 : configuration;
}

CATIDesignTable::DTError DesignTableObject::SetCurrentConfiguration(const int iConfiguration) {
    if (failing("CATIDesignTable::SetCurrentConfiguration")) return MiscellaneousError;
    const bool isRowZero = iConfiguration == 0 && switches().rowZeroIsTaken;
    if (!isRowZero && !hasConfiguration(iConfiguration)) return BadConfiguration;
    if (switches().selectingWritesTables && iConfiguration != configuration) sheet.lengthenFile();
    if (iConfiguration != configuration) m_document.written();
    configuration = iConfiguration;
    return NoError;
}

int DesignTableObject::ParameterColumn(const CATICkeParm_var& iParameter) {
    if (failing("CATIDesignTable::ParameterColumn") || sheet.rows.empty()) return 0;
    const auto* const parameter = dynamic_cast<const ParameterObject*>(static_cast<CATICkeParm*>(iParameter));
    const auto association = std::find_if(associations.begin(), associations.end(),
                                          [&](const Association& one) { return one.parameter == parameter; });
    if (association == associations.end()) return 0;
    const auto& titles = sheet.rows.front();
    const auto title = std::find(titles.begin(), titles.end(), association->title);
    return title == titles.end() ? 0 : static_cast<int>(title - titles.begin()) + 1;
}

CATCkeListOfParm DesignTableObject::OutParameters() const {
    if (failing("CATICkeRelation::OutParameters")) return nullptr;
    const auto lend = [&](CATBaseUnknown* stranger) {
        std::vector<ParameterObject*> parameters;
        for (const Association& one : associations) parameters.push_back(one.parameter);
        auto& lent = KnowledgeData::get().lent;
        lent.push_back(std::make_unique<LentParameters>(std::move(parameters), stranger));
        return lent.back().get();
    };
    if (Failures::get().givesOtherKind()) return lend(StrangerObject::get().unknown())->list();
    if (!m_outParameters) m_outParameters = lend(nullptr);
    return m_outParameters->list();
}

CATUnicodeString DesignTableObject::GetAlias() {
    return failing("CATIAlias::GetAlias") ? CATUnicodeString() : toText(m_name);
}

void DesignTableObject::SetAlias(const CATUnicodeString& iAlias) {
    if (failing("CATIAlias::SetAlias")) return;
    m_name = toBytes(iAlias);
    m_document.written();
}

HRESULT __stdcall DesignTableObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIADesignTable::get_Name"), m_name, oName);
}

HRESULT __stdcall DesignTableObject::get_FilePath(CATBSTR& oPath) {
    return automationTextAnswer(called("CATIADesignTable::get_FilePath"), sheet.file, oPath);
}

DesignTablesData::DesignTablesData(SessionData&) {}

DesignTablesData::~DesignTablesData() = default;

DesignTablesData& DesignTablesData::get() { return Session::current().data().part<DesignTablesData>(); }

DesignTableObject& DesignTablesData::add(Node& parent, const std::string& name, const std::string& file) {
    tables.push_back(std::make_unique<DesignTableObject>(*parent.document(), name, file));
    KnowledgeData::get().addRelation(parent, *tables.back());
    return *tables.back();
}

DesignTableObject* DesignTablesData::find(const DocumentObject* document, const std::string& name) const {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const auto& table) {
        return table->document() == document && table->displayName() == name;
    });
    return found == tables.end() ? nullptr : found->get();
}

CATIDesignTable* DesignTable::get() const {
    if (m_object) m_object->pin(IID_CATIDesignTable);
    return m_object;
}

CATIADesignTable* DesignTable::automation() const {
    if (m_object) m_object->pin(IID_CATIADesignTable);
    return m_object;
}

CATISpecObject* DesignTable::specObject() const {
    if (m_object) m_object->pin(IID_CATISpecObject);
    return m_object;
}

std::string DesignTable::name() const { return m_object ? m_object->displayName() : std::string(); }

std::string DesignTable::file() const { return m_object ? m_object->sheet.file : std::string(); }

DesignTable& DesignTable::sheet(int index) {
    if (!m_object || !m_object->sheet.isSpreadsheet()) return *this;
    const int former = m_object->sheet.index;
    m_object->sheet.index = index;
    if (!m_object->sheet.read()) m_object->sheet.index = former;
    return *this;
}

int DesignTable::sheet() const { return m_object ? m_object->sheet.index : 0; }

DesignTable& DesignTable::configuration(int number) {
    if (m_object && m_object->hasConfiguration(number)) m_object->configuration = number;
    return *this;
}

DesignTable& DesignTable::storedConfiguration(int number) {
    if (m_object) m_object->configuration = number;
    return *this;
}

int DesignTable::configuration() const { return m_object ? m_object->configuration : 0; }

DesignTable& DesignTable::associate(const std::string& title, const Parameter& parameter) {
    auto* const object = dynamic_cast<ParameterObject*>(parameter.get());
    if (m_object && object) m_object->associate(title, *object);
    return *this;
}

std::vector<std::string> DesignTable::associations() const {
    std::vector<std::string> titles;
    if (!m_object) return titles;
    for (const Association& one : m_object->associations) titles.push_back(one.title);
    return titles;
}

int DesignTable::rows() const { return m_object ? static_cast<int>(m_object->sheet.rows.size()) : 0; }

int DesignTable::columns() const { return m_object ? m_object->sheet.columns() : 0; }

std::string DesignTable::cell(int row, int column) const {
    return m_object ? m_object->sheet.cell(row, column) : std::string();
}

bool DesignTable::update() { return m_object && m_object->sheet.read(); }

int DesignTable::updates() const { return m_object ? m_object->sheet.updates : 0; }

DesignTable& DesignTable::openElsewhere(bool value) {
    if (m_object) m_object->sheet.isOpenElsewhere = value;
    return *this;
}

DesignTable& DesignTable::withoutAutomation() {
    if (m_object) m_object->hasAutomation = false;
    return *this;
}

DesignTable& DesignTable::withoutSheet() {
    if (m_object) m_object->hasSheet = false;
    return *this;
}

DesignTable addDesignTable(const Publisher& publisher, const std::string& name, const std::string& file) {
    Node* const node = nodeOf(publisher.get());
    if (!node || !node->document()) return DesignTable();
    DesignTableObject& made = DesignTablesData::get().add(*node, name, file);
    made.sheet.read();
    return DesignTable(&made);
}

std::vector<DesignTable> designTablesOf(const Document& document) {
    std::vector<DesignTable> result;
    for (const auto& table : DesignTablesData::get().tables)
        if (table->document() == document.object()) result.emplace_back(table.get());
    return result;
}

bool readsSpreadsheets(const std::string& suffix) { return reads(sheetFileKind("." + suffix)); }

} // namespace embedded
