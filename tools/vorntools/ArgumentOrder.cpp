#include "tools/vorntools/ArgumentOrder.h"

#include <algorithm>

namespace {

using Words = std::vector<std::string>;

/** An option as one of the arguments spells it. */
struct Spelled {
    const Option* option = nullptr;
    bool holdsValue = false; ///< "--name=value" or "-nvalue"
};

Spelled spelledIn(const Command& command, const std::string& argument) {
    for (const Option& option : command.options())
        for (const std::string& spelling : option.spellings()) {
            if (argument == spelling) return {&option, false};
            const bool isLong = spelling.compare(0, 2, "--") == 0;
            const std::string begin = isLong ? spelling + "=" : spelling;
            if (argument.compare(0, begin.size(), begin) == 0) return {&option, true};
        }
    return {};
}

Spelled spelledBelow(const Command& command, const std::string& argument) {
    for (const Command& below : command.commands()) {
        Spelled spelled = spelledIn(below, argument);
        if (!spelled.option) spelled = spelledBelow(below, argument);
        if (spelled.option) return spelled;
    }
    return {};
}

class Ordering {
public:
    Ordering(const Command& program, const Words& given) : m_program(program), m_command(&program), m_given(given) {}

    Words run() {
        while (m_at < m_given.size() && m_given[m_at] != "--") step(m_given[m_at]);
        append(m_waiting, m_behind);
        // The parser takes no operand behind "--" when one stands in front of it.
        if (m_at < m_given.size()) m_behind.emplace_back("--");
        append(m_operands, m_behind);
        if (m_at < m_given.size())
            append(Words(m_given.begin() + static_cast<std::ptrdiff_t>(m_at) + 1, m_given.end()), m_behind);
        append(m_behind, m_front);
        return m_front;
    }

private:
    void step(const std::string& argument) {
        if (argument.size() < 2 || argument.front() != '-') return word(argument);
        if (const Spelled own = spelledIn(*m_command, argument); own.option) return take(own, m_behind);
        if (const Spelled below = spelledBelow(*m_command, argument); below.option) return take(below, m_waiting);
        if (const Spelled outer = spelledIn(m_program, argument); outer.option) return take(outer, m_front);
        take({}, m_behind);
    }

    void word(const std::string& argument) {
        if (m_command->commands().empty()) return take({}, m_operands);
        take({}, m_behind);
        const Command* const below = commandBelow(*m_command, argument);
        if (!below) return;
        m_command = below;
        // What waited for this command goes behind its name, the rest waits for one below it.
        if (below->commands().empty()) {
            append(m_waiting, m_behind);
            m_waiting.clear();
        }
    }

    /** Passes the next argument on, with the value that an option takes. */
    void take(const Spelled& spelled, Words& words) {
        words.push_back(m_given[m_at++]);
        const bool takesValue = spelled.option && !spelled.option->argument.empty() && !spelled.holdsValue;
        if (takesValue && m_at < m_given.size()) words.push_back(m_given[m_at++]);
    }

    static void append(const Words& from, Words& to) { to.insert(to.end(), from.begin(), from.end()); }

    const Command& m_program;
    const Command* m_command;
    const Words& m_given;
    std::size_t m_at = 0;
    Words m_front, m_behind, m_waiting, m_operands;
};

/** Letters to change, add, leave out or swap with the next one until the words are equal. */
std::size_t distanceOf(const std::string& left, const std::string& right) {
    std::vector<std::vector<std::size_t>> steps(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) steps[i][0] = i;
    for (std::size_t j = 0; j <= right.size(); ++j) steps[0][j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i)
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t change = steps[i - 1][j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, change});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    return steps[left.size()][right.size()];
}

} // namespace

const Command* commandBelow(const Command& command, const std::string& name) {
    for (const Command& below : command.commands())
        if (below.name() == name) return &below;
    return nullptr;
}

Words orderedArguments(const Command& program, const Words& given) { return Ordering(program, given).run(); }

std::string nearestOf(const std::string& word, const std::vector<std::string>& known) {
    constexpr std::size_t kLongest = 40; // nobody means a command by more letters than that
    if (word.size() > kLongest) return {};
    std::string nearest;
    std::size_t least = 2 + word.size() / 4;
    for (const std::string& candidate : known) {
        const bool begins = word.size() > 2 && candidate.compare(0, word.size(), word) == 0;
        const std::size_t distance = begins ? 1 : distanceOf(word, candidate);
        if (distance >= least || distance >= candidate.size()) continue;
        least = distance;
        nearest = candidate;
    }
    return nearest;
}
