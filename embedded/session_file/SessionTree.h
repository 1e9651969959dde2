#ifndef EMBEDDED_SESSION_FILE_SESSION_TREE_H
#define EMBEDDED_SESSION_FILE_SESSION_TREE_H

#include "embedded/Session.h"
#include "embedded/documents/SessionData.h"
#include "embedded/session_file/JsonReader.h"
#include "embedded/session_file/SessionSections.h"

#include <string>

namespace embedded {

// The tree of a session file: how it is read into a session and made of one.

/** Fills a session. @param path of the file, whose folder relative names begin in. Throws JsonFault */
void readSession(Session& session, const std::string& path, const JsonField& root);
/** What has its default is left out. Throws SaveFault */
Json writeSession(const SessionData& session);

// What both sides know of the environment.

inline constexpr int kDeepestComponent = 320;
static_assert(3 * kDeepestComponent + 8 <= static_cast<int>(kDeepestJson), "what is written can be read");

struct FlagField {
    const char* key;
    bool Environment::*field;
};
inline constexpr FlagField kFlags[] = {
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
inline constexpr DirectoryField kDirectories[] = {
    {"staging_directory", &Environment::stagingDirectory},
    {"files_directory", &Environment::filesDirectory},
    {"reference_path", &Environment::referencePath},
    {"local_cache_directory", &Environment::localCacheDirectory},
    {"configuration_directory", &Environment::configurationDirectory},
    {"temp_directory", &Environment::tempDirectory},
    {"spreadsheet_path", &Environment::spreadsheetPath},
    {"import_path", &Environment::importPath},
};

inline constexpr const char* kManagers[] = {"ENVManager", "PROCManager", "VornEnvConfig"};

} // namespace embedded

#endif
