#include "tools/vorntools/archive/DocumentTree.h"

DocumentTree::DocumentTree(const Archive& archive, Index top, Direction direction, unsigned int depth)
    : m_archive(archive), m_top(top), m_direction(direction), m_depth(depth) {}

std::vector<TreeRow> DocumentTree::below(Index document, unsigned int level) const {
    std::vector<TreeRow> rows;
    if (m_direction == Uses) {
        const RowRange links = m_archive.document(document).links;
        for (Index i = links.first; i < links.first + links.count; ++i)
            rows.push_back({i, m_archive.links()[i].target, level, false, TreeRow::Plain});
    } else {
        for (const Index link : m_archive.linksTo(document))
            rows.push_back({link, m_archive.links()[link].from, level, false, TreeRow::Plain});
    }
    if (!rows.empty()) rows.back().isLast = true;
    return rows;
}

std::size_t DocumentTree::countBelow(Index document) const {
    return m_direction == Uses ? m_archive.linksOf(document).size() : m_archive.linksTo(document).size();
}

std::vector<TreeRow> DocumentTree::nearest() const {
    std::vector<TreeRow> rows = {{kNoIndex, m_top, 0, true, TreeRow::Plain}};
    std::vector<bool> met(m_archive.documents().size()), missed(m_archive.missing().size());
    met[m_top] = true;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].document == kNoIndex || isCut(rows[i].level)) continue;
        for (const TreeRow& row : below(rows[i].document, rows[i].level + 1)) {
            auto&& known = row.document != kNoIndex ? met[row.document] : missed[m_archive.links()[row.link].missing];
            if (!known) rows.push_back(row);
            known = true;
        }
    }
    return rows;
}

std::vector<TreeRow> DocumentTree::rows() const {
    // Within a limited depth a document is opened where it is nearest to the top: there nothing of it is cut that
    // would be shown elsewhere.
    std::vector<unsigned int> levels(m_depth > 0 ? m_archive.documents().size() : 0);
    if (m_depth > 0)
        for (const TreeRow& row : nearest())
            if (row.document != kNoIndex) levels[row.document] = row.level;

    struct Open {
        std::vector<TreeRow> rows;
        std::size_t next = 0;
        Index document;
    };
    std::vector<TreeRow> result;
    std::vector<bool> opened(m_archive.documents().size()), above(m_archive.documents().size());
    std::vector<Open> path;
    const auto show = [&](TreeRow row) {
        const Index document = row.document;
        if (document != kNoIndex) {
            if (above[document])
                row.mark = TreeRow::Cycle;
            else if (opened[document])
                row.mark = TreeRow::SeeAbove;
            else if (m_depth > 0 && levels[document] < row.level)
                row.mark = TreeRow::SeeBelow;
            else if (isCut(row.level) && countBelow(document) > 0)
                row.mark = TreeRow::Cut;
        }
        result.push_back(row);
        if (document == kNoIndex || row.mark != TreeRow::Plain) return;
        opened[document] = true;
        if (countBelow(document) == 0) return;
        above[document] = true;
        path.push_back({below(document, row.level + 1), 0, document});
    };
    show({kNoIndex, m_top, 0, true, TreeRow::Plain});
    while (!path.empty()) {
        Open& open = path.back();
        if (open.next == open.rows.size()) {
            above[open.document] = false;
            path.pop_back();
        } else {
            const TreeRow row = open.rows[open.next++];
            show(row);
        }
    }
    return result;
}
