#include "tools/vorntools/Turns.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace {

/** Enough for few changes between processes, so few that each process has many turns. */
std::size_t turnFor(std::size_t count, std::size_t processes) {
    return std::clamp<std::size_t>(count / (processes * 8), 1, 16);
}

/** What is sent at once. */
constexpr std::size_t kMostWaiting = std::size_t(1) << 16U;

/** Of processes that nobody asked for. */
constexpr std::size_t kMostUnasked = 8;
/** With fewer a process costs more than it gains. */
constexpr std::size_t kDocumentsPerProcess = 100;

} // namespace

std::size_t processesFor(int jobs, std::size_t documents) {
    if (!host::Helpers::areThere()) return 1;
    const std::size_t wanted = jobs > 0
                                   ? std::min(static_cast<std::size_t>(jobs), documents)
                                   : std::min({host::processors(), kMostUnasked, documents / kDocumentsPerProcess});
    return std::max<std::size_t>(wanted, 1);
}

HelperTurns::HelperTurns(std::size_t count, std::size_t processes, const std::function<std::string(std::size_t)>& work)
    : m_processes(processes), m_turn(turnFor(count, processes)),
      m_helpers(processes, [&](std::size_t process, const host::Helpers::Send& send) {
          std::string waiting;
          for (std::size_t first = process * m_turn; first < count; first += m_processes * m_turn) {
              for (std::size_t i = first; i < std::min(first + m_turn, count); ++i) {
                  const std::string answer = work(i);
                  const auto size = static_cast<std::int64_t>(answer.size());
                  waiting.append(reinterpret_cast<const char*>(&size), sizeof size).append(answer);
                  if (waiting.size() < kMostWaiting) continue;
                  send(waiting);
                  waiting.clear();
              }
              send(waiting);
              waiting.clear();
          }
      }) {}

std::string HelperTurns::next() {
    const std::size_t process = m_next++ / m_turn % m_processes;
    std::int64_t size = 0;
    std::string length, answer;
    bool isWhole = m_helpers.receive(process, sizeof size, length);
    if (isWhole) {
        length.copy(reinterpret_cast<char*>(&size), sizeof size);
        answer.reserve(static_cast<std::size_t>(size));
        isWhole = m_helpers.receive(process, static_cast<std::size_t>(size), answer);
    }
    if (!isWhole) throw std::runtime_error("a process that reads documents has ended too early");
    return answer;
}
