// The section of the switches with which the platform behaves one way or another.
#include "embedded/documents/Profiles.h"
#include "embedded/session_file/SessionSections.h"

#include <array>

namespace embedded {

namespace {

struct SwitchField {
    const char* key;
    bool Switches::*field;
};
constexpr SwitchField kSwitches[] = {
    {"services_know_logical_names", &Switches::servicesKnowLogicalNames},
    {"entry_with_end_of_folder", &Switches::entryWithEndOfFolder},
    {"path_lists", &Switches::pathLists},
    {"numbers_end_texts", &Switches::numbersEndTexts},
    {"selecting_writes_tables", &Switches::selectingWritesTables},
    {"sheet_selects_first_configuration", &Switches::sheetSelectsFirstConfiguration},
    {"row_zero_is_taken", &Switches::rowZeroIsTaken},
    {"pictures_are_silent", &Switches::picturesAreSilent},
    {"roots_refuse_instance_name", &Switches::rootsRefuseInstanceName},
    {"childless_give_no_list", &Switches::childlessGiveNoList},
    {"odd_names_are_refused", &Switches::oddNamesAreRefused},
};
constexpr std::array<const char*, 3> kFolderOrders = {"system", "names", "reversed"};
constexpr std::array<const char*, 2> kCodePages = {"utf-8", "windows-1252"};
constexpr std::array<const char*, 3> kDecimalMarks = {"either", "session", "point"};
constexpr int kMostDecimals = 15;

void readPlatform(const JsonField& field, const SectionReader&) {
    field.expectKeys({"profile", "services_know_logical_names", "entry_with_end_of_folder", "path_lists",
                      "numbers_end_texts", "selecting_writes_tables", "sheet_selects_first_configuration",
                      "row_zero_is_taken", "pictures_are_silent", "roots_refuse_instance_name",
                      "childless_give_no_list", "odd_names_are_refused", "folder_order", "code_page", "dimension_mark",
                      "shown_decimals"});
    Switches read = switches();
    if (const auto name = field.optional("profile")) {
        const auto known = switchesOf(name->text());
        if (!known) name->fail("no profile is named '" + name->text() + "'");
        read = *known;
    }
    for (const SwitchField& one : kSwitches)
        if (const auto flag = field.optional(one.key)) read.*one.field = flag->flag();
    if (const auto order = field.optional("folder_order"))
        read.folderOrder = static_cast<FolderOrder>(indexOf(*order, kFolderOrders));
    if (const auto page = field.optional("code_page"))
        read.codePage = static_cast<CodePage>(indexOf(*page, kCodePages));
    if (const auto mark = field.optional("dimension_mark"))
        read.dimensionMark = static_cast<DecimalMark>(indexOf(*mark, kDecimalMarks));
    if (const auto decimals = field.optional("shown_decimals"))
        read.shownDecimals = decimals->integer(0, kMostDecimals);
    setSwitches(read);
}

/** A profile, or what is not as in the first one. Nothing for a session that is as it begins without a word. */
Json writePlatform(Session&) {
    const std::string usual = profiles().front();
    const Switches now = switches();
    if (now == *switchesOf(usual) && profile() == usual) return Json();
    for (const std::string& name : profiles())
        if (now == *switchesOf(name)) return Json{{"profile", name}};
    const Switches like = *switchesOf(usual);
    Json json{{"profile", usual}};
    for (const SwitchField& one : kSwitches)
        if (now.*one.field != like.*one.field) json[one.key] = now.*one.field;
    if (now.folderOrder != like.folderOrder)
        json["folder_order"] = kFolderOrders[static_cast<std::size_t>(now.folderOrder)];
    if (now.codePage != like.codePage) json["code_page"] = kCodePages[static_cast<std::size_t>(now.codePage)];
    if (now.dimensionMark != like.dimensionMark)
        json["dimension_mark"] = kDecimalMarks[static_cast<std::size_t>(now.dimensionMark)];
    if (now.shownDecimals != like.shownDecimals) json["shown_decimals"] = now.shownDecimals;
    return json;
}

constexpr int kPlatformRank = -3;

const SessionSection platformSection("platform", readPlatform, writePlatform, kPlatformRank);

} // namespace

} // namespace embedded
