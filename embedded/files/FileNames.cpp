#include "embedded/files/FileNames.h"

#include "UTILFile.h"
#include "embedded/object/Answers.h"
#include "embedded/text/Characters.h"

namespace embedded {

std::string foldedName(const std::string& name) {
    std::string folded;
    folded.reserve(name.size());
    for (std::size_t offset = 0; offset < name.size();) {
        const Character character = characterAt(name, offset);
        appendCharacter(folded, toLower(toUpper(character.code)));
        offset += character.length;
    }
    return folded;
}

std::string_view fileNameOf(std::string_view path) { return path.substr(path.find_last_of(kSeparators) + 1); }

std::string suffixOf(std::string_view path) {
    const std::string_view file = fileNameOf(path);
    const std::size_t dot = file.rfind('.');
    return dot == std::string_view::npos ? std::string() : std::string(file.substr(dot + 1));
}

bool hasDirectory(std::string_view path) { return path.find_first_of(kSeparators) != std::string_view::npos; }

bool isSeparator(char character) { return character == '/' || character == '\\'; }

std::string joinedName(const std::string& directory, std::string_view name) {
    std::string joined = directory;
    if (!joined.empty() && !isSeparator(joined.back())) joined += toBytes(UTILFile::getPathSeparator());
    return joined.append(name);
}

} // namespace embedded
