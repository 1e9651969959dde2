#include "EMHManager.h"
#include "JNLManager.h"
#include "TYPMapIntPVoid.h"
#include "VornIHMMessageDialog.h"
#include "embedded/Records.h"
#include "embedded/object/Answers.h"

#include <cstdarg>
#include <map>
#include <string_view>

namespace {

std::string_view bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

class JournalManager final : public JNLManager {
public:
    void writeFunctionBegin(const CATUnicodeString& iName, const CATUnicodeString&) override {
        embedded::Journal::get().begin(bytesOf(iName));
    }
    void writeFunctionEnd(const CATUnicodeString& iName, int iCode) override {
        embedded::Journal::get().end(bytesOf(iName), iCode);
    }
    void writeMsg(const char* iFormat, ...) override {
        std::va_list arguments;
        va_start(arguments, iFormat);
        embedded::Journal::get().write(iFormat ? iFormat : "", arguments);
        va_end(arguments);
    }
    void writeReturn(const char* iFormat, ...) override {
        std::va_list arguments;
        va_start(arguments, iFormat);
        embedded::Journal::get().write(iFormat ? iFormat : "", arguments);
        va_end(arguments);
    }
};

/** The last report of each number: what the error list's pointers lead to. */
std::map<int, embedded::ErrorReport>& lastReports() {
    static std::map<int, embedded::ErrorReport> reports;
    return reports;
}

} // namespace

JNLManager* JNLManager::getInstance() {
    static JournalManager manager;
    return &manager;
}

EMHManager::EMHManager() : _error_list(new TYPMapIntPVoid) {}

EMHManager::~EMHManager() { delete _error_list; }

EMHManager* EMHManager::getInstance() {
    static EMHManager manager;
    return &manager;
}

void EMHManager::writeMsg(const CATUnicodeString& iFunctionName, int iNumber, const CATUnicodeString& iArgument) {
    embedded::ErrorReport& last = lastReports()[iNumber];
    last = {embedded::toBytes(iFunctionName), iNumber, embedded::toBytes(iArgument)};
    _error_list->insert(iNumber, &last, "ErrorReport");
    embedded::ErrorReports::get().add(last);
}

void VornIHMMessageDialog::addDynamicLocalizedMessage(int iLevel, int iCatalogue, int iMessage) {
    embedded::Messages::get().add("localized " + std::to_string(iLevel) + " " + std::to_string(iCatalogue) + " " +
                                  std::to_string(iMessage));
}

void VornIHMMessageDialog::addDynamicUnlocalizedMessage(int iCatalogue, const CATUnicodeString& iText, int iLevel) {
    embedded::Messages::get().add("unlocalized " + std::to_string(iCatalogue) + " " + std::to_string(iLevel) + " " +
                                  embedded::toBytes(iText));
}

void VornIHMMessageDialog::showDynamicInformationMessage(int iCatalogue, int iLevel) {
    embedded::Messages::get().add("information " + std::to_string(iCatalogue) + " " + std::to_string(iLevel));
}

void VornIHMMessageDialog::showDynamicErrorMessage(int iCatalogue, int iLevel) {
    embedded::Messages::get().add("errors " + std::to_string(iCatalogue) + " " + std::to_string(iLevel));
}

void VornIHMMessageDialog::showError(int iLevel, int iMessage, const CATUnicodeString& iArgument) {
    const std::string argument = iArgument.IsNull() ? std::string() : " " + embedded::toBytes(iArgument);
    embedded::Messages::get().add("error " + std::to_string(iLevel) + " " + std::to_string(iMessage) + argument);
}
