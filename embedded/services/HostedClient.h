#ifndef EMBEDDED_SERVICES_HOSTED_CLIENT_H
#define EMBEDDED_SERVICES_HOSTED_CLIENT_H

#include "embedded/WorkModes.h"
#include "embedded/documents/SessionData.h"

#include <string>

namespace embedded {

class SessionHostedClient final : public SessionPart {
public:
    static constexpr const char* kName = "hosted_client";
    explicit SessionHostedClient(SessionData&) {}

    void addToDigest(std::string& text) const override;

    HostedClient client;
};

} // namespace embedded

#endif
