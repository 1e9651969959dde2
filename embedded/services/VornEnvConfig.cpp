#include "VornEnvConfig.h"

#include "UTILFile.h"
#include "embedded/object/Answers.h"
#include "embedded/services/EnvironmentAnswers.h"

using namespace embedded;

namespace {

class Configuration final : public VornEnvConfig {
public:
    CATUnicodeString getEnvFullFilename(const CATUnicodeString& iFileName) override {
        const std::string& directory = environment().configurationDirectory;
        if (fails("VornEnvConfig::getEnvFullFilename") || directory.empty() || iFileName.IsNull())
            return CATUnicodeString();
        const bool ends = directory.back() == '/' || directory.back() == '\\';
        return toText(directory) + (ends ? CATUnicodeString() : UTILFile::getPathSeparator()) + iFileName;
    }
};

} // namespace

VornEnvConfig* VornEnvConfig::getInstance() {
    static Configuration configuration;
    return finds("VornEnvConfig::getInstance", "VornEnvConfig") ? &configuration : nullptr;
}
