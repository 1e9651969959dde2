#ifndef VornToolsLink_H
#define VornToolsLink_H

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

/**
 * A link of a document to another one, as VornToolsLinks finds it. Texts are copied in and out. Where
 * memory for a copy gives out, std::bad_alloc is thrown and the link stays as it was.
 *
 * @par Example
 * @snippet links.cpp VornToolsLink
 */
class ExportedByVornTools VornToolsLink : public CATBaseUnknown {
public:
    /** "VornToolsLink::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** Three empty texts, flag 0. */
    VornToolsLink();
    /**
     * Copies the texts and the flag.
     * @param other it stays as it is
     */
    VornToolsLink(const VornToolsLink& other);
    /** Nothing but its texts to end. */
    ~VornToolsLink() override;
    /**
     * Copies the texts and the flag.
     * @param other may be this link
     * @return this link
     */
    VornToolsLink& operator=(const VornToolsLink& other);

    /**
     * Compares the texts and the flag.
     * @param other letter case of its texts counts
     * @return 1 when all agree, else 0
     */
    unsigned char operator==(const VornToolsLink& other) const;

    /**
     * Kind of the link.
     * @return "MMLAssy_Context", "MMLAssy_Ref", "MMLAssy_ImportNotPub", "MML" or "MMLDrawing"; empty until it is set
     */
    CATUnicodeString get_type() const;
    /**
     * The document pointed to.
     * @return its path; empty for an external reference
     */
    CATUnicodeString get_linkedFileName() const;
    /**
     * Identifier of the element pointed to.
     * @return an external reference, or the tag of a multi-model link; empty for a document as a whole
     */
    CATUnicodeString get_reference() const;
    /**
     * Whether the document tells the tag of the multi-model link.
     * @return 1 or 0
     */
    unsigned char get_link_tag_found() const;

    /**
     * Sets the kind of the link.
     * @param type as get_type gives it; any text is taken
     * @return 0
     */
    int set_type(CATUnicodeString type);
    /**
     * Sets the document pointed to.
     * @param linkedFileName its path
     * @return 0
     */
    int set_linkedFileName(CATUnicodeString linkedFileName);
    /**
     * Sets the element pointed to.
     * @param reference its identifier
     * @return 0
     */
    int set_reference(CATUnicodeString reference);
    /**
     * Sets whether the document tells the tag of the multi-model link.
     * @param link_tag_found 1 or 0
     * @return 0
     */
    int set_link_tag_found(unsigned char link_tag_found);

private:
    CATUnicodeString m_linkedFileName;
    CATUnicodeString m_type;
    CATUnicodeString m_reference;
    unsigned char m_link_tag_found;
};

#endif
