#ifndef VornIHMMessageDialog_H
#define VornIHMMessageDialog_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Numbered messages to the user: queued under a catalogue number, shown later. */
class ExportedByCatia VornIHMMessageDialog {
public:
    /** Queues a message of the catalogue. */
    static void addDynamicLocalizedMessage(int iLevel, int iCatalogue, int iMessage);
    /** Queues a plain text. */
    static void addDynamicUnlocalizedMessage(int iCatalogue, const CATUnicodeString& iText, int iLevel);
    /** Shows what was queued under a catalogue number, as an information. Proposed: whole. */
    static void showDynamicInformationMessage(int iCatalogue, int iLevel);
    /** Shows what was queued under a catalogue number, as an error. */
    static void showDynamicErrorMessage(int iCatalogue, int iLevel);
    /** Shows a message of the catalogue as an error. @param iArgument what stands in its place; may be empty */
    static void showError(int iLevel, int iMessage, const CATUnicodeString& iArgument);
};

#endif
