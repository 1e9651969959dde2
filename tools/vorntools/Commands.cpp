#include "tools/vorntools/Commands.h"

#include "tools/vorntools/Output.h"

#include "embedded/SessionFile.h"

void CommonOptions::addTo(Command& command) {
    addOutputTo(command);
    command.value("--session", "FILE", "Session file: environment and documents in session", &session);
}

void CommonOptions::addOutputTo(Command& command) {
    command.flag("--json", "One JSON object a line instead of a table", json);
    command.value("--journal", "FILE", "File that receives the journal", &journal);
}

void CommonOptions::addSessionTo(Command& command) {
    command.value("--journal", "FILE", "File that receives the journal", &journal);
    command.value("--session", "FILE", "Session file: environment and documents in session", &session);
}

bool CommonOptions::loadSession() const {
    if (session.empty()) return true;
    const embedded::SessionFileResult result = embedded::loadSession(session);
    if (!result.ok) complain(result.error);
    return result.ok;
}
