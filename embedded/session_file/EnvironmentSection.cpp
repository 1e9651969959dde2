#include "embedded/files/FileNames.h"
#include "embedded/session_file/SessionSections.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace embedded {

namespace {

struct FlagField {
    const char* key;
    bool Environment::*field;
};
constexpr FlagField kFlags[] = {
    {"initialized", &Environment::initialized},
    {"uses_logical_names", &Environment::usesLogicalNames},
    {"manual_part_number_input", &Environment::manualPartNumberInput},
    {"instance_description_marks_ignore_nodes", &Environment::instanceDescriptionMarksIgnoreNodes},
    {"update_drawing", &Environment::updateDrawing},
    {"update_drawing_in_last_update_state", &Environment::updateDrawingInLastUpdateState},
    {"save_detail_sheet", &Environment::saveDetailSheet},
    {"check_for_update_part", &Environment::checkForUpdatePart},
    {"debug_mode", &Environment::debugMode},
    {"manages_status_on_root", &Environment::managesStatusOnRoot},
    {"command_create_spreadsheet", &Environment::commandCreateSpreadsheet},
    {"command_import", &Environment::commandImport},
    {"command_brr", &Environment::commandBrr},
    {"process_life_cycle_factory", &Environment::processLifeCycleFactory},
    {"keeps_intermediate_files", &Environment::keepsIntermediateFiles},
    {"command_highlight_item_revision", &Environment::commandHighlightItemRevision},
    {"command_highlight_hosted", &Environment::commandHighlightHosted},
    {"command_state_details_update", &Environment::commandStateDetailsUpdate},
    {"deletes_status_window_files", &Environment::deletesStatusWindowFiles},
    {"platform_pdm_connection", &Environment::platformPdmConnection},
    {"creates_properties", &Environment::createsProperties},
    {"ignores_oem_properties", &Environment::ignoresOemProperties},
};

struct DirectoryField {
    const char* key;
    std::string Environment::*field;
};
constexpr DirectoryField kDirectories[] = {
    {"staging_directory", &Environment::stagingDirectory},
    {"files_directory", &Environment::filesDirectory},
    {"reference_path", &Environment::referencePath},
    {"local_cache_directory", &Environment::localCacheDirectory},
    {"configuration_directory", &Environment::configurationDirectory},
    {"temp_directory", &Environment::tempDirectory},
    {"spreadsheet_path", &Environment::spreadsheetPath},
    {"import_path", &Environment::importPath},
};

constexpr const char* kManagers[] = {"ENVManager", "PROCManager", "VornEnvConfig", "JNLManager", "EMHManager"};

// Reading.

void readSeparator(const JsonField& field, Environment& environment) {
    environment.separator = field.text();
    const bool one = environment.separator.size() == 1 && isSeparator(environment.separator[0]);
    if (!one && !environment.separator.empty()) field.fail("a slash or a backslash is expected");
}

void readDecimalSeparator(const JsonField& field, Environment& environment) {
    environment.decimalSeparator = field.text();
    if (field.text() != "." && field.text() != ",") field.fail("a point or a comma is expected");
}

void readLogicalNames(const JsonField& field, const SectionReader& reader, Environment& environment) {
    for (const JsonField& name : field.members())
        if (!environment.logicalNames.emplace(name.key(), reader.path(name)).second) name.fail("given twice");
}

void readVariables(const JsonField& field, Environment& environment) {
    for (const JsonField& variable : field.members())
        if (!environment.variables.emplace(variable.key(), variable.text()).second) variable.fail("given twice");
}

void readMissingManagers(const JsonField& field, Environment& environment) {
    for (const JsonField& manager : field.elements()) {
        const std::string& name = manager.text();
        if (std::find(std::begin(kManagers), std::end(kManagers), name) == std::end(kManagers))
            manager.fail("no manager is named '" + name + "'");
        environment.missingManagers.push_back(name);
    }
}

void readField(const JsonField& member, const SectionReader& reader, Environment& environment) {
    for (const FlagField& flag : kFlags)
        if (member.key() == flag.key) return void(environment.*flag.field = member.flag());
    for (const DirectoryField& directory : kDirectories)
        if (member.key() == directory.key) return void(environment.*directory.field = reader.path(member));
    if (member.key() == "reference_prefix") return void(environment.referencePrefix = member.text());
    if (member.key() == "separator") return readSeparator(member, environment);
    if (member.key() == "variables") return readVariables(member, environment);
    if (member.key() == "logical_names") return readLogicalNames(member, reader, environment);
    if (member.key() == "missing_managers") return readMissingManagers(member, environment);
    if (member.key() == "decimal_separator") return readDecimalSeparator(member, environment);
    if (member.key() == "properties_read_only_on_create") {
        for (const JsonField& name : member.elements()) environment.propertiesReadOnlyOnCreate.push_back(name.text());
        return;
    }
    if (member.key() != "release_cache_directories") member.fail("unknown key");
    for (const JsonField& directory : member.elements())
        environment.releaseCacheDirectories.push_back(reader.path(directory));
}

void readEnvironment(const JsonField& field, const SectionReader& reader) {
    std::set<std::string> seen;
    for (const JsonField& member : field.members()) {
        if (!seen.insert(member.key()).second) member.fail("given twice");
        readField(member, reader, reader.session().environment());
    }
}

// Writing. What has its default is left out.

void writeText(Json& object, const char* key, const std::string& text, const std::string& usual = {}) {
    if (text != usual) object[key] = checkedText(text);
}

void writeList(Json& object, const char* key, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) object[key].push_back(checkedText(text));
}

Json writeEnvironment(Session& session) {
    const Environment& environment = session.environment();
    const Environment usual;
    Json object;
    for (const FlagField& flag : kFlags)
        if (environment.*flag.field != usual.*flag.field) object[flag.key] = environment.*flag.field;
    for (const DirectoryField& directory : kDirectories) writeText(object, directory.key, environment.*directory.field);
    writeText(object, "reference_prefix", environment.referencePrefix);
    writeList(object, "release_cache_directories", environment.releaseCacheDirectories);
    for (const auto& name : environment.logicalNames)
        object["logical_names"][checkedText(name.first)] = checkedText(name.second);
    writeText(object, "separator", environment.separator);
    for (const auto& variable : environment.variables)
        object["variables"][checkedText(variable.first)] = checkedText(variable.second);
    writeList(object, "missing_managers", environment.missingManagers);
    writeText(object, "decimal_separator", environment.decimalSeparator, usual.decimalSeparator);
    writeList(object, "properties_read_only_on_create", environment.propertiesReadOnlyOnCreate);
    return object;
}

constexpr int kEnvironmentRank = -2;

const SessionSection environmentSection("environment", readEnvironment, writeEnvironment, kEnvironmentRank);

} // namespace

} // namespace embedded
