#ifndef TOOLS_VORNTOOLS_ARCHIVE_PACKING_H
#define TOOLS_VORNTOOLS_ARCHIVE_PACKING_H

#include "tools/vorntools/archive/Archive.h"

#include <string>
#include <vector>

/** A file of a pack. */
struct PackItem {
    Index document = 0;
    std::string name;       ///< in the pack: folders and file, slashes between them
    bool isRenamed = false; ///< because another file of the pack has its name
};

/**
 * Every file that was read or named, with its place below the deepest folder that holds all of them.
 * @param flat all in one folder
 */
std::vector<PackItem> planPack(const Archive& archive, const std::vector<Index>& documents, bool flat);

/** Copies files into a folder, which is made if need be. Where one cannot be written, nothing of it stays.
 * @return why it failed; empty when everything is there */
std::string packIntoFolder(const Archive& archive, const std::vector<PackItem>& items, const std::string& folder);

/** Writes a ZIP file, whole or not at all. @return as packIntoFolder */
std::string packIntoZip(const Archive& archive, const std::vector<PackItem>& items, const std::string& zipFile);

#endif
