#include "VornToolsFolderMemory.h"

#include "links/FolderSearch.h"

VornToolsFolderMemory::VornToolsFolderMemory() : m_folders(new vorntools::KnownFolders) {}

VornToolsFolderMemory::~VornToolsFolderMemory() { delete m_folders; }
