#ifndef EMBEDDED_STRUCTURE_SESSION_WORK_MODES_H
#define EMBEDDED_STRUCTURE_SESSION_WORK_MODES_H

#include "embedded/WorkModes.h"
#include "embedded/documents/SessionData.h"

#include <cstddef>
#include <string>

namespace embedded {

/** What becomes of switches of the work mode in the session. The modes themselves stay with the
 * products. */
class SessionWorkModes final : public SessionPart {
public:
    static constexpr const char* kName = "work_modes";
    explicit SessionWorkModes(SessionData& sessionData) : session(sessionData) {}
    static SessionWorkModes& get();

    void addToDigest(std::string& text) const override;

    SessionData& session;
    SwitchOutcome outcome = SwitchOutcome::switched;
    std::size_t switches = 0;
};

} // namespace embedded

#endif
