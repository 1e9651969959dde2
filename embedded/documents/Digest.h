#ifndef EMBEDDED_DOCUMENTS_DIGEST_H
#define EMBEDDED_DOCUMENTS_DIGEST_H

#include <string>

namespace embedded {

struct SessionData;

/** Text that tells every state of the documents and their structure apart, in the order of the structure. */
std::string digestOf(const SessionData& session);

} // namespace embedded

#endif
