#include "VornEnvConfig.h"

#include "embedded/files/FileNames.h"
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
        return toText(joinedName(directory, toBytes(iFileName)));
    }
};

} // namespace

VornEnvConfig* VornEnvConfig::getInstance() {
    static Configuration configuration;
    return finds("VornEnvConfig::getInstance", "VornEnvConfig") ? &configuration : nullptr;
}
