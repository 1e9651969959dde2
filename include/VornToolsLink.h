#ifndef VornToolsLink_H
#define VornToolsLink_H

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

/** A link of a document to another one. */
class ExportedByVornTools VornToolsLink : public CATBaseUnknown {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** Three empty texts, flag 0. */
    VornToolsLink();
    VornToolsLink(const VornToolsLink& other);
    ~VornToolsLink() override;
    VornToolsLink& operator=(const VornToolsLink& other);

    /** Non-zero when the three texts and the flag agree. */
    unsigned char operator==(const VornToolsLink& other) const;

    /** Kind of the link: "MMLAssy_Context", "MMLAssy_Ref", "MMLAssy_ImportNotPub", "MML" or "MMLDrawing". */
    CATUnicodeString get_type() const;
    /** Path of the document pointed to; empty for an external reference. */
    CATUnicodeString get_linkedFileName() const;
    /** Identifier of the element pointed to: an external reference, or the tag of a multi-model link. */
    CATUnicodeString get_reference() const;
    /** 1 when the document tells the tag of the multi-model link. */
    unsigned char get_link_tag_found() const;

    // Each setter answers 0.
    int set_type(CATUnicodeString type);
    int set_linkedFileName(CATUnicodeString linkedFileName);
    int set_reference(CATUnicodeString reference);
    int set_link_tag_found(unsigned char link_tag_found);

private:
    CATUnicodeString m_linkedFileName;
    CATUnicodeString m_type;
    CATUnicodeString m_reference;
    unsigned char m_link_tag_found;
};

#endif
