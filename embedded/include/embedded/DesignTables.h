#ifndef EMBEDDED_DESIGN_TABLES_H
#define EMBEDDED_DESIGN_TABLES_H

#include "embedded/Parameters.h"

#include <string>
#include <vector>

class CATIADesignTable;
class CATIDesignTable;

namespace embedded {

class DesignTableObject;

/**
 * A design table. Like every name here it holds no reference; calls on a name of nothing do nothing. Pointers are
 * borrowed: from then on the object may be called without a reference.
 */
class ExportedByCatia DesignTable {
public:
    explicit DesignTable(DesignTableObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }
    CATIDesignTable* get() const;
    CATIADesignTable* automation() const;
    CATISpecObject* specObject() const;

    std::string name() const;
    std::string file() const;
    /** Sheet of a spreadsheet file whose cells are shown, from 1; for a text file nothing happens. The cells stay as
     * they were when the file has no such sheet. */
    DesignTable& sheet(int index);
    int sheet() const;
    /** Makes a configuration the current one, from 1. One that the sheet does not have is refused. */
    DesignTable& configuration(int number);
    /** The same without a look at the sheet, as in a document whose file lost rows since; 0: none is current. */
    DesignTable& storedConfiguration(int number);
    int configuration() const;
    /** Associates a parameter with the column of a title. The title need not be there: the file may come later. A
     * parameter or a title that is associated already is refused. */
    DesignTable& associate(const std::string& title, const Parameter& parameter);
    /** Titles of the associated columns. */
    std::vector<std::string> associations() const;

    /** Rows and columns of the cells that the table holds, titles included. */
    int rows() const;
    int columns() const;
    /** Text of such a cell, both from 1; empty outside. */
    std::string cell(int row, int column) const;
    /** Reads the file again; false when it cannot be read. */
    bool update();
    /** How often users of the platform had the file read again. */
    int updates() const;

    /** A file that another program has open cannot be read again until that is over. */
    DesignTable& openElsewhere(bool value);
    /** A table that does not show itself to automation / that has no sheet. */
    DesignTable& withoutAutomation();
    DesignTable& withoutSheet();

private:
    DesignTableObject* m_object;
};

/**
 * Makes a design table below a publisher, in its document. The cells are read from the file now; they stay empty when
 * that cannot be read. The suffix tells the kind of the file: xls, xlsx and xlsm are spreadsheets, whatever else is
 * text, one row a line, cells separated by tabulators, as many as the first row has titles. The first configuration is
 * the current one.
 *
 *     auto relations = part.addSet("Relations");
 *     auto table = addDesignTable(relations, "DesignTable.1", path("bolts.txt"));
 *     table.associate("Length (mm)", part.add("Length", "L1", 0.25)).configuration(2);
 */
ExportedByCatia DesignTable addDesignTable(const Publisher& publisher, const std::string& name,
                                           const std::string& file);
/** The design tables stored in a document, in the order in which they were made. */
ExportedByCatia std::vector<DesignTable> designTablesOf(const Document& document);
/** Whether this platform reads a spreadsheet of a kind ("xls", "xlsx"): for the latter that depends on what it was
 * built with. */
ExportedByCatia bool readsSpreadsheets(const std::string& suffix);

} // namespace embedded

#endif
