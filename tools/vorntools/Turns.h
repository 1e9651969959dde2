#ifndef TOOLS_VORNTOOLS_TURNS_H
#define TOOLS_VORNTOOLS_TURNS_H

#include "tools/vorntools/Packet.h"
#include "tools/vorntools/System.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

/**
 * How many processes read documents.
 * @param jobs how many are wanted; 0: one a processor, as far as that is useful
 * @return at least 1
 */
std::size_t processesFor(int jobs, std::size_t documents);

/** Bytes that helper processes work out, as the answers of Turns. */
class HelperTurns {
public:
    HelperTurns(std::size_t count, std::size_t processes, const std::function<std::string(std::size_t)>& work);
    /** False where the system lets no more processes begin. */
    bool haveBegun() const { return m_helpers.haveBegun(); }
    /** @throws std::runtime_error when the process whose turn it is has ended */
    std::string next();

private:
    const std::size_t m_processes;
    const std::size_t m_turn; ///< how many answers a process works out before it is the next one's turn
    std::size_t m_next = 0;
    host::Helpers m_helpers;
};

/**
 * Answers to the questions 0, 1, 2, ... in this order. Several processes work them out in turns, so that one waits for
 * its files while another computes; a single one is this process, where each is worked out when it is asked for. So it
 * is where the system lets no more processes begin.
 *
 *     Turns<Answer> answers(files.size(), 8, [&](std::size_t i) { return ask(files[i]); });
 *     for (const std::string& file : files) show(file, answers.next());
 *
 * An Answer can be packed: Packet.h.
 */
template <class Answer>
class Turns {
public:
    using Work = std::function<Answer(std::size_t)>;

    /** @param work which may be done by a copy of this process: only its answer can be seen */
    Turns(std::size_t count, std::size_t processes, Work work) : m_work(std::move(work)) {
        if (processes > 1) m_helpers.emplace(count, processes, [this](std::size_t at) { return packed(m_work(at)); });
        if (m_helpers && !m_helpers->haveBegun()) m_helpers.reset();
    }

    /** The next one. @throws std::runtime_error when the process that was to work it out has ended */
    Answer next() { return m_helpers ? unpacked<Answer>(m_helpers->next()) : m_work(m_next++); }

private:
    const Work m_work;
    std::size_t m_next = 0;
    std::optional<HelperTurns> m_helpers;
};

#endif
