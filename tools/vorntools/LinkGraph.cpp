#include "tools/vorntools/LinkGraph.h"

#include "tools/vorntools/Text.h"

#include <algorithm>
#include <sstream>

namespace {

constexpr int kLetterWidth = 8; ///< of a fixed-width font, with what stands around a name
constexpr int kBoxHeight = 24;
constexpr int kRowHeight = 36;
constexpr int kGap = 70; ///< between columns
constexpr int kMargin = 10;
constexpr int kBaseline = 16; ///< of a name, below the top of its box

} // namespace

std::string escapedForHtml(const std::string& text) {
    std::string result;
    for (const char letter : printable(text)) {
        switch (letter) {
        case '&': result += "&amp;"; break;
        case '<': result += "&lt;"; break;
        case '>': result += "&gt;"; break;
        case '"': result += "&quot;"; break;
        default: result += letter;
        }
    }
    return result;
}

std::size_t LinkGraph::add(const std::string& name, bool missing) {
    const auto inserted = m_indices.emplace(name, m_nodes.size());
    if (inserted.second) m_nodes.push_back({name, missing, {}});
    return inserted.first->second;
}

void LinkGraph::connect(std::size_t from, std::size_t to) {
    if (from != to) m_nodes[from].targets.insert(to);
}

std::map<std::string, std::vector<std::string>> LinkGraph::missing() const {
    std::map<std::string, std::vector<std::string>> result;
    for (const Node& node : m_nodes)
        for (const std::size_t target : node.targets)
            if (m_nodes[target].missing) result[m_nodes[target].name].push_back(node.name);
    return result;
}

/** One behind the last document that points to it; links that would close a circle do not count. */
std::vector<std::size_t> LinkGraph::columns() const {
    enum class Mark { untouched, open, closed };
    std::vector<Mark> marks(m_nodes.size(), Mark::untouched);
    std::vector<std::pair<std::size_t, std::size_t>> kept; // edges, those of a node behind those of its targets
    struct Step {
        std::size_t node;
        std::set<std::size_t>::const_iterator next;
    };
    for (std::size_t start = 0; start < m_nodes.size(); ++start) {
        if (marks[start] != Mark::untouched) continue;
        std::vector<Step> path = {{start, m_nodes[start].targets.begin()}};
        marks[start] = Mark::open;
        while (!path.empty()) {
            Step& step = path.back();
            const std::size_t node = step.node;
            if (step.next == m_nodes[node].targets.end()) {
                for (const std::size_t target : m_nodes[node].targets)
                    if (marks[target] == Mark::closed) kept.emplace_back(node, target);
                marks[node] = Mark::closed;
                path.pop_back();
                continue;
            }
            const std::size_t target = *step.next++;
            if (marks[target] != Mark::untouched) continue;
            marks[target] = Mark::open;
            path.push_back({target, m_nodes[target].targets.begin()});
        }
    }
    std::vector<std::size_t> result(m_nodes.size(), 0);
    for (auto edge = kept.rbegin(); edge != kept.rend(); ++edge)
        result[edge->second] = std::max(result[edge->second], result[edge->first] + 1);
    return result;
}

/** Each document beside the middle of those that point to it. */
LinkGraph::Order LinkGraph::arrange() const {
    const std::vector<std::size_t> column = columns();
    std::vector<std::vector<std::size_t>> sources(m_nodes.size());
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        for (const std::size_t target : m_nodes[i].targets) sources[target].push_back(i);
    Order order;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i].targets.empty() && sources[i].empty()) continue;
        if (order.size() <= column[i]) order.resize(column[i] + 1);
        order[column[i]].push_back(i);
    }
    std::vector<double> height(m_nodes.size(), 0);
    for (auto& nodes : order) {
        const auto middle = [&](std::size_t node) {
            double sum = 0;
            int count = 0;
            for (const std::size_t source : sources[node])
                if (column[source] < column[node]) sum += height[source], ++count;
            return count > 0 ? sum / count : static_cast<double>(node);
        };
        std::stable_sort(nodes.begin(), nodes.end(),
                         [&](std::size_t left, std::size_t right) { return middle(left) < middle(right); });
        for (std::size_t row = 0; row < nodes.size(); ++row) height[nodes[row]] = static_cast<double>(row);
    }
    return order;
}

std::vector<LinkGraph::Box> LinkGraph::place(const Order& order) const {
    std::vector<Box> boxes(m_nodes.size());
    int left = kMargin;
    for (const auto& nodes : order) {
        int width = 0;
        for (const std::size_t node : nodes)
            width = std::max(width,
                             kLetterWidth * (static_cast<int>(widthOf(printable(fileNameOf(m_nodes[node].name)))) + 2));
        int top = kMargin;
        for (const std::size_t node : nodes) {
            boxes[node] = {left, top, width};
            top += kRowHeight;
        }
        left += width + kGap;
    }
    return boxes;
}

std::string LinkGraph::edges(const std::vector<Box>& boxes) const {
    std::ostringstream text;
    for (std::size_t node = 0; node < m_nodes.size(); ++node)
        for (const std::size_t target : m_nodes[node].targets) {
            const int x = boxes[node].x + boxes[node].width, y = boxes[node].y + kBoxHeight / 2;
            const int toX = boxes[target].x, toY = boxes[target].y + kBoxHeight / 2;
            text << "<path" << (m_nodes[target].missing ? " class=\"missing\"" : "") << " d=\"M" << x << ' ' << y
                 << " C" << x + kGap / 2 << ' ' << y << ' ' << toX - kGap / 2 << ' ' << toY << ' ' << toX << ' ' << toY
                 << "\"/>\n";
        }
    return text.str();
}

std::string LinkGraph::names(const std::vector<Box>& boxes) const {
    std::ostringstream text;
    for (std::size_t node = 0; node < m_nodes.size(); ++node) {
        const Box& box = boxes[node];
        if (box.width == 0) continue; // has no place in the drawing
        text << "<g" << (m_nodes[node].missing ? " class=\"missing\"" : "") << "><title>"
             << escapedForHtml(m_nodes[node].name) << "</title><rect x=\"" << box.x << "\" y=\"" << box.y
             << "\" width=\"" << box.width << "\" height=\"" << kBoxHeight << "\" rx=\"4\"/><text x=\""
             << box.x + kLetterWidth << "\" y=\"" << box.y + kBaseline << "\">"
             << escapedForHtml(fileNameOf(m_nodes[node].name)) << "</text></g>\n";
    }
    return text.str();
}

std::string LinkGraph::svg() const {
    const std::vector<Box> boxes = place(arrange());
    int width = 0, height = 0;
    for (const Box& box : boxes) {
        width = std::max(width, box.x + box.width + kMargin);
        height = std::max(height, box.y + kBoxHeight + kMargin);
    }
    std::ostringstream text;
    text << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height << "\">\n"
         << "<defs><marker id=\"end\" viewBox=\"0 0 8 8\" refX=\"8\" refY=\"4\" markerWidth=\"8\" "
            "markerHeight=\"8\" orient=\"auto\"><path class=\"end\" d=\"M0 0 L8 4 L0 8z\"/></marker></defs>\n"
         << edges(boxes) << names(boxes) << "</svg>\n";
    return text.str();
}
