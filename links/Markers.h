#ifndef LINKS_MARKERS_H
#define LINKS_MARKERS_H

#include "foundation/SearchKernel.h"

#include <string_view>

namespace vorntools {
namespace marker {

using namespace std::string_view_literals;

// Streams.
constexpr SearchPattern applicationContainer("AppliCont"sv);
constexpr SearchPattern documentProperty("CATDocumentProperty"sv);
constexpr SearchPattern summary("CATSummaryInformation"sv);
constexpr SearchPattern catalogManager("CATCatalogManager"sv);
constexpr SearchPattern streamSignature("DASSAULT-SYSTEMES"sv);
constexpr SearchPattern featureStream("OSMX"sv);

// Texts of the document-property stream.
constexpr SearchPattern ownDocument("GenericLocate"sv);
constexpr SearchPattern object("CATIA"sv);
constexpr SearchPattern file("File"sv);
/** With its length in front. */
constexpr SearchPattern countedFile("\x04"
                                    "File"sv);
constexpr SearchPattern part("CATPart"sv);
constexpr SearchPattern product("CATProduct"sv);
constexpr SearchPattern drawing("CATDrawing"sv);
constexpr SearchPattern textByte("\x3B\x01"sv);

// References, publications and imports.
constexpr SearchPattern containerName("_CntrName"sv);
constexpr SearchPattern externalReference("..!"sv);
constexpr SearchPattern shapeConnector("ShapeConnector"sv);
constexpr SearchPattern inputs("Inputs"sv);
constexpr SearchPattern importProxy("CATPrdInputProxy"sv);
constexpr SearchPattern importRepository("CATXDLRepository"sv);
constexpr SearchPattern importedElement("InputToDoc:Doc!"sv);
/** Leads the 16 bytes that identify a container of another document. */
constexpr SearchPattern foreignIdentity("\x11\x03"sv);

// Version.
constexpr SearchPattern versionBegin("<Version>"sv);
constexpr SearchPattern versionEnd("/<Version>"sv);
constexpr SearchPattern releaseBegin("<Release>"sv);
constexpr SearchPattern releaseEnd("/<Release>"sv);
constexpr SearchPattern servicePackBegin("<ServicePack>"sv);
constexpr SearchPattern servicePackEnd("/<ServicePack>"sv);

// Keys of five bytes.
constexpr SearchPattern keyZoneEnd("\0\0\xE8\0\x12\x01"sv);
constexpr SearchPattern keyLead("\xD3\xB5"sv);
constexpr SearchPattern zeroLead("\0\0"sv);
constexpr char keyEnd = '\xFE';

} // namespace marker
} // namespace vorntools

#endif
