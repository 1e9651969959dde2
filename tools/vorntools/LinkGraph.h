#ifndef TOOLS_VORNTOOLS_LINK_GRAPH_H
#define TOOLS_VORNTOOLS_LINK_GRAPH_H

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

/** Documents and which of them point to which, drawn from left to right. */
class LinkGraph {
public:
    /** Adds a document unless it is there; its index. @param missing it is only pointed to */
    std::size_t add(const std::string& name, bool missing);
    /** Adds an edge between two documents, once. */
    void connect(std::size_t from, std::size_t to);

    std::size_t size() const { return m_nodes.size(); }
    /** Documents that are missing, each with those that point to it, by name. */
    std::map<std::string, std::vector<std::string>> missing() const;
    /** A drawing as an element of an HTML page; documents that no edge leads from or to are left out. */
    std::string svg() const;

private:
    struct Node {
        std::string name;
        bool missing;
        std::set<std::size_t> targets;
    };
    /** Where a document's name is drawn; without a width for one that is not. */
    struct Box {
        int x, y, width;
    };
    using Order = std::vector<std::vector<std::size_t>>; ///< nodes of each column from top to bottom

    std::vector<std::size_t> columns() const;
    Order arrange() const;
    std::vector<Box> place(const Order& order) const;
    std::string edges(const std::vector<Box>& boxes) const;
    std::string names(const std::vector<Box>& boxes) const;

    std::vector<Node> m_nodes;
    std::map<std::string, std::size_t> m_indices;
};

/** Bytes as the printable content of an element or of a quoted attribute. */
std::string escapedForHtml(const std::string& text);

#endif
