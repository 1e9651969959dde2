#ifndef LINKS_MARKERS_H
#define LINKS_MARKERS_H

#include <string_view>

namespace vorntools {
namespace marker {

using namespace std::string_view_literals;

// Streams.
constexpr auto applicationContainer = "AppliCont"sv;
constexpr auto documentProperty = "CATDocumentProperty"sv;
constexpr auto summary = "CATSummaryInformation"sv;
constexpr auto catalogManager = "CATCatalogManager"sv;
constexpr auto streamSignature = "DASSAULT-SYSTEMES"sv;
constexpr auto featureStream = "OSMX"sv;

// Texts of the document-property stream.
constexpr auto ownDocument = "GenericLocate"sv;
constexpr auto object = "CATIA"sv;
constexpr auto file = "File"sv;
/** With its length in front. */
constexpr auto countedFile = "\x04"
                             "File"sv;
constexpr auto part = "CATPart"sv;
constexpr auto product = "CATProduct"sv;
constexpr auto drawing = "CATDrawing"sv;
constexpr auto textByte = "\x3B\x01"sv;

// References, publications and imports.
constexpr auto containerName = "_CntrName"sv;
constexpr auto externalReference = "..!"sv;
constexpr auto shapeConnector = "ShapeConnector"sv;
constexpr auto inputs = "Inputs"sv;
constexpr auto importProxy = "CATPrdInputProxy"sv;
constexpr auto importRepository = "CATXDLRepository"sv;
constexpr auto importedElement = "InputToDoc:Doc!"sv;
/** Leads the 16 bytes that identify a container of another document. */
constexpr auto foreignIdentity = "\x11\x03"sv;

// Version.
constexpr auto versionBegin = "<Version>"sv;
constexpr auto versionEnd = "/<Version>"sv;
constexpr auto releaseBegin = "<Release>"sv;
constexpr auto releaseEnd = "/<Release>"sv;
constexpr auto servicePackBegin = "<ServicePack>"sv;
constexpr auto servicePackEnd = "/<ServicePack>"sv;

// Keys of five bytes.
constexpr auto keyZoneEnd = "\0\0\xE8\0\x12\x01"sv;
constexpr auto keyLead = "\xD3\xB5"sv;
constexpr auto zeroLead = "\0\0"sv;
constexpr char keyEnd = '\xFE';

} // namespace marker
} // namespace vorntools

#endif
