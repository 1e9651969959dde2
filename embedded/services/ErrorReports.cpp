// The error reports in memory, and the companion's manager that adds to them.
#include "EMHManager.h"
#include "TYPMapIntPVoid.h"
#include "embedded/Records.h"
#include "embedded/object/Answers.h"
#include "embedded/services/EnvironmentAnswers.h"

#include <map>

namespace embedded {

ErrorReports& ErrorReports::get() {
    static ErrorReports& reports = *new ErrorReports;
    return reports;
}

std::vector<std::string> ErrorReports::take() {
    std::vector<std::string> result;
    for (const ErrorReport& report : m_reports) result.push_back(report.text());
    m_reports.clear();
    return result;
}

} // namespace embedded

namespace {

/** The last report of each number: what the error list's pointers lead to. */
std::map<int, embedded::ErrorReport>& lastReports() {
    static auto& reports = *new std::map<int, embedded::ErrorReport>;
    return reports;
}

} // namespace

EMHManager::EMHManager() : _error_list(new TYPMapIntPVoid) {}

EMHManager::~EMHManager() { delete _error_list; }

EMHManager* EMHManager::getInstance() {
    static EMHManager& manager = *new EMHManager;
    return embedded::isMissing("EMHManager") ? nullptr : &manager;
}

void EMHManager::writeMsg(const CATUnicodeString& iFunctionName, int iNumber, const CATUnicodeString& iArgument) {
    embedded::ErrorReport& last = lastReports()[iNumber];
    last = {embedded::toBytes(iFunctionName), iNumber, embedded::toBytes(iArgument)};
    _error_list->insert(iNumber, &last, "ErrorReport");
    embedded::ErrorReports::get().add(last);
}
