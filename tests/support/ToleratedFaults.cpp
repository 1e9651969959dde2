#include "tests/support/ToleratedFaults.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace {

/** The words of a field of a line, and which of them a run needed. */
class Field {
public:
    explicit Field(const std::string& text) {
        std::istringstream words(text);
        for (std::string word; words >> word;) m_needed[word] = false;
    }

    /** The word that stands for a name, a star for any part of it; null for none. */
    const std::string* find(const std::string& name) const {
        for (const auto& word : m_needed)
            if (isMatch(word.first.c_str(), name.c_str())) return &word.first;
        return nullptr;
    }
    void need(const std::string& name) { m_needed[*find(name)] = true; }
    /** Those that no run needed, a blank before each. */
    std::string needless() const {
        std::string words;
        for (const auto& word : m_needed)
            if (!word.second) words += " " + word.first;
        return words;
    }

private:
    static bool isMatch(const char* word, const char* name) {
        if (*word == '*') return isMatch(word + 1, name) || (*name && isMatch(word, name + 1));
        return *word == *name && (!*word || isMatch(word + 1, name + 1));
    }

    std::map<std::string, bool> m_needed;
};

constexpr const char* kNone = "none";

/** A line "METHODS: CALLS: FLAVOURS: DIFFERENCES  # why". */
class Line {
public:
    explicit Line(const std::string& text) : m_text(text) {
        const std::string entry = text.substr(0, text.find("  # "));
        EXPECT_LT(entry.size(), text.size()) << "tolerated_faults.txt: no reason in " << text;
        for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 2) {
            end = entry.find(": ", begin);
            m_fields.emplace_back(entry.substr(begin, end - begin));
        }
        EXPECT_EQ(m_fields.size(), 4U) << "tolerated_faults.txt: " << text;
        m_fields.resize(4, Field(""));
    }

    /** Whether it allows what the names tell, those of its four fields in turn; they are then needed. */
    bool allows(const std::vector<std::vector<std::string>>& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            for (const std::string& name : names[i])
                if (!m_fields[i].find(name)) return false;
        for (std::size_t i = 0; i < names.size(); ++i)
            for (const std::string& name : names[i]) m_fields[i].need(name);
        return true;
    }
    const std::string& text() const { return m_text; }
    std::string needless() const {
        std::string words;
        for (const Field& field : m_fields) words += field.needless();
        return words;
    }

private:
    std::string m_text;
    std::vector<Field> m_fields;
};

std::vector<Line>& lines() {
    static auto& result = *new std::vector<Line>([] {
        std::vector<Line> read;
        std::ifstream file(VORNTOOLS_SOURCE_DIR "/tests/support/tolerated_faults.txt");
        for (std::string text; std::getline(file, text);) {
            if (!text.empty() && text.back() == '\r') text.pop_back();
            if (!text.empty() && text[0] != '#') read.emplace_back(text);
        }
        return read;
    }());
    return result;
}

/** What another profile of the platform or another system makes needless is no fault of the line. */
class EachWordIsNeeded : public testing::Environment {
public:
    /** A test may choose another profile later. */
    void SetUp() override {
        const char* const profile = std::getenv("VORNTOOLS_PROFILE");
        m_isUsualProfile = !profile || !*profile;
    }
    void TearDown() override {
        const testing::UnitTest& suite = *testing::UnitTest::GetInstance();
        const bool isWhole = suite.test_to_run_count() == suite.total_test_count() && suite.failed_test_count() == 0;
        if (!isWhole || !m_isUsualProfile) return;
#if !defined(_WIN32)
        for (const Line& line : lines())
            EXPECT_EQ(line.needless(), "") << "tolerated_faults.txt: no run needs these words of " << line.text();
#endif
    }

private:
    bool m_isUsualProfile = false;
};

/** Adds a line to the file that an environment variable names, if it does. */
void record(const char* variable, const std::string& line) {
    if (const char* const file = std::getenv(variable)) std::ofstream(file, std::ios::app) << line << "\n";
}

const testing::Environment* const kEachWordIsNeeded = testing::AddGlobalTestEnvironment(new EachWordIsNeeded);

} // namespace

std::string objectionTo(const SurvivedFault& fault) {
    std::vector<std::string> differences;
    std::istringstream words(fault.differences.empty() ? kNone : fault.differences);
    for (std::string word; words >> word;) differences.push_back(word);
    const std::string entry = fault.method + ": " + fault.call + ": " + fault.flavour + ": " +
                              (fault.differences.empty() ? kNone : fault.differences);
    record("VORNTOOLS_SURVIVED_FAULTS", entry);
    for (Line& line : lines())
        if (line.allows({{fault.method}, {fault.call}, {fault.flavour}, differences})) return std::string();
    return "fault met, success returned; not on the list: " + entry;
}

void recordSweepOf(const std::string& method) { record("VORNTOOLS_SWEPT", method); }
