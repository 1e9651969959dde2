#ifndef CATMsgCatalog_H
#define CATMsgCatalog_H

#include "CATString.h"
#include "CATUnicodeString.h"

/** Texts in the user's language. */
class ExportedByCatia CATMsgCatalog {
public:
    /** @param iCatalogName without its suffix ".CATNls". @param iMsgParameters texts for the places /P1, /P2, ...
     * @return the text; the default one when the catalogue or the key is unknown */
    static const CATUnicodeString BuildMessage(const CATString& iCatalogName, const CATString& iMessageKey,
                                               CATUnicodeString* iMsgParameters = nullptr, int iParamNb = 0,
                                               const CATUnicodeString& iDefaultMsg = CATUnicodeString());
};

#endif
