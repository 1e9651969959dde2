// The messages to the user in memory, and the companion's dialog that adds to them.
#include "VornIHMMessageDialog.h"
#include "embedded/Records.h"
#include "embedded/object/Answers.h"

#include <utility>

namespace embedded {

Messages& Messages::get() {
    static Messages& messages = *new Messages;
    return messages;
}

std::vector<std::string> Messages::take() { return std::exchange(m_messages, {}); }

} // namespace embedded

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
