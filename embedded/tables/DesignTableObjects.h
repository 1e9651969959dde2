#ifndef EMBEDDED_TABLES_DESIGN_TABLE_OBJECTS_H
#define EMBEDDED_TABLES_DESIGN_TABLE_OBJECTS_H

#include "CATIADesignTable.h"
#include "CATICkeOleSheet.h"
#include "CATICkeRelation.h"
#include "CATIDesignTable.h"
#include "embedded/DesignTables.h"
#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/tables/Sheets.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace embedded {

EMBEDDED_AUTOMATION_IDENTITY(CATIADesignTable);
EMBEDDED_IDENTITY(CATIDesignTable);
EMBEDDED_IDENTITY(CATICkeSheet);
template <>
struct Identity<CATICkeRelation> {
    static bool has(const IID& iid) { return iid == IID_CATICkeRelation || iid == IID_CATICkeNaming; }
};
template <>
struct Identity<CATICkeOleSheet> {
    static bool has(const IID& iid) { return iid == IID_CATICkeOleSheet || iid == IID_CATICkeSheet; }
};

/** The cells that a design table took from its file, and what the file was at that time. */
struct SheetState {
    std::string file;
    int index = 1;
    SheetRows rows;
    long long date = 0;                 ///< of the file that the cells are of, seconds since 1970; 0: never read
    std::optional<std::size_t> content; ///< tells that file's bytes from others; none when they are not known
    int updates = 0;                    ///< on demand of the platform's users
    bool isOpenElsewhere = false;       ///< in another program, which keeps it from being read
    const Object* document = nullptr;   ///< in which the table stands

    bool isSpreadsheet() const { return sheetFileKind(file) != SheetFileKind::text; }
    /** Reads the file; when it cannot be read, everything stays as it was. */
    bool read();
    /** Makes the file longer, by what its readers pass over. */
    void lengthenFile() const;
    /** Whether the file is another one than that which was read, by its date or, since that only counts seconds, by its
     * bytes; a file that is not there is not. */
    bool isModified(long long& fileDate) const;
    int columns() const;
    /** Empty outside; both from 1. */
    std::string cell(int row, int column) const;
};

/** A sheet as the platform shows it. I is CATICkeSheet or an interface that derives from it. */
template <class I>
class SheetObject : public Implements<CATBaseUnknown, I> {
public:
    explicit SheetObject(SheetState& state) : Implements<CATBaseUnknown, I>("Sheet"), m_state(state) {}

    std::string objectName() const override { return "sheet of " + m_state.file; }
    const Object* home() const override { return m_state.document; }

    const CATUnicodeString& Cell(const int iRow, const int iColumn) const override {
        static const CATUnicodeString& none = *new CATUnicodeString;
        if (this->failing("CATICkeSheet::Cell")) return none;
        m_cell = toText(m_state.cell(iRow, iColumn));
        return m_cell;
    }
    CATCke::Boolean UpdateLocalCopy(const int, const int) override {
        if (this->failing("CATICkeSheet::UpdateLocalCopy")) return CATCke::False;
        ++m_state.updates;
        return CATCke::Boolean(m_state.read());
    }
    int IsFileModified(CATUnicodeString& oOldDate, CATUnicodeString& oNewDate) override {
        long long date = 0;
        if (this->failing("CATICkeSheet::IsFileModified") || !m_state.isModified(date)) return 0;
        oOldDate = toText(std::to_string(m_state.date));
        oNewDate = toText(std::to_string(date));
        return 1;
    }

protected:
    SheetState& state() const { return m_state; }

private:
    SheetState& m_state;
    mutable CATUnicodeString m_cell;
};

class TextSheetObject final : public SheetObject<CATICkeSheet> {
public:
    using SheetObject::SheetObject;
};

class SpreadsheetObject final : public SheetObject<CATICkeOleSheet> {
public:
    /** @param configuration the current one of the table */
    SpreadsheetObject(SheetState& state, int& configuration) : SheetObject(state), m_configuration(configuration) {}

    int GetSheetIndex() override { return failing("CATICkeOleSheet::GetSheetIndex") ? 0 : state().index; }
    void SetSheetIndex(int iIndex) override;

private:
    int& m_configuration;
};

struct Association {
    std::string title;
    ParameterObject* parameter;
};

class DesignTableObject final
    : public Implements<CATBaseUnknown, CATISpecObject, CATIDesignTable, CATICkeRelation, CATIAlias, CATIADesignTable>,
      public Node {
public:
    static constexpr const char* kType = "DesignTable";

    DesignTableObject(DocumentObject& document, const std::string& name, const std::string& file);

    std::string objectName() const override { return "design table " + m_name; }
    const Object* home() const override { return &m_document; }
    CATISpecObject* specObject() override { return this; }
    Object& asObject() override { return *this; }
    std::string displayName() const override { return m_name; }
    bool responds(const IID& iid) override { return bool(findInterface(iid)); }
    DocumentObject* document() const override { return &m_document; }

    bool associate(const std::string& title, ParameterObject& parameter);
    /** Whether the sheet has a row of a configuration. */
    bool hasConfiguration(int number) const;

    SheetState sheet;
    int configuration = 1;
    std::vector<Association> associations;
    bool hasAutomation = true;
    bool hasSheet = true;

    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;
    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    const CATICkeSheet_var Sheet() const override;
    int ConfigurationRow() const override;
    DTError SetCurrentConfiguration(const int iConfiguration) override;
    int ParameterColumn(const CATICkeParm_var& iParameter) override;
    CATCkeListOfParm OutParameters() const override;
    CATUnicodeString GetAlias() override;
    void SetAlias(const CATUnicodeString& iAlias) override;
    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall get_FilePath(CATBSTR& oPath) override;

protected:
    bool answers(const IID& iid) const override;

private:
    DocumentObject& m_document;
    std::string m_name;
    mutable TextSheetObject m_textSheet;
    mutable SpreadsheetObject m_spreadsheet;
    mutable LentParameters* m_outParameters = nullptr; ///< made on demand
};

/** Everything of this topic that the session owns. */
class DesignTablesData final : public SessionPart {
public:
    static constexpr const char* kName = "design_tables";
    explicit DesignTablesData(SessionData& session);
    ~DesignTablesData() override;
    static DesignTablesData& get();

    void addToDigest(std::string& text) const override;

    /** The first table of a name in a document; null when there is none. */
    DesignTableObject* find(const DocumentObject* document, const std::string& name) const;
    DesignTableObject& add(Node& parent, const std::string& name, const std::string& file);

    std::vector<std::unique_ptr<DesignTableObject>> tables;
};

} // namespace embedded

#endif
