#ifndef EMBEDDED_ACCOUNTING_H
#define EMBEDDED_ACCOUNTING_H

#include "ExportedByCatia.h"

#include <string>
#include <vector>

class CATBaseUnknown;

namespace embedded {

/** What is handed out and not yet given back, by kind. */
struct LiveCounts {
    long references = 0; ///< interface references on objects of the session
    long objects = 0;    ///< reference-counted objects, those of the library included
    long lists = 0;      ///< lists of any kind
    long texts = 0;      ///< automation texts (CATBSTR)
    long files = 0;      ///< open files

    friend bool operator==(const LiveCounts& a, const LiveCounts& b) {
        return a.references == b.references && a.objects == b.objects && a.lists == b.lists && a.texts == b.texts &&
               a.files == b.files;
    }
    friend bool operator!=(const LiveCounts& a, const LiveCounts& b) { return !(a == b); }
};

/** Books on references and on the rules of their use. One for the process. */
class ExportedByCatia Accounting {
public:
    static Accounting& get();

    LiveCounts& live() { return m_live; }
    /** Objects of the session that somebody outside still holds, by name with their counts: for a test's message. */
    std::vector<std::string> holders() const;
    /** Name of an object for messages; its class when it is none of the session. */
    static std::string nameOf(const CATBaseUnknown& object);
    /** Records a breach: a double release, a use after the last release, a position outside a list. */
    void breach(const std::string& what);
    /** The breaches since the last call. */
    std::vector<std::string> takeBreaches();

private:
    LiveCounts m_live;
    std::vector<std::string> m_breaches;
};

} // namespace embedded

#endif
