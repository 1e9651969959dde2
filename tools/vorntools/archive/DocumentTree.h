#ifndef TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_TREE_H
#define TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_TREE_H

#include "tools/vorntools/archive/Archive.h"

#include <vector>

/** One line of a tree of documents. */
struct TreeRow {
    enum Mark : std::uint8_t {
        Plain,
        SeeAbove, ///< what is below the document stands elsewhere, further up
        SeeBelow, ///< further down, where it is nearer to the top
        Cycle,    ///< the document is above itself
        Cut       ///< there is more, deeper than was asked for
    };
    Index link = kNoIndex;     ///< that leads here; none for the top
    Index document = kNoIndex; ///< none: what the link leads to is missing
    unsigned int level = 0;
    bool isLast = true; ///< of its neighbours
    Mark mark = Plain;
};

/**
 * What a document needs, or who needs it, to any depth. Each document is opened once, so that there are at most as many
 * rows as links, and one. Works without recursion: chains of links may be as long as there are documents.
 */
class DocumentTree {
public:
    enum Direction { Uses, UsedBy };
    /** @param depth levels below the top; 0: all */
    DocumentTree(const Archive& archive, Index top, Direction direction, unsigned int depth);

    /** Line by line, each behind the one that it belongs to. */
    std::vector<TreeRow> rows() const;
    /** Every document and missing target once, by its smallest level, in the order in which they are met. */
    std::vector<TreeRow> nearest() const;

private:
    std::vector<TreeRow> below(Index document, unsigned int level) const;
    std::size_t countBelow(Index document) const;
    bool isCut(unsigned int level) const { return m_depth > 0 && level >= m_depth; }

    const Archive& m_archive;
    const Index m_top;
    const Direction m_direction;
    const unsigned int m_depth;
};

#endif
