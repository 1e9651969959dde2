#ifndef TOOLS_VORNTOOLS_ARCHIVE_NAME_INDEX_H
#define TOOLS_VORNTOOLS_ARCHIVE_NAME_INDEX_H

#include "tools/vorntools/archive/Rows.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/** A file that a missing target might mean. */
struct Candidate {
    Index file = 0;            ///< number under which it was added
    unsigned int agreeing = 0; ///< folders of the stored path that its own ends with
    unsigned int distance = 0; ///< folders to go up and down from the document that wants it
};

struct Candidates {
    std::vector<Candidate> nearest; ///< nearest path first, at most NameIndex::kMostCandidates
    std::size_t count = 0;          ///< of all
};

/** Files by their last names, letter case aside. */
class NameIndex {
public:
    static constexpr std::size_t kMostCandidates = 10;

    /** @param fullName good for as long as the index */
    void add(std::string_view fullName, Index number);
    /** Behind the last add and before any question. */
    void sort();

    /** How many files have the last name of a path. */
    std::size_t count(std::string_view path) const { return numbersOf(path).size(); }
    /** Numbers of the files of one last name by their full names, for every last name. */
    std::vector<Rows<Index>> groups() const;
    /**
     * Files that have the last name of a path. Of more than 64 those are looked at that are next to the document in
     * alphabetical order, which share most folders with it.
     * @param stored path. @param document full name of the one that wants it
     */
    Candidates candidates(std::string_view stored, std::string_view document) const;

private:
    Rows<Index> numbersOf(std::string_view path) const;

    struct File {
        std::string_view fullName;
        Index number;
    };
    std::vector<File> m_files; ///< by group, then by full name
    std::vector<Index> m_numbers;
    std::vector<RowRange> m_groups;
    std::unordered_map<std::string, Index> m_groupOf; ///< by folded last name
};

#endif
