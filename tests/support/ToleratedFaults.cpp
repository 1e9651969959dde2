#include "tests/support/ToleratedFaults.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <vector>

namespace {

using Words = std::set<std::string>;

Words wordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), std::istream_iterator<std::string>()};
}

/** A line "METHOD: CALL: FLAVOURS: DIFFERENCES  # why". */
struct Line {
    std::string text;
    Words flavours;
    Words differences;
    bool isNeeded = false;

    bool allows(const Words& flavour, const Words& found) const {
        return missing(flavours, flavour).empty() && missing(differences, found).empty();
    }
    static std::string missing(const Words& allowed, const Words& found) {
        std::string words;
        for (const std::string& word : found)
            if (allowed.count("any") == 0 && allowed.count(word) == 0) words += " " + word;
        return words;
    }
};

/** The lines by method and call. */
std::multimap<std::string, Line>& lines() {
    static auto& result = *new std::multimap<std::string, Line>([] {
        std::multimap<std::string, Line> read;
        std::ifstream file(VORNTOOLS_SOURCE_DIR "/tests/support/tolerated_faults.txt");
        for (std::string text; std::getline(file, text);) {
            if (!text.empty() && text.back() == '\r') text.pop_back();
            const std::string entry = text.substr(0, text.find("  #"));
            if (entry.empty() || entry[0] == '#') continue;
            std::vector<std::string> fields;
            for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 2) {
                end = entry.find(": ", begin);
                fields.push_back(entry.substr(begin, end - begin));
            }
            fields.resize(4, "any");
            read.insert({fields[0] + ": " + fields[1], {entry, wordsOf(fields[2]), wordsOf(fields[3])}});
        }
        return read;
    }());
    return result;
}

/** What another profile of the platform or another system makes needless is no fault of the line. */
class EachLineIsNeeded : public testing::Environment {
public:
    void TearDown() override {
        const testing::UnitTest& suite = *testing::UnitTest::GetInstance();
        const bool isWhole = suite.test_to_run_count() == suite.total_test_count() && suite.failed_test_count() == 0;
        if (!isWhole || std::getenv("VORNTOOLS_PROFILE")) return;
#if !defined(_WIN32)
        for (const auto& line : lines())
            EXPECT_TRUE(line.second.isNeeded) << "tolerated_faults.txt: no run needs " << line.second.text;
#endif
    }
};

/** Adds a line to the file that an environment variable names, if it does. */
void record(const char* variable, const std::string& line) {
    if (const char* const file = std::getenv(variable)) std::ofstream(file, std::ios::app) << line << "\n";
}

const testing::Environment* const kEachLineIsNeeded = testing::AddGlobalTestEnvironment(new EachLineIsNeeded);

} // namespace

std::string objectionTo(const SurvivedFault& fault) {
    const std::string key = fault.method + ": " + fault.call;
    const std::string entry =
        key + ": " + fault.flavour + ": " + (fault.differences.empty() ? "none" : fault.differences);
    record("VORNTOOLS_SURVIVED_FAULTS", entry);
    const auto range = lines().equal_range(key);
    for (auto line = range.first; line != range.second; ++line) {
        if (!line->second.allows({fault.flavour}, wordsOf(fault.differences))) continue;
        line->second.isNeeded = true;
        return std::string();
    }
    return "fault met, success returned; not on the list: " + entry;
}

void recordSweepOf(const std::string& method) { record("VORNTOOLS_SWEPT", method); }
