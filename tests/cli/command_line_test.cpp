#include "tests/support/Program.h"

#include <algorithm>

namespace {

class CommandLineTest : public ProgramTest {
protected:
    /** The last run's lines on standard error. */
    std::string said() { return content("err"); }
    static bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(CommandLineTest, WhatIsWrongIsSaidWithTheNearestWord) {
    const struct {
        const char *arguments, *said;
    } cases[] = {
        {"statsu w", "there is no command \"statsu\"; did you mean \"status\"?\nvorntools: see vorntools help\n"},
        {"stat w", "there is no command \"stat\"; did you mean \"status\"?\nvorntools: see vorntools help\n"},
        {"xyz", "there is no command \"xyz\"\nvorntools: see vorntools help\n"},
        {"status --jsn w",
         "\"status\" has no option \"--jsn\"; did you mean \"--json\"?\nvorntools: see vorntools help "
         "status\n"},
        {"status --jsn", "\"status\" has no option \"--jsn\"; did you mean \"--json\"?\nvorntools: see vorntools help "
                         "status\n"},
        {"status --colr never w", "\"status\" has no option \"--colr\"; did you mean \"--color\"?\nvorntools: see "
                                  "vorntools help status\n"},
        {"run s.json mods", "\"run\" has no command \"mods\"; did you mean \"modes\"?\nvorntools: see vorntools help "
                            "run\n"},
        {"dat a b", "\"dat\" takes no further argument \"b\"\nvorntools: see vorntools help dat\n"},
        {"status", "name files or folders\n"},
        {"help statsu", "there is no command \"statsu\"; did you mean \"status\"?\n"},
        {"help run mods", "\"run\" has no command \"mods\"; did you mean \"modes\"?\n"},
        {"status --damaged w", "--damaged requires --links\nvorntools: see vorntools help status\n"},
    };
    for (const auto& example : cases) {
        EXPECT_EQ(run(example.arguments), 2) << example.arguments;
        EXPECT_EQ(said(), std::string("vorntools: ") + example.said) << example.arguments;
        EXPECT_EQ(content("out"), "") << example.arguments;
    }
}

TEST_F(CommandLineTest, HelpIsThereHoweverItIsAskedFor) {
    EXPECT_EQ(run(""), 2);
    const std::string all = content("out");
    EXPECT_TRUE(has(all, "\n  status ") && has(all, "\n  import-options ")) << all;
    for (const char* const arguments : {"help", "--help", "-h"}) {
        EXPECT_EQ(run(arguments), 0);
        EXPECT_EQ(content("out"), all) << arguments;
    }
    EXPECT_EQ(run("help status"), 0);
    const std::string status = content("out");
    EXPECT_TRUE(has(status, "Usage: vorntools status ") && has(status, "\n  vorntools status vault\n")) << status;
    EXPECT_EQ(run("status --help"), 0);
    EXPECT_EQ(content("out"), status);
    EXPECT_EQ(run("help run modes"), 0);
    EXPECT_TRUE(has(content("out"), "Usage: vorntools run modes ")) << content("out");
    for (const char* const arguments : {"-V", "--version"}) {
        EXPECT_EQ(run(arguments), 0);
        EXPECT_EQ(content("out").find("vorntools 1."), 0u);
        EXPECT_TRUE(has(content("out"), "in-memory platform")) << content("out");
    }
    EXPECT_EQ(run("--json-version"), 0);
    EXPECT_EQ(content("out"), "1.0\n");
}

TEST_F(CommandLineTest, OptionsMayStandAnywhere) {
    write("w/a.CATPart", "part");
    write("s.json", R"({"documents": [{"name": "w/a.CATPart"}]})");
    EXPECT_EQ(runIn(".", "status w --json"), 1);
    const std::string status = content("out");
    EXPECT_EQ(rows().size(), 1u);
    for (const char* const arguments : {"--json status w", "status --json w", "--journal j --json status w",
                                        "--journal=j --json status w", "status w --json --color never"}) {
        EXPECT_EQ(runIn(".", arguments), 1) << arguments << said();
        EXPECT_EQ(content("out"), status) << arguments;
    }
    EXPECT_EQ(runIn(".", "run s.json documents --json"), 0);
    const std::string documents = content("out");
    for (const char* const arguments : {"--json run s.json documents", "run --json s.json documents"}) {
        EXPECT_EQ(runIn(".", arguments), 0) << arguments << said();
        EXPECT_EQ(content("out"), documents) << arguments;
    }
    // Behind "--" everything is a name.
    EXPECT_EQ(runIn(".", "status w -- --json"), 2);
    EXPECT_TRUE(has(said(), "no such file or folder: --json\n")) << said();
}

/** Texts lose their ends on a terminal that is too narrow, paths their beginnings; nothing does anywhere else. */
TEST_F(CommandLineTest, TablesFitTheTerminal) {
    write("w/a_long_folder_name/another_long_folder_name/Sch\xC3\xBCtz.CATPart", "part");
    const auto onTerminal = [&](const std::string& before, const std::string& arguments) {
        const std::string program = std::string("\"") + VORNTOOLS_PROGRAM + "\"";
        const std::string inner = before + "cd " + quoted(".") + "; " + program + " " + arguments;
        std::system(
            ("SHELL=/bin/sh script -qec '" + inner + "' /dev/null > " + quoted("out") + " < /dev/null").c_str());
        return content("out").substr(std::min(content("out").find("STATUS"), content("out").size()));
    };
    EXPECT_EQ(onTerminal("stty cols 60; NO_COLOR=1; export NO_COLOR; ", "status w"),
              "STATUS  DOCUMENT         REASON       DAT  LINKS  UNRESOLVED\r\n"
              "new     \xE2\x80\xA6Sch\xC3\xBCtz.CATPart  no DAT file  -        0           0\r\n"
              "1 document: 1 new, 0 modified, 0 not modified\r\n");
    EXPECT_EQ(
        onTerminal("stty cols 200; ", "status w"),
        "STATUS  DOCUMENT                                                      REASON       DAT  LINKS  UNRESOLVED\r\n"
        "\x1B[33mnew\x1B[0m     w/a_long_folder_name/another_long_folder_name/Sch\xC3\xBCtz.CATPart  no DAT file  -  "
        "      0           0\r\n1 document: 1 new, 0 modified, 0 not modified\r\n");
    EXPECT_TRUE(has(onTerminal("stty cols 200; ", "status --color never w"), "\nnew     w/"));
    EXPECT_EQ(runIn(".", "status w"), 1);
    EXPECT_TRUE(has(content("out"), "\nnew     w/a_long_folder_name/another_long_folder_name/Sch")) << content("out");
    EXPECT_EQ(runIn(".", "status --color always w"), 1);
    EXPECT_TRUE(has(content("out"), "\n\x1B[33mnew\x1B[0m     w/a_long")) << content("out");
}

TEST_F(CommandLineTest, TextsAboutTheProgramNameEveryCommand) {
    for (const char* const kind : {"man", "bash", "zsh", "fish"}) {
        EXPECT_EQ(run(std::string("--generate ") + kind), 0);
        for (const char* const word : {"status", "dat", "json", "session", "journal", "modes", "color"})
            EXPECT_TRUE(has(content("out"), word)) << kind << " " << word;
    }
    EXPECT_EQ(run("--generate nothing"), 2);
}

} // namespace
