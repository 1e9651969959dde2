#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATGetEnvValue.h"
#include "SKManager.h"
#include "VornIHMMessageDialog.h"

#include <cstdlib>
#include <initializer_list>
#include <memory>

using namespace vorntools;

namespace {

constexpr int kDirectoryMessage = 11181;
constexpr int kClientCatalogue = 11236;
constexpr int kClientMessages[] = {11548, 20039};

struct FreeText {
    void operator()(char* ip_text) const { std::free(ip_text); }
};

/** Whether an environment variable names a directory that opens. */
bool namesDirectory(const char* i_variable) {
    char* p_received = nullptr;
    const CATLibStatus status = CATGetEnvValue(i_variable, &p_received);
    const std::unique_ptr<char, FreeText> sp_directory(p_received);
    CATDirectory directory;
    if (status != CATLibSuccess || !sp_directory || CATOpenDirectory(sp_directory.get(), &directory) != CATLibSuccess)
        return false;
    CATCloseDirectory(&directory);
    return true;
}

} // namespace

unsigned char VornToolsCommon::checkTempDirectories() {
    const JournalFrame frame(_CteCLASS_NAME, "checkTempDirectories");
    const auto work = [&]() -> unsigned char {
        for (const char* const variable : {"TEMP", "TMP"}) {
            if (namesDirectory(variable)) continue;
            VornIHMMessageDialog::showError(1, kDirectoryMessage, variable);
            return 0;
        }
        return 1;
    };
    return guarded(work, static_cast<unsigned char>(0));
}

HRESULT VornToolsCommon::startSkylane() {
    JournalFrame frame(_CteCLASS_NAME, "startSkylane");
    SKManager* const p_client = SKManager::getInstance();
    if (!p_client) {
        for (const int message : kClientMessages)
            VornIHMMessageDialog::addDynamicLocalizedMessage(0, kClientCatalogue, message);
        VornIHMMessageDialog::showDynamicErrorMessage(kClientCatalogue, 0);
        return frame.endWith(E_FAIL);
    }
    if (p_client->isOpen()) return frame.endWith(p_client->toFront());
    const HRESULT code = p_client->openWindow();
    if (FAILED(code)) frame.callFailed("SKManager::openWindow()");
    return frame.endWith(code);
}
