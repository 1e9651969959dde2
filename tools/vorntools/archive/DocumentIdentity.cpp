#include "tools/vorntools/archive/DocumentIdentity.h"

#include "tools/vorntools/Text.h"

#include "VornToolsDocumentFile.h"
#include "VornToolsString.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace {

constexpr std::size_t kUuidBytes = 16;
constexpr unsigned int kMostPropertyBytes = 0x10000;

using Uuid = std::array<unsigned char, kUuidBytes>;

std::string chainOf(const Uuid& uuid) {
    unsigned int words[4] = {};
    for (std::size_t i = 0; i < kUuidBytes; ++i) words[i / 4] = words[i / 4] << 8U | uuid[i];
    if ((words[0] | words[1] | words[2] | words[3]) == 0) return {};
    char text[4 * 9];
    std::snprintf(text, sizeof text, "%x_%x_%x_%x", words[0], words[1], words[2], words[3]);
    return text;
}

/** The identifier in front of the word that closes a property stream: 3B 10 and its bytes, or 3B 01 in front of each of
 * them in old releases. */
std::string uuidAtEndOf(const std::string& properties) {
    const std::string closing = "\x9F\x36\x08\x46INJPL", whole = "\x3B\x10", single = "\x3B\x01";
    const std::size_t end = properties.rfind(closing);
    if (end == std::string::npos) return {};
    Uuid uuid{};
    if (end >= whole.size() + kUuidBytes &&
        properties.compare(end - kUuidBytes - whole.size(), whole.size(), whole) == 0) {
        for (std::size_t i = 0; i < kUuidBytes; ++i)
            uuid[i] = static_cast<unsigned char>(properties[end - kUuidBytes + i]);
        return chainOf(uuid);
    }
    const std::size_t step = single.size() + 1;
    if (end < kUuidBytes * step) return {};
    for (std::size_t i = 0; i < kUuidBytes; ++i) {
        const std::size_t at = end - (kUuidBytes - i) * step;
        if (properties.compare(at, single.size(), single) != 0) return {};
        uuid[i] = static_cast<unsigned char>(properties[at + single.size()]);
    }
    return chainOf(uuid);
}

struct Entry {
    CATUnicodeString name;
    int parent = 0, pieces = 0;
    unsigned char isStream = 0;
    unsigned int size = 0;
};

} // namespace

DocumentIdentity readIdentity(const std::string& fullName) {
    VornToolsDocumentFile file;
    return FAILED(file.open(textOf(fullName))) ? DocumentIdentity() : readIdentity(file);
}

DocumentIdentity readIdentity(VornToolsDocumentFile& file) {
    DocumentIdentity identity;
    int top = 0, root = 0; // all of a document stands below one storage below the one on top
    for (int i = 1; i <= file.getEntryCount(); ++i) {
        Entry entry;
        file.getEntry(i, entry.name, entry.parent, entry.isStream, entry.size, entry.pieces);
        if (entry.parent == 0 && !entry.isStream && top == 0) {
            top = i;
            CATUnicodeString date;
            file.getEntryDate(i, 1, date);
            identity.save = bytesOf(entry.name);
            identity.saved = bytesOf(date);
        } else if (top > 0 && entry.parent == top && !entry.isStream && root == 0) {
            root = i;
        } else if (root > 0 && entry.parent == root && entry.isStream &&
                   entry.name == "\x03"
                                 "CATStorageProperty") {
            const std::unique_ptr<VornToolsString> bytes(file.readStream(i, 0, kMostPropertyBytes));
            if (bytes) identity.uuid = uuidAtEndOf({bytes->bytes(), bytes->size()});
        }
    }
    return identity;
}
