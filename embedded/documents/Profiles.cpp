#include "embedded/documents/Profiles.h"

#include "embedded/Session.h"
#include "embedded/documents/SessionData.h"
#include "embedded/text/TextBytes.h"

#include <cstdio>
#include <cstdlib>

namespace embedded {

namespace {

constexpr const char* kUsual = "kind";
constexpr const char* kVariable = "VORNTOOLS_PROFILE";
constexpr int kUsageError = 2;

Switches unkind() {
    Switches switches;
    switches.folderOrder = FolderOrder::reversed;
    switches.entryWithEndOfFolder = true;
    switches.pathLists = true;
    switches.codePage = CodePage::windows1252;
    switches.numbersEndTexts = true;
    switches.shownDecimals = 3;
    switches.dimensionMark = DecimalMark::session;
    switches.selectingWritesTables = true;
    switches.sheetSelectsFirstConfiguration = true;
    switches.picturesAreSilent = true;
    switches.rootsRefuseInstanceName = true;
    switches.childlessGiveNoList = true;
    switches.oddNamesAreRefused = true;
    return switches;
}

Switches resolving() {
    Switches switches = unkind();
    switches.servicesKnowLogicalNames = true;
    switches.dimensionMark = DecimalMark::point;
    return switches;
}

struct Profile {
    const char* name;
    Switches switches;
};

const std::vector<Profile>& allProfiles() {
    static const auto& all = *new std::vector<Profile>{{kUsual, {}}, {"unkind", unkind()}, {"resolving", resolving()}};
    return all;
}

/** Texts may be made before there is a session. A name of no profile is told when one is asked for. */
bool useCodePageOfEnvironment() {
    const char* const name = std::getenv(kVariable);
    const std::optional<Switches> given = name ? switchesOf(name) : std::nullopt;
    if (given) TextBytes::useCodePage(given->codePage != CodePage::utf8);
    return given.has_value();
}

[[maybe_unused]] const bool codePageKnown = useCodePageOfEnvironment();

std::string profileOfEnvironment() {
    const char* const name = std::getenv(kVariable);
    if (!name || !*name) return kUsual;
    if (switchesOf(name)) return name;
    std::fprintf(stderr, "%s=%s: no profile has that name; there are", kVariable, name);
    for (const std::string& known : profiles()) std::fprintf(stderr, " %s", known.c_str());
    std::fprintf(stderr, "\n");
    std::_Exit(kUsageError); // the session is being made: nothing else may ask for it
}

std::string& chosenProfile() {
    static std::string& chosen = *new std::string(profileOfEnvironment());
    return chosen;
}

} // namespace

std::optional<Switches> switchesOf(const std::string& profile) {
    for (const Profile& known : allProfiles())
        if (profile == known.name) return known.switches;
    return std::nullopt;
}

std::vector<std::string> profiles() {
    std::vector<std::string> names;
    for (const Profile& known : allProfiles()) names.emplace_back(known.name);
    return names;
}

const std::string& profile() { return chosenProfile(); }

bool chooseProfile(const std::string& name) {
    const std::optional<Switches> chosen = switchesOf(name);
    if (!chosen) return false;
    chosenProfile() = name;
    setSwitches(*chosen);
    return true;
}

const Switches& switches() { return Session::current().data().switches(); }

void setSwitches(const Switches& switches) { Session::current().data().setSwitches(switches); }

} // namespace embedded
