#include "embedded/structure/Containment.h"

#include "embedded/documents/SessionData.h"

#include <cstdint>
#include <vector>

namespace embedded {

namespace {

/** One direction of a search through the references. */
class Frontier {
public:
    Frontier(Reference& start, std::uint64_t mark) : m_mark(mark) { reach(start); }

    bool exhausted() const { return m_next == m_reached.size(); }
    /** Visits one more reference and reaches those below it, or above it when `upwards`. */
    Reference& step(bool upwards) {
        Reference& visited = *m_reached[m_next++];
        if (upwards) {
            for (Reference* user : visited.usedIn) reach(*user);
        } else {
            for (std::size_t i = 0; i < visited.node->childCount(); ++i)
                if (Reference* const child = visited.node->child(i)->reference()) reach(*child);
        }
        return visited;
    }

private:
    void reach(Reference& reference) {
        if (reference.mark == m_mark) return;
        reference.mark = m_mark;
        m_reached.push_back(&reference);
    }

    const std::uint64_t m_mark;
    std::size_t m_next = 0;
    std::vector<Reference*> m_reached;
};

} // namespace

bool holds(SessionData& session, Reference& below, Reference& above) {
    if (&below == &above) return true;
    const std::uint64_t downMark = ++session.lastMark;
    const std::uint64_t upMark = ++session.lastMark;
    Frontier down(below, downMark);
    Frontier up(above, upMark);
    while (!down.exhausted() && !up.exhausted()) {
        if (&down.step(false) == &above || &up.step(true) == &below) return true;
    }
    return false;
}

} // namespace embedded
