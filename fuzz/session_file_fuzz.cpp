// Any bytes as a session file: what is accepted can be saved and is then the same session.

#include "embedded/Accounting.h"
#include "embedded/Session.h"
#include "embedded/SessionFile.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    embedded::Session& session = embedded::Session::current();
    const embedded::SessionFileResult loaded = embedded::loadSessionText("/w/s.json", text);
    require(loaded.ok == loaded.error.empty(), "an outcome that contradicts itself");
    require(loaded.ok || session.documentCount() == 0, "half a session");
    if (loaded.ok) {
        const std::string digest = session.digest();
        std::string saved;
        require(embedded::sessionText(saved).ok, "a session that cannot be saved");
        require(embedded::loadSessionText("/w/s.json", saved).ok, "a saved session that is refused");
        require(session.digest() == digest, "another session");
        std::string again;
        require(embedded::sessionText(again).ok && again == saved, "another text");
    }
    session.reset();
    require(embedded::Accounting::get().live().references == 0, "references left alive");
    require(embedded::Accounting::get().takeBreaches().empty(), "a rule of the platform");
    return 0;
}
