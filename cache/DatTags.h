#ifndef CACHE_DAT_TAGS_H
#define CACHE_DAT_TAGS_H

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"

#include <cstddef>

namespace vorntools {

/** Fields of a DAT file. */
enum class DatTag {
    DatFileVersion,
    ItemRevUID,
    DatasetUID,
    NamedRefUID,
    LoadType,
    LocalLastModDate,
    CatiaUUID,
    Configuration,
    LinkedDocs,
    DesignTableFiles,
    DesignTableSheets,
    DesignTableConfigs,
    DesignTableCksums,
    StructLastModDate,
    SkippedOcc,
    DesignTableMaps,
    // Bare values of a positional file: their texts are keys in memory and stand in no file.
    ItemId,
    ItemRevId,
    ItemRevName,
    DatasetVersion,
    DatasetType,
    DbLastModDate,
    Count
};

constexpr std::size_t kDatTagCount = static_cast<std::size_t>(DatTag::Count);
/** So many tags, the first ones, stand in files. */
constexpr std::size_t kDatTagsInFiles = static_cast<std::size_t>(DatTag::ItemId);

/** The opening tag with its angle brackets; also the key of the field in memory. */
const CATUnicodeString& tagText(DatTag i_tag);

/** Single values of a positional file, in the order of its lines. */
const CATListValCATUnicodeString& positionalTags();
/** Single values of a tagged file, without its version. */
const CATListValCATUnicodeString& taggedTags();

} // namespace vorntools

#endif
