// The journal in memory, and the companion's manager that writes into it.
#include "CATUnicodeString.h"
#include "JNLManager.h"
#include "embedded/Records.h"
#include "embedded/services/EnvironmentAnswers.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string_view>

namespace embedded {

namespace {

constexpr std::string_view kOpening = "> ";
constexpr std::string_view kClosing = "< ";
constexpr int kNoCode = -1;
/** Most lines fit into this much at the first attempt. */
constexpr std::size_t kUsualLine = 640;
/** Of a code with its sign and the blank before it. */
constexpr std::size_t kMostDigits = 12;

bool isMessage(std::string_view line) {
    return line.substr(0, kOpening.size()) != kOpening && line.substr(0, kClosing.size()) != kClosing;
}

/** Whether a line closes the entry of that name, with or without a code. */
bool isClosing(std::string_view line, std::string_view name) {
    if (line.substr(0, kClosing.size()) != kClosing) return false;
    const std::string_view closed = line.substr(kClosing.size());
    return closed.substr(0, name.size()) == name && (closed.size() == name.size() || closed[name.size()] == ' ');
}

} // namespace

Journal& Journal::get() {
    static Journal& journal = *new Journal;
    return journal;
}

std::string_view Journal::line(std::size_t index) const {
    if (index >= m_ends.size()) return {};
    const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_text).substr(begin, m_ends[index] - begin);
}

std::vector<std::string> Journal::lines() const {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < size(); ++i) result.emplace_back(line(i));
    return result;
}

std::vector<std::string> Journal::messages() const {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < size(); ++i)
        if (isMessage(line(i))) result.emplace_back(line(i));
    return result;
}

bool Journal::contains(std::string_view message) const {
    for (std::size_t i = 0; i < size(); ++i)
        if (line(i) == message) return true;
    return false;
}

void Journal::clear() {
    m_text.clear();
    m_ends.clear();
    m_open = 0;
    m_mismatches = 0;
    m_repeats = 0;
}

void Journal::makeRoom(std::size_t bytes) {
    if (m_text.size() + bytes > m_text.capacity())
        m_text.reserve((std::max)(2 * m_text.capacity(), m_text.size() + bytes));
    if (m_ends.size() == m_ends.capacity()) m_ends.reserve(2 * m_ends.capacity() + 1);
}

void Journal::begin(std::string_view name) {
    const auto depth = static_cast<std::size_t>(m_open);
    if (depth == m_names.size()) m_names.emplace_back();
    m_names[depth] = name;
    makeRoom(kOpening.size() + name.size());
    m_text.append(kOpening).append(name);
    m_ends.push_back(m_text.size());
    ++m_open;
}

void Journal::end(std::string_view name, int code) {
    const bool matches = m_open > 0 && m_names[static_cast<std::size_t>(m_open - 1)] == name;
    const bool repeats = !matches && isClosing(line(size() - 1), name);
    if (!matches) ++(repeats ? m_repeats : m_mismatches);
    if (m_open > 0 && !repeats) --m_open;
    makeRoom(kClosing.size() + name.size() + kMostDigits);
    m_text.append(kClosing).append(name);
    if (code != kNoCode) m_text.append(" ").append(std::to_string(code));
    m_ends.push_back(m_text.size());
}

void Journal::write(std::string_view message) {
    makeRoom(message.size());
    m_text.append(message);
    m_ends.push_back(m_text.size());
}

void Journal::write(const char* format, std::va_list arguments) {
    const std::size_t begin = m_text.size();
    makeRoom(kUsualLine);
    std::va_list again;
    va_copy(again, arguments);
    m_text.resize(begin + kUsualLine);
    const int length = std::vsnprintf(&m_text[begin], kUsualLine, format, arguments);
    const std::size_t size = length > 0 ? static_cast<std::size_t>(length) : 0;
    if (size >= kUsualLine) {
        m_text.resize(begin);
        makeRoom(size + 1);
        m_text.resize(begin + size + 1);
        std::vsnprintf(&m_text[begin], size + 1, format, again);
    }
    va_end(again);
    m_text.resize(begin + size);
    m_ends.push_back(m_text.size());
}

} // namespace embedded

namespace {

std::string_view bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

class JournalManager final : public JNLManager {
public:
    void writeFunctionBegin(const CATUnicodeString& iName, const CATUnicodeString&) override {
        embedded::Journal::get().begin(bytesOf(iName));
    }
    void writeFunctionEnd(const CATUnicodeString& iName, int iCode) override {
        embedded::Journal::get().end(bytesOf(iName), iCode);
    }
    void writeMsg(const char* iFormat, ...) override {
        std::va_list arguments;
        va_start(arguments, iFormat);
        embedded::Journal::get().write(iFormat ? iFormat : "", arguments);
        va_end(arguments);
    }
    void writeReturn(const char* iFormat, ...) override {
        std::va_list arguments;
        va_start(arguments, iFormat);
        embedded::Journal::get().write(iFormat ? iFormat : "", arguments);
        va_end(arguments);
    }
};

} // namespace

JNLManager* JNLManager::getInstance() {
    static JournalManager manager;
    return !embedded::Journal::get().isWanted() || embedded::isMissing("JNLManager") ? nullptr : &manager;
}
