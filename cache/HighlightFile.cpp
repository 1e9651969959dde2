#include "VornToolsCommon.h"

#include "cache/ExchangeFile.h"
#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATListOfCATUnicodeString.h"
#include "TYPVectorCATUnicodeString.h"
#include "UTILFile.h"

#include <algorithm>

using namespace vorntools;

namespace {

const CATUnicodeString kHighlightFileName("highlight_v01.txt");
const CATUnicodeString kContextOpening("<Context>");
const CATUnicodeString kContextClosing("</Context>");
const CATUnicodeString kSelectionOpening("<selection>");
const CATUnicodeString kSelectionClosing("</selection>");

/** How many values of each kind the current command takes of a selection; 0 when it takes none. */
int valuesPerSelection(bool i_any_command) {
    if (processSays(&PROCManager::isCommandHighlightItemRevision) ||
        processSays(&PROCManager::isCommandHighlightInCATIASK))
        return 3;
    return i_any_command ? 1 : 0;
}

/** Whether the file has done its duty once it was read. */
bool isToBeDeleted() {
    return processSays(&PROCManager::manageDocumentsOfStatusWindowFileDeletion) &&
           !processSays(&PROCManager::isCommandStateDetailsUpdate) && !environmentSays(&ENVManager::isDebugModeEnable);
}

/** Walks through a highlight file. Each step returns E_FAIL, journalled, where the file has not the form expected. */
class HighlightReader {
public:
    HighlightReader(const JournalFrame& i_frame, const CATUnicodeString& i_name) : m_frame(i_frame), m_name(i_name) {}

    HRESULT open() {
        if (!m_reader.open(m_name)) return failed("There is no file.");
        m_reader.next();
        return readResult();
    }

    /** Appends the context, if the file has one. */
    HRESULT readContext(CATListValCATUnicodeString& io_contexts) {
        if (m_reader.line() != kContextOpening) return S_OK;
        m_reader.next();
        const CATUnicodeString context = m_reader.line();
        m_reader.next();
        if (m_reader.line() != kContextClosing)
            return FAILED(readResult()) ? E_FAIL : failed("ERROR : There is no close balise context.");
        io_contexts.Append(context);
        return stepOn();
    }

    /** Goes to the next selection. @param o_found false at the end of the file */
    HRESULT findSelection(bool& o_found) {
        o_found = false;
        if (m_finished) return S_OK;
        bool more = true;
        while (more && m_reader.line().IsNull()) more = m_reader.next();
        if (!more) {
            if (FAILED(readResult())) return E_FAIL;
            m_frame.write("End of file reached.");
            return S_OK;
        }
        if (m_reader.line() != kSelectionOpening) return failed("ERROR : File format is wrong (no balise selection).");
        o_found = true;
        return S_OK;
    }

    /** Collects the lines of the selection found. */
    HRESULT readSelection(TYPVectorCATUnicodeString& o_block) {
        o_block.clear();
        bool more = m_reader.next();
        for (; more && m_reader.line() != kSelectionClosing; more = m_reader.next()) o_block.push_back(m_reader.line());
        if (FAILED(readResult())) return E_FAIL;
        if (!more || o_block.size() == 0) return failed("ERROR : The selection balise is wrong.");
        return stepOn();
    }

private:
    HRESULT failed(const char* i_message) const {
        m_frame.write(i_message);
        return E_FAIL;
    }

    /** Result of the reads so far; the end of the file is no failure. */
    HRESULT readResult() const {
        if (!m_reader.hasFailed()) return S_OK;
        m_frame.write("Failed to read %s ", m_name);
        return E_FAIL;
    }

    /** Goes to the line behind a closing tag; there is none when the file ends without a line end. */
    HRESULT stepOn() {
        m_finished = m_reader.isAtEnd();
        if (!m_finished) m_reader.next();
        return readResult();
    }

    const JournalFrame& m_frame;
    const CATUnicodeString m_name;
    LineReader m_reader;
    bool m_finished = false;
};

/** Appends the values that a selection names, at most so many of each; the shorter list gets empty texts. */
void appendValues(const TYPVectorCATUnicodeString& i_part_numbers, const TYPVectorCATUnicodeString& i_file_names,
                  int i_most, CATListValCATUnicodeString& io_part_numbers, CATListValCATUnicodeString& io_file_names) {
    const int count = (std::min)(i_most, (std::max)(i_part_numbers.size(), i_file_names.size()));
    for (int i = 0; i < count; ++i) {
        io_part_numbers.Append(i_part_numbers.at(i));
        io_file_names.Append(i_file_names.at(i));
    }
}

HRESULT readSelections(const JournalFrame& i_frame, HighlightReader& io_reader, int i_most,
                       CATListValCATUnicodeString& io_part_numbers, CATListValCATUnicodeString& io_file_names) {
    TYPVectorCATUnicodeString block, part_numbers, file_names;
    for (;;) {
        bool found = false;
        if (FAILED(io_reader.findSelection(found))) return E_FAIL;
        if (!found) return S_OK;
        if (FAILED(io_reader.readSelection(block))) return E_FAIL;
        const HRESULT code = VornToolsCommon::readSelectionBalise(&block, &part_numbers, &file_names);
        if (FAILED(code)) {
            i_frame.write("ERROR : readSelectionBalise is failed.");
            return code;
        }
        appendValues(part_numbers, file_names, i_most, io_part_numbers, io_file_names);
    }
}

} // namespace

HRESULT VornToolsCommon::readHighlightFile(unsigned char i_any_command, CATListValCATUnicodeString& o_contexts,
                                           CATListValCATUnicodeString& o_part_numbers,
                                           CATListValCATUnicodeString& o_file_names) {
    const JournalFrame frame(_CteCLASS_NAME, "readHighlightFile");
    o_contexts.RemoveAll();
    o_part_numbers.RemoveAll();
    o_file_names.RemoveAll();
    const int most = valuesPerSelection(i_any_command != 0);
    if (most == 0) {
        frame.write("wrong command for highlight.");
        return E_FAIL;
    }
    CATUnicodeString name;
    const auto read = [&]() -> HRESULT {
        const HRESULT named = findExchangeFile(frame, UTILFile::getPathSeparator() + kHighlightFileName, name);
        if (FAILED(named)) return named;
        HighlightReader reader(frame, name);
        HRESULT code = reader.open();
        if (SUCCEEDED(code)) code = reader.readContext(o_contexts);
        return SUCCEEDED(code) ? readSelections(frame, reader, most, o_part_numbers, o_file_names) : code;
    };
    const HRESULT code = guarded(read, E_FAIL);
    // Memory may have run out between the two.
    const int count = (std::min)(o_part_numbers.Size(), o_file_names.Size());
    o_part_numbers.Size(count);
    o_file_names.Size(count);
    if (SUCCEEDED(code) && isToBeDeleted() && !guarded([&] { return deleteFile(name); }, false))
        frame.write("Failed to delete %s ", name);
    return code;
}
