#include "cache/DatTags.h"

namespace vorntools {
namespace {

/** In the order of DatTag. */
const CATUnicodeString kTexts[] = {
    "<DatFileVersion>", "<ItemRevUID>",        "<DatasetUID>",   "<NamedRefUID>",  "<LoadType>",  "<LocalLastModDate>",
    "<CatiaUUID>",      "<Configuration>",     "<LinkedDocs>",   "<DT_Files>",     "<DT_Sheets>", "<DT_Cfgs>",
    "<DT_CfgCksums>",   "<StructLastModDate>", "<OVSkippedOcc>", "<DT_Maps>",      "<ItemId>",    "<ItemRevId>",
    "<ItemRevName>",    "<DatasetVersion>",    "<DatasetType>",  "<DbLastModDate>"};
static_assert(sizeof kTexts / sizeof *kTexts == kDatTagCount, "every tag has its text");

template <std::size_t N>
CATListValCATUnicodeString textsOf(const DatTag (&i_tags)[N]) {
    CATListValCATUnicodeString texts;
    for (const DatTag tag : i_tags) texts.Append(tagText(tag));
    return texts;
}

const CATListValCATUnicodeString kPositionalTags =
    textsOf({DatTag::ItemId, DatTag::ItemRevId, DatTag::ItemRevName, DatTag::DatasetUID, DatTag::DatasetVersion,
             DatTag::LoadType, DatTag::DatasetType, DatTag::LocalLastModDate, DatTag::DbLastModDate});
const CATListValCATUnicodeString kTaggedTags =
    textsOf({DatTag::ItemRevUID, DatTag::DatasetUID, DatTag::NamedRefUID, DatTag::LoadType, DatTag::LocalLastModDate});

} // namespace

const CATUnicodeString& tagText(DatTag i_tag) { return kTexts[static_cast<std::size_t>(i_tag)]; }

const CATListValCATUnicodeString& positionalTags() { return kPositionalTags; }

const CATListValCATUnicodeString& taggedTags() { return kTaggedTags; }

} // namespace vorntools
