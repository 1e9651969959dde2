#ifndef TESTS_SUPPORT_PROGRAM_H
#define TESTS_SUPPORT_PROGRAM_H

#include "tests/support/Fixture.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>
#include <sstream>

/** Runs the real program in the test's own folder. */
class ProgramTest : public PlatformTest {
protected:
    /** The program's exit code; what it says is then the content of "out" and "err". */
    int run(const std::string& arguments) { return runAfter("", arguments); }
    /** The same, started in a folder. */
    int runIn(const std::string& name, const std::string& arguments) {
        return runAfter("cd " + quoted(name) + " && ", arguments);
    }
    /** The same, behind other commands of the shell. */
    int runAfter(const std::string& commands, const std::string& arguments) {
        const int code = runShell(commands + program() + " " + arguments);
        keepLines(arguments);
        return code;
    }
    /** The same, with one terminal for everything that it says: the content of "out", line ends as the terminal has
     * them. */
    int runOnTerminal(const std::string& arguments) {
        return runShell("SHELL=/bin/sh script -qec '" + program() + " " + arguments + "' /dev/null");
    }
    std::string content(const std::string& name) {
        std::ostringstream text;
        text << std::ifstream(folder() / name, std::ios::binary).rdbuf();
        return text.str();
    }
    /** The objects that the last run printed, one a line. */
    std::vector<nlohmann::ordered_json> rows() {
        std::istringstream lines(content("out"));
        std::vector<nlohmann::ordered_json> result;
        for (std::string line; std::getline(lines, line);) result.push_back(nlohmann::ordered_json::parse(line));
        return result;
    }
    std::string quoted(const std::string& name) { return "\"" + path(name) + "\""; }

private:
    static std::string program() { return std::string("\"") + VORNTOOLS_PROGRAM + "\""; }
    int runShell(const std::string& command) {
        const std::string line = "{ " + command + "; } > " + quoted("out") + " 2> " + quoted("err");
        const int status = std::system(line.c_str());
        return status > 255 ? status / 256 : status;
    }
    /** Adds what was printed to the file that the environment names, for cmake/check_json.py. */
    void keepLines(const std::string& arguments) {
        const char* const file = std::getenv("VORNTOOLS_JSON_LINES");
        if (file && arguments.find("--json") != std::string::npos)
            std::ofstream(file, std::ios::binary | std::ios::app) << "# " << arguments << "\n" << content("out");
    }
};

#endif
