#ifndef FOUNDATION_JOURNAL_FRAME_H
#define FOUNDATION_JOURNAL_FRAME_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "EMHManager.h"
#include "JNLManager.h"
#include "VornDebugOptions.h"
#include "foundation/Guarded.h"

namespace vorntools {

/** Numbers of the integration's error list. */
enum ErrorNumber {
    ErrorFileNotOpened = 501,
    ErrorBadInput = 9001,
    ErrorMissing = 9002,
    ErrorCallFailed = 9003,
    ErrorPlatformFailed = 9004,
    ErrorOutOfRange = 9006,
    ErrorDocumentNotOpened = 9010
};

/** What printf takes for a text. */
inline const char* printable(const CATUnicodeString& i_text) { return i_text.ConvertToChar(); }
inline const char* printable(const char* i_text) { return i_text; }
inline int printable(int i_number) { return i_number; }
inline const void* printable(const void* i_pointer) { return i_pointer; }

/**
 * The journal entry of an exported method: opened by the constructor, closed on every path by the destructor, unless
 * there was no journal or no memory to open it. The one way to write lines and to report errors; each report is made
 * under the entry's own name, which is put together when it is wanted: without a journal that is seldom. Nothing here
 * throws: what there is no memory to write is not written.
 */
class JournalFrame {
public:
    /** @param i_class_name the class's _CteCLASS_NAME, which outlives the frame as the method's name does.
     * @param i_end_code code of the closing line, -1 for none */
    JournalFrame(const CATUnicodeString& i_class_name, const char* i_method, int i_end_code = -1)
        : m_class_name(i_class_name), m_method(i_method), m_end_code(i_end_code) {
        writeBegin();
    }
    explicit JournalFrame(const CATUnicodeString&& i_class_name, const char* i_method, int i_end_code = -1) = delete;
    ~JournalFrame() { writeEnd(); }
    JournalFrame(const JournalFrame&) = delete;
    JournalFrame& operator=(const JournalFrame&) = delete;

    /** Empty when there is no memory for it. */
    const CATUnicodeString& name() const {
        if (m_name.IsNull()) guarded([this] { m_name = m_class_name + m_method; });
        return m_name;
    }

    /** The closing line carries this code from now on; the code, for returning it. */
    HRESULT endWith(HRESULT i_code) {
        m_end_code = static_cast<int>(i_code);
        return i_code;
    }

    /** Writes the closing line ahead of the destructor, which writes it as well. */
    void writeEnd() const {
        if (!m_is_open) return;
        onJournal([this](JNLManager& io_journal) { io_journal.writeFunctionEnd(m_name, m_end_code); });
    }

    /** Writes a line, printf style; texts may be CATUnicodeString. */
    template <class... Arguments>
    void write(const char* i_format, const Arguments&... i_arguments) const {
        onJournal([&](JNLManager& io_journal) { io_journal.writeMsg(i_format, printable(i_arguments)...); });
    }
    /** Writes what the method answers. */
    void writeReturn(int i_answer) const {
        onJournal([&](JNLManager& io_journal) { io_journal.writeReturn(" %d", i_answer); });
    }
    /** The same as write, in debug mode only. */
    template <class... Arguments>
    void writeInDebug(const char* i_format, const Arguments&... i_arguments) const {
        if (VornDebugOptions::getDebugModeValue()) write(i_format, i_arguments...);
    }

    /** A required input is null or bad. */
    HRESULT badInput(const char* i_parameter) const { return report(ErrorBadInput, i_parameter); }
    /** An object, interface or environment value on the way is missing. */
    HRESULT missing(const char* i_variable) const { return report(ErrorMissing, i_variable); }
    /** A called function failed. */
    HRESULT callFailed(const char* i_function) const { return report(ErrorCallFailed, i_function); }
    /** A platform call failed. */
    HRESULT platformFailed(const char* i_function) const { return report(ErrorPlatformFailed, i_function); }
    /** Puts a numbered report on the integration's error list; E_FAIL, for returning it.
     * @param i_argument a text or what makes one */
    template <class Argument>
    HRESULT report(int i_number, const Argument& i_argument) const {
        guarded([&] {
            if (EMHManager* const p_errors = EMHManager::getInstance())
                p_errors->writeMsg(name(), i_number, i_argument);
        });
        return E_FAIL;
    }

private:
    /** Does something with the journal, when there is one; whether it came to its end. */
    template <class Work>
    static bool onJournal(Work&& i_work) {
        const auto work_on = [&] {
            JNLManager* const p_journal = JNLManager::getInstance();
            if (p_journal) i_work(*p_journal);
            return p_journal != nullptr;
        };
        return guarded(work_on, false);
    }
    void writeBegin() {
        m_is_open = onJournal([this](JNLManager& io_journal) {
            m_name = m_class_name + m_method;
            io_journal.writeFunctionBegin(m_name, CATUnicodeString());
        });
    }

    const CATUnicodeString& m_class_name;
    const char* const m_method;
    mutable CATUnicodeString m_name; ///< empty as long as nobody has wanted it
    int m_end_code;
    bool m_is_open = false;
};

} // namespace vorntools

#endif
