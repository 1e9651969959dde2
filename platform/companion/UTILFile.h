#ifndef UTILFile_H
#define UTILFile_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/**
 * Files and their names. A path splits at its last slash or backslash, whatever the system; the separator for joining
 * is the session's. An object of this class is one open file, closed by its destructor.
 */
class ExportedByCatia UTILFile {
public:
    UTILFile() = default;
    ~UTILFile();
    UTILFile(const UTILFile&) = delete;
    UTILFile& operator=(const UTILFile&) = delete;

    /** Opens a file; mode "r" (text lines) is the one supported. A folder cannot be opened. @return S_OK or E_FAIL
     * Proposed: whole. */
    HRESULT open(const CATUnicodeString& iFileName, const char* iMode);
    /** Reads the next line without its end (LF or CR LF); a line may hold any other byte and have any length.
     * @param oLine the line; empty on failure. @return S_OK; S_FALSE at the end of the file; E_FAIL when the read
     * fails. */
    HRESULT readLine(CATUnicodeString& oLine);
    /** 1 once a read has met the end of the file: the last line, when it lacks its end, or the read behind it.
     * Proposed: whole. */
    unsigned char isAtEnd() const;
    /** Proposed: whole. */
    void close();

    /** @param oPath the directory without its last separator (a lone root keeps it), empty when the name has none.
     * @param oFileName what follows. @return S_OK; E_FAIL with empty outputs for an empty name. */
    static HRESULT splitPathAndFileName(const CATUnicodeString& iFullName, CATUnicodeString& oPath,
                                        CATUnicodeString& oFileName);
    /** 1 when two names mean the same file: letter case and kind of separator ignored, and the directory as well when
     * one of them has none. An empty name means no file. */
    static unsigned char filesAreEqual(const CATUnicodeString& iFirst, const CATUnicodeString& iSecond);
    /** 1 when a file of that name exists; a folder is no file. */
    static unsigned char existingFile(const CATUnicodeString& iFileName);
    /** The separator for joining names in this session. */
    static CATUnicodeString getPathSeparator();
    /** Text behind the last dot of the file name, without the dot; empty when there is none. */
    static CATUnicodeString getExtension(const CATUnicodeString& iFileName);
    /** 1 when an extension is that of a product document, letter case ignored. */
    static unsigned char isACATProduct(const CATUnicodeString& iExtension);
    /** 1 when an extension is that of a part document, letter case ignored. */
    static unsigned char isACATPart(const CATUnicodeString& iExtension);
    /** The same for drawings, processes and analyses. */
    static unsigned char isACATDrawing(const CATUnicodeString& iExtension);
    static unsigned char isACATProcess(const CATUnicodeString& iExtension);
    static unsigned char isACATAnalysis(const CATUnicodeString& iExtension);
    /** @param oSize bytes; 0 on failure. @return S_OK; E_FAIL when there is no such file. */
    static HRESULT getFileSize(const CATUnicodeString& iFileName, long long& oSize);
    /** Seconds since 1970 of the last change, truncated to 32 bits; -1 when the file cannot be examined. */
    static int getLastModificationDateOnFile(const CATUnicodeString& iFileName);
    /** Copies a file byte for byte with its date. A file of the target's name is replaced, its folder must be there.
     * @return S_OK; E_FAIL when the target is not complete: it may then be a part of the source. Proposed: whole. */
    static HRESULT copyFile(const CATUnicodeString& iSource, const CATUnicodeString& iTarget);
    /** Gives a file another name on the same volume. A file of that name is replaced in one step: whoever fails leaves
     * both as they were. @return S_OK or E_FAIL. Proposed: whole. */
    static HRESULT renameFile(const CATUnicodeString& iFileName, const CATUnicodeString& iNewName);
    /** Deletes a file, read-only or not; a folder stays. @return S_OK; E_FAIL when there is no such file, or it is
     * still there. Proposed: whole. */
    static HRESULT deleteFile(const CATUnicodeString& iFileName);

private:
    struct OpenFile;
    OpenFile* m_file = nullptr;
};

#endif
