// Images of up to a megabyte, grown from a few pieces: what the link scan allocates is bounded by the size of the
// image, and where memory gives out nothing is thrown, leaked or half answered.
//
// The input is the size of the image (its first byte halves a megabyte so many times) and the pieces in their order:
// a byte of kind, two bytes of length, the bytes. The low half of the kind is the piece's share of the megabyte,
// through repetition; 0 is one copy. With 80 added every copy ends in a number of its own.

#include "VornToolsCommon.h"
#include "VornToolsDocumentLinks.h"
#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include "fuzz/ExchangeFolder.h"
#include "tests/support/Allocations.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Links = VornToolsVector<VornToolsLink>;
using Strings = VornToolsVector<VornToolsString>;

constexpr std::size_t kLargest = std::size_t{1} << 20;
constexpr std::size_t kSmallest = std::size_t{1} << 13;
/** Live at a time, for each byte of the image. */
constexpr std::size_t kBytesPerByte = 64;
/** Allocations, and bytes through all of them, for each byte of the image: what an element is copied too often shows
 * here, whatever is given back in between. */
constexpr std::size_t kAllocationsPerByte = 2;
constexpr std::size_t kWrittenPerByte = 128;
/** Lists of a hundred empty elements are there for the smallest image, too. */
constexpr std::size_t kFixed = std::size_t{64} << 10;

struct Piece {
    std::string bytes;
    std::size_t share;
    bool numbered;
};

std::vector<Piece> piecesOf(const std::uint8_t* data, std::size_t size) {
    std::vector<Piece> pieces;
    for (std::size_t at = 0; size - at >= 3;) {
        const std::size_t told = data[at + 1] + data[at + 2] * std::size_t{256};
        const std::size_t length = told < size - at - 3 ? told : size - at - 3;
        const char* const bytes = reinterpret_cast<const char*>(data) + at + 3;
        pieces.push_back({std::string(bytes, length), data[at] & 0x0FU, (data[at] & 0x80U) != 0});
        at += 3 + length;
    }
    return pieces;
}

/** Digits that no two copies share, in bytes that are no digits of a length. */
void number(std::string& bytes, std::size_t at, std::size_t end, std::size_t value) {
    for (; end > at; value /= 26) bytes[--end] = static_cast<char>('a' + value % 26);
}

std::string imageOf(const std::vector<Piece>& pieces, std::size_t size) {
    std::size_t fixed = 0, shares = 0;
    for (const Piece& piece : pieces) {
        shares += piece.share;
        if (piece.share == 0) fixed += piece.bytes.size();
    }
    const std::size_t room = fixed < size ? size - fixed : 0;
    std::string image;
    for (const Piece& piece : pieces) {
        const std::size_t copies = piece.share == 0      ? 1
                                   : piece.bytes.empty() ? 0
                                                         : room * piece.share / shares / piece.bytes.size();
        for (std::size_t i = 0; i < copies; ++i) {
            image += piece.bytes;
            const std::size_t digits = piece.bytes.size() < 4 ? piece.bytes.size() : 4;
            if (piece.numbered) number(image, image.size() - digits, image.size(), i);
        }
    }
    image.resize(image.size() < size ? image.size() : size);
    return image;
}

VornToolsString stringOf(const std::string& bytes) {
    return VornToolsString(bytes.data(), static_cast<int>(bytes.size()));
}

/** Bytes of strings come from malloc, which nobody counts: at least the smallest piece for each slot. */
std::size_t stringBytes(const Strings& strings) {
    constexpr std::size_t smallest = 24;
    std::size_t bytes = smallest * strings.capacity();
    for (unsigned int i = 0; i < strings.size(); ++i) bytes += strings[i].size();
    return bytes;
}

/** One operation with its answer. */
struct Operation {
    const char* name;
    std::function<void()> run;
    /** Elements of the answer. */
    std::function<std::size_t()> size;
    /** Bytes of the answer that are not counted otherwise. */
    std::function<std::size_t()> uncounted;
    std::function<void()> clear;
};

const ExchangeFolder& folder() {
    static const ExchangeFolder folder;
    return folder;
}

/** The operations on one image, each with an answer of its own. */
class Operations {
public:
    explicit Operations(const std::string& bytes)
        : m_image(stringOf(bytes)), m_name(stringOf("own.CATPart")), m_key(stringOf(bytes.substr(0, 4))),
          m_file(folder().nameOf("own.CATPart").c_str()) {
        folder().write("own.CATPart", bytes);
        m_application = positionOf("AppliCont");
        m_property = positionOf("CATDocumentProperty");
        VornToolsLinks::getVersion(&m_image, m_version, m_release, m_pack);
    }

    std::vector<Operation> all() {
        return {
            searchLinks(),
            readAtOnce(),
            links("getLinks", [this] { return VornToolsLinks::getLinks(&m_image, "", &m_name, "", m_missing); }),
            links("getLinks MML", [this] { return VornToolsLinks::getLinks(&m_image, "MML", &m_name, "", m_missing); }),
            links("getAllLinks", [this] { return VornToolsLinks::getAllLinks(&m_image, &m_name, ""); }),
            links("getContextLinks", [this] { return VornToolsLinks::getContextLinks(&m_image, &m_name, ""); }),
            links("getImportLinks", [this] { return VornToolsLinks::getImportLinks(&m_image, &m_name, ""); }),
            links("getImportLinksWithPub", [this] { return VornToolsLinks::getImportLinksWithPub(&m_image); }),
            links("getMMLDrawingLinks", [this] { return VornToolsLinks::getMMLDrawingLinks(&m_image, &m_name, ""); }),
            strings("getLinkedDocName",
                    [this] {
                        VornToolsLinks::getLinkedDocName(&m_image, m_property, &m_name, "", m_strings, m_others[0],
                                                         m_others[1], m_others[2]);
                    }),
            strings("getGhosts", [this] { VornToolsLinks::getGhosts(&m_image, m_property, m_strings); }),
            strings("getExternalReference",
                    [this] {
                        VornToolsLinks::getExternalReference(&m_image, m_release, m_application, m_property, m_strings);
                    }),
            strings("findKey", [this] { m_strings = VornToolsLinks::findKey(&m_image, m_key); }),
            strings("getMMLTag",
                    [this] { VornToolsLinks::getMMLTag(&m_image, m_release, m_application, m_property, m_strings); }),
            strings("getMmlPublication",
                    [this] {
                        VornToolsLinks::getMmlPublication(&m_image, m_release, m_application, m_property, m_strings);
                    }),
            strings("getMmlDocuments",
                    [this] {
                        VornToolsLinks::getMmlDocuments(&m_image, m_release, m_application, m_property, &m_name, "",
                                                        m_strings);
                    }),
            strings("sortImportUnpublished_and_MMLR12",
                    [this] {
                        Strings names, products, parts, references;
                        VornToolsLinks::getLinkedDocName(&m_image, m_property, &m_name, "", names, products, parts,
                                                         references);
                        VornToolsLinks::sortImportUnpublished_and_MMLR12(&m_image, 12, m_application, m_property, parts,
                                                                         references, m_strings, m_others[0]);
                    }),
        };
    }

private:
    int positionOf(const char* marker) {
        return m_image.indexOf(VornToolsString(marker, static_cast<int>(std::strlen(marker))), 0, 0xFFFFFFFFU, 0);
    }
    Operation searchLinks() {
        const auto run = [this] {
            double count = 0;
            VornToolsLinks::searchLinks(m_file, "", "", count, m_lists[0], m_lists[1], m_lists[2], m_lists[3],
                                        m_lists[4], m_flags, m_missing);
            require(count == m_lists[0].Size() && count == m_flags.size(), "lists that are not parallel");
        };
        const auto clear = [this] {
            for (CATListValCATUnicodeString& list : m_lists) list.RemoveAll();
            m_flags = VornToolsVector<unsigned char>();
        };
        return {"searchLinks", run, [this] { return m_flags.size(); }, [this] { return m_image.size(); }, clear};
    }
    Operation readAtOnce() {
        const auto run = [this] {
            VornToolsFolderMemory folders;
            m_document = std::make_unique<VornToolsDocumentLinks>();
            m_document->read(m_file, "", "", folders);
        };
        const auto size = [this] {
            unsigned int documents = 0, links = 0, references = 0;
            m_document->getDocuments(documents);
            m_document->getLinks(links);
            m_document->getExternalReferences(references);
            return std::size_t{documents} + links + references;
        };
        return {"VornToolsDocumentLinks::read", run, size, [this] { return m_image.size(); },
                [this] { m_document.reset(); }};
    }
    Operation links(const char* name, std::function<Links()> run) {
        return {name, [this, run = std::move(run)] { m_links = run(); }, [this] { return m_links.size(); },
                [] { return 0; }, [this] { m_links = Links(); }};
    }
    Operation strings(const char* name, std::function<void()> run) {
        const auto uncounted = [this] {
            std::size_t bytes = stringBytes(m_strings);
            for (const Strings& other : m_others) bytes += stringBytes(other);
            return bytes;
        };
        const auto clear = [this] {
            m_strings = Strings();
            for (Strings& other : m_others) other = Strings();
        };
        return {name, std::move(run), [this] { return m_strings.size(); }, uncounted, clear};
    }

    VornToolsString m_image, m_name, m_key;
    std::unique_ptr<VornToolsDocumentLinks> m_document;
    CATUnicodeString m_file;
    CATListValCATUnicodeString m_lists[5];
    VornToolsVector<unsigned char> m_flags;
    int m_application = -1, m_property = -1, m_version = 0, m_release = 0, m_pack = 0;
    unsigned char m_missing = 0;
    Links m_links;
    Strings m_strings, m_others[3];
};

void requireBounded(const std::string& image) {
    Operations operations(image);
    for (const Operation& operation : operations.all()) {
        allocations::take();
        operation.run();
        const allocations::Counts counts = allocations::take();
        if (allocations::areAllSeen) {
            const std::size_t size = image.size();
            require(counts.peak + operation.uncounted() <= kBytesPerByte * size + kFixed, operation.name);
            require(counts.made <= kAllocationsPerByte * size + kFixed, operation.name);
            require(counts.written <= kWrittenPerByte * size + kFixed, operation.name);
        }
        operation.clear();
        embedded::Journal::get().clear();
    }
}

struct Attempt {
    bool refused;  ///< a piece was refused, so that another one may be
    bool reported; ///< the operation said that it failed
};

/** Refuses one large piece; the answer is then whole or empty. */
Attempt attemptRefused(const Operation& operation, std::size_t nth, std::size_t whole) {
    constexpr std::size_t large = 1024; // more than the empty list that every call begins with
    allocations::refuse(nth, large);
    operation.run();
    const bool refused = allocations::refuse(0, 0);
    require(operation.size() == 0 || operation.size() == whole, operation.name);
    operation.clear();
    embedded::Journal::get().clear();
    return {refused, !embedded::ErrorReports::get().take().empty()};
}

/** Refuses one large piece after the other. */
void requireNothingThrown(const std::string& image) {
    Operations operations(image);
    for (const Operation& operation : operations.all()) {
        operation.run();
        const std::size_t whole = operation.size();
        operation.clear();
        embedded::Journal::get().clear();
        embedded::ErrorReports::get().take();
        Attempt last = {true, false};
        for (std::size_t nth = 1; last.refused; ++nth) {
            std::size_t before = allocations::live();
            last = attemptRefused(operation, nth, whole);
            // The platform keeps the last report of each number: what the first one takes stays.
            if (last.reported) {
                before = allocations::live();
                attemptRefused(operation, nth, whole);
            }
            require(allocations::live() == before, operation.name);
        }
    }
    embedded::Journal::get().clear();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const long objects = embedded::Accounting::get().live().objects;
    const std::vector<Piece> pieces = piecesOf(data + 1, size - 1);
    requireBounded(imageOf(pieces, kLargest >> data[0] % 8));
    if (allocations::areAllSeen) requireNothingThrown(imageOf(pieces, kSmallest));
    require(embedded::Accounting::get().live().objects == objects, "objects left alive");
    requireCleanliness();
    return 0;
}
