// Logical names of directories, for the platform and for its companion.
#include "embedded/files/LogicalNames.h"

#include "CATDLName.h"
#include "UTILDLName.h"
#include "UTILFile.h"
#include "embedded/Profile.h"
#include "embedded/Session.h"
#include "embedded/files/FileNames.h"
#include "embedded/object/Answers.h"

#include <memory>
#include <string_view>
#include <vector>

using namespace embedded;

namespace {

constexpr std::string_view kMarker = "\x01\x02\\";

const std::string* directoryOf(const std::string& logicalName) {
    const auto& names = Session::current().environment().logicalNames;
    const auto found = names.find(logicalName);
    return found == names.end() ? nullptr : &found->second;
}

bool isLogical(const std::string& name) { return name.compare(0, kMarker.size(), kMarker) == 0; }

/** Ends a call that hands out a new text. What a failing call leaves in the output belongs to nobody. */
HRESULT newTextAnswer(FaultFlavour flavour, const std::string& value, CATUnicodeString*& output) {
    static CATUnicodeString& stale = *new CATUnicodeString("stale");
    if (flavour != FaultFlavour::none) return failedAnswer<CATUnicodeString*>(flavour, output, nullptr, &stale);
    output = new CATUnicodeString(toText(value));
    return S_OK;
}

} // namespace

std::optional<std::string> embedded::physicalName(const std::string& name) {
    if (!isLogical(name)) return name;
    const std::size_t end = name.find_first_of(kSeparators, kMarker.size());
    const std::string* const directory = directoryOf(name.substr(kMarker.size(), end - kMarker.size()));
    if (!directory) return std::nullopt;
    const std::string file = end == std::string::npos ? std::string() : name.substr(end + 1);
    return file.empty() ? *directory : joinedName(*directory, file);
}

std::string embedded::diskName(const CATUnicodeString& name) {
    const std::string& bytes = TextBytes::of(name);
    return switches().servicesKnowLogicalNames ? physicalName(bytes).value_or(bytes) : bytes;
}

HRESULT CATGetDLName(const CATUnicodeString* iDLName, CATUnicodeString** oRealName) {
    if (!oRealName) return E_FAIL;
    *oRealName = nullptr;
    const FaultFlavour flavour = Failures::get().ask("CATGetDLName");
    const std::string* const directory = iDLName ? directoryOf(toBytes(*iDLName)) : nullptr;
    if (!directory) return E_FAIL;
    return newTextAnswer(flavour, *directory, *oRealName);
}

HRESULT CATMakeLogicalPath(const CATUnicodeString* iDLName, const CATUnicodeString* iFileName,
                           CATUnicodeString** oLogicalPath) {
    if (!oLogicalPath) return E_FAIL;
    *oLogicalPath = nullptr;
    const FaultFlavour flavour = Failures::get().ask("CATMakeLogicalPath");
    if (!iDLName || !iFileName || !directoryOf(toBytes(*iDLName))) return E_FAIL;
    const std::string logical = std::string(kMarker) + toBytes(*iDLName) + toBytes(UTILFile::getPathSeparator());
    return newTextAnswer(flavour, logical + toBytes(*iFileName), *oLogicalPath);
}

HRESULT CATGetDLNameList(int (*iCriterion)(CATUnicodeString*, CATUnicodeString*), CATUnicodeString* iToCompare,
                         unsigned int* oCount, CATUnicodeString*** oNames) {
    if (!oCount || !oNames) return E_FAIL;
    *oCount = 0;
    *oNames = nullptr;
    const FaultFlavour flavour = Failures::get().ask("CATGetDLNameList");
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    std::vector<std::unique_ptr<CATUnicodeString>> kept;
    for (const auto& name : Session::current().environment().logicalNames) {
        auto text = std::make_unique<CATUnicodeString>(toText(name.first));
        if (!iCriterion || iCriterion(text.get(), iToCompare) != 0) kept.push_back(std::move(text));
    }
    *oNames = new CATUnicodeString*[kept.size()];
    *oCount = static_cast<unsigned int>(kept.size());
    for (std::size_t i = 0; i < kept.size(); ++i) (*oNames)[i] = kept[i].release();
    return S_OK;
}

HRESULT UTILDLName::getPhysicalPathFromDLName(const CATUnicodeString& iName, CATUnicodeString& oPhysical) {
    const FaultFlavour flavour = Failures::get().ask("UTILDLName::getPhysicalPathFromDLName");
    // The output may be the very text that is resolved.
    const std::string name = toBytes(iName);
    if (flavour != FaultFlavour::none) return textAnswer(flavour, name, oPhysical);
    const std::optional<std::string> physical = physicalName(name);
    oPhysical = physical ? toText(*physical) : CATUnicodeString();
    return physical ? S_OK : E_FAIL;
}

HRESULT UTILDLName::cleanUpDLName(const CATUnicodeString& iName, CATUnicodeString& oClean) {
    const std::string name = toBytes(iName);
    return textAnswer(Failures::get().ask("UTILDLName::cleanUpDLName"),
                      isLogical(name) ? name.substr(kMarker.size()) : name, oClean);
}
