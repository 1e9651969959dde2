#ifndef TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_SET_H
#define TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_SET_H

#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/archive/DocumentTree.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace catalogue {
class Reader;
}

/**
 * Catalogues that are asked as if they were one archive. Documents have their full names. What cannot be read is thrown
 * as DatabaseError.
 */
class CatalogueSet {
public:
    explicit CatalogueSet(const std::vector<std::string>& files);
    ~CatalogueSet();
    CatalogueSet(const CatalogueSet&) = delete;
    CatalogueSet& operator=(const CatalogueSet&) = delete;

    /** Whether all folders of all catalogues could be read; what not is said on standard error. */
    bool isComplete();
    /** Every document once, in order. @param withLinks else nothing of what it says of others */
    void forEach(const std::function<void(const DocumentFacts&)>& take, bool withLinks = true);
    /** Full names of the files that are no documents. */
    std::vector<std::string> otherFiles();
    /** Of these and of the documents that are there. */
    std::vector<std::string> walkedFiles();
    /** Fills an archive with everything, and finishes it. @param withLinks as forEach takes it */
    void fill(Archive& archive, bool withLinks = true);
    /** Fills an archive with what a tree of some depth shows, 0 for all, and finishes it.
     * @return false when no catalogue has the file */
    bool fillTree(Archive& archive, const std::string& fullName, DocumentTree::Direction direction, unsigned int depth);
    /** Empty for none. */
    std::string previewOf(const std::string& fullName);
    /** Full names of the folders that they tell of. */
    std::vector<std::string> lookedAt();

private:
    struct Opened;
    /** Each once. */
    std::vector<std::string> namesOf(std::vector<std::string> (catalogue::Reader::*names)());
    void addNamesakes(Archive& archive, bool ofMissing, std::vector<std::string>& others);

    std::vector<std::unique_ptr<Opened>> m_opened;
};

#endif
