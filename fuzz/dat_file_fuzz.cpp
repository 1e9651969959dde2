// Any bytes as the DAT file of a document: the cache reads them and answers every question on them.

#include "ExchangeFolder.h"

#include "VornCache.h"

namespace {

int sizeOf(VornCache& cache, const CATUnicodeString& name,
           HRESULT (VornCache::*getter)(CATUnicodeString, CATListValCATUnicodeString&)) {
    CATListValCATUnicodeString list;
    require((cache.*getter)(name, list) == S_OK, "a list that fails");
    return list.Size();
}

int linksOf(VornCache& cache, const CATUnicodeString& name,
            HRESULT (VornCache::*getter)(CATUnicodeString, const CATUnicodeString&, CATListValCATUnicodeString&)) {
    CATListValCATUnicodeString list;
    require((cache.*getter)(name, "/nowhere", list) == S_OK, "links that fail");
    for (int i = 1; i <= list.Size(); ++i) require(!list[i].IsNull(), "a link without a name");
    return list.Size();
}

CATUnicodeString valueOf(VornCache& cache, const CATUnicodeString& name, const char* tag) {
    CATUnicodeString value;
    require(cache.getDataAtLine(name, tag, value) == S_OK, "a value that fails");
    return value;
}

void checkLists(VornCache& cache, const CATUnicodeString& name) {
    const int links = linksOf(cache, name, &VornCache::getLinkedDoc);
    const int targets = linksOf(cache, name, &VornCache::getLinkedMMLDoc);
    const int contexts = linksOf(cache, name, &VornCache::getLinkedMMLAssyDoc);
    const int unresolved = sizeOf(cache, name, &VornCache::getLinkedUnresolvedDoc);
    require(links >= targets + contexts + unresolved, "more special links than links");
    unsigned char has = 0;
    cache.hasLinkedUnresolvedDoc(name, has);
    require((unresolved > 0) == (has != 0), "unresolved links are counted one way and asked another");
    CATUnicodeString context;
    cache.getExistingMMLAssyContextDocName(name, context);
    require(context.IsNull() || contexts > 0, "a context without contexts");

    linksOf(cache, name, &VornCache::getDesignTableFiles);
    const int described = sizeOf(cache, name, &VornCache::getDesignTableSheets) *
                          sizeOf(cache, name, &VornCache::getDesignTableConfigs) *
                          sizeOf(cache, name, &VornCache::getDesignTableCksums);
    require(described == 0 || cache.isDesignTable(name), "a described design table that is none");
    sizeOf(cache, name, &VornCache::getDesignTableMaps);
    sizeOf(cache, name, &VornCache::getConfiguration);
    sizeOf(cache, name, &VornCache::getSkippedOccList);
}

void checkValues(VornCache& cache, const CATUnicodeString& name) {
    const bool positional = valueOf(cache, name, "<DatFileVersion>") == CATUnicodeString("0");
    CATUnicodeString revision;
    cache.getItemRevUID(name, revision);
    require(revision == valueOf(cache, name, "<ItemRevUID>"), "two answers for the item revision");
    require(!positional || revision.IsNull(), "a positional file with a tagged value");
    require(positional || valueOf(cache, name, "<ItemId>").IsNull(), "a tagged file with a positional value");
    require(!cache.isCatalogComp(name) || valueOf(cache, name, "<LoadType>") == CATUnicodeString("CatalogComp"),
            "a catalog component of another load type");
    CATUnicodeString text;
    cache.getDatasetUID(name, text);
    cache.getBVRDate(name, text);
    const int attributes = sizeOf(cache, name, &VornCache::getAttributeList);
    require(attributes >= 2 && attributes % 2 == 0, "attributes come in pairs");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    folder.write("p.CATPart", "x");
    folder.write("p.CATPart.dat", std::string(data, data + size));
    const CATUnicodeString name = folder.nameOf("p.CATPart").c_str();
    const long lists = embedded::Accounting::get().live().lists;
    {
        VornCache cache;
        require(cache.addDocument(name, nullptr) == S_OK, "a document that is refused");
        VornCache::EnumModifiedFlag status = VornCache::ModifiedFlagNew;
        cache.getModifiedStatus(name, status);
        require(status == VornCache::ModifiedFlagNotModified || status == VornCache::ModifiedFlagModified,
                "the status of a document whose DAT file is there");
        checkValues(cache, name);
        checkLists(cache, name);
        cache.setNewFullFileName(name, "renamed");
        require(!cache.isInCache(name) && cache.isInCache("renamed"), "a rename that moves nothing");
    }
    require(embedded::Accounting::get().live().lists == lists, "lists left alive");
    requireTidiness();
    return 0;
}
