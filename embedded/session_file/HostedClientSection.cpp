#include "embedded/services/HostedClient.h"
#include "embedded/session_file/SessionSections.h"

namespace embedded {

namespace {

void readHostedClient(const JsonField& field, const SectionReader&) {
    field.expectKeys({"installed", "open"});
    if (const auto installed = field.optional("installed")) hostedClient().installed = installed->flag();
    if (const auto open = field.optional("open")) hostedClient().open = open->flag();
}

Json writeHostedClient(Session& session) {
    const HostedClient& client = session.data().part<SessionHostedClient>().client;
    Json json;
    if (!client.installed) json["installed"] = false;
    if (client.open) json["open"] = true;
    return json;
}

const SessionSection hostedClientSection("hosted_client", readHostedClient, writeHostedClient);

} // namespace

} // namespace embedded
