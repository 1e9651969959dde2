#include "tests/support/KnownWords.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

namespace {

using Words = std::set<std::string>;

/** The lines of a file of the sources but for its comments. */
std::vector<std::string> linesOf(const std::string& name) {
    std::vector<std::string> lines;
    std::ifstream file(VORNTOOLS_SOURCE_DIR + ("/" + name));
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line[0] != '#') lines.push_back(line);
    }
    EXPECT_FALSE(lines.empty()) << name;
    return lines;
}

/** The exported methods, and the odd names that some have in the journal. */
Words readJournalNames() {
    Words names = {"VornCache::ReadDataInDATFile", "VornToolsCommon::CalculateCheckSums",
                   "VornToolsExportAsReference:: isAnExportAsReference"};
    for (const std::string& line : linesOf("cmake/exported_symbols.txt"))
        if (line[0] == 'T') names.insert(line.substr(2, line.find('(') - 2));
    return names;
}

/** What the library may report, and whether each test that sweeps the method meets it. */
std::map<std::string, bool> readReports() {
    std::map<std::string, bool> reports;
    for (const std::string& line : linesOf("tests/support/known_reports.txt")) {
        const std::size_t colon = line.find(": ");
        for (std::size_t begin = colon + 2, end = colon; end != std::string::npos; begin = end + 2) {
            end = line.find("; ", begin);
            std::string report = line.substr(0, colon) + " " + line.substr(begin, end - begin);
            const bool isMetByAll = report.back() != '?';
            if (!isMetByAll) report.pop_back();
            reports[report] = isMetByAll;
        }
    }
    return reports;
}

/** The report with a star for its argument. */
std::string withAnyArgument(const std::string& report) {
    const std::size_t number = report.find_first_of("0123456789", report.find(' '));
    return report.substr(0, report.find(' ', number)) + " *";
}

const std::map<std::string, bool>& knownReports() {
    static const std::map<std::string, bool>& known = *new std::map<std::string, bool>(readReports());
    return known;
}

struct {
    Words swept, met;
} test;

} // namespace

void checkJournalNames(const std::vector<std::string>& lines) {
    static const Words& known = *new Words(readJournalNames());
    for (const std::string& line : lines) {
        const bool isOpening = line.compare(0, 6, "> Vorn") == 0;
        EXPECT_TRUE(!isOpening || known.count(line.substr(2)) == 1) << "no exported method: " << line;
    }
}

void checkReports(const std::vector<std::string>& reports) {
    for (const std::string& report : reports) {
        const auto& known = knownReports();
        EXPECT_TRUE(known.count(report) == 1 || known.count(withAnyArgument(report)) == 1)
            << "not in known_reports.txt: " << report;
        test.met.insert({report, withAnyArgument(report)});
    }
}

void expectReportsOf(const std::string& method) { test.swept.insert(method); }

void checkExpectedReports() {
#if !defined(_WIN32) // whose files fail in ways of their own
    for (const auto& [report, isMetByAll] : knownReports()) {
        const bool isExpected = isMetByAll && test.swept.count(report.substr(0, report.find(' '))) == 1;
        EXPECT_TRUE(!isExpected || test.met.count(report) == 1) << "met no more: " << report;
    }
#endif
    test = {};
}
