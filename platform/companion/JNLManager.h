#ifndef JNLManager_H
#define JNLManager_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** The integration's journal. */
class ExportedByCatia JNLManager {
public:
    /** The one journal of the process, owned by the companion library; null is possible. */
    static JNLManager* getInstance();

    virtual void writeFunctionBegin(const CATUnicodeString& iName, const CATUnicodeString& iText) = 0;
    /** @param iCode the operation's result code, -1 for an entry that carries none. */
    virtual void writeFunctionEnd(const CATUnicodeString& iName, int iCode) = 0;
    /** Writes one line, printf style. */
    virtual void writeMsg(const char* iFormat, ...) = 0;
    /** Writes what an operation answers, printf style. */
    virtual void writeReturn(const char* iFormat, ...) = 0;

protected:
    ~JNLManager() = default;
};

#endif
