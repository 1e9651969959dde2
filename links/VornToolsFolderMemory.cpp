#include "VornToolsFolderMemory.h"

#include "links/FolderSearch.h"

VornToolsFolderMemory::VornToolsFolderMemory() : m_folders(nullptr) {}

VornToolsFolderMemory::~VornToolsFolderMemory() { delete m_folders; }
