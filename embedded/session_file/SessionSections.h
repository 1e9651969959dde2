#ifndef EMBEDDED_SESSION_FILE_SESSION_SECTIONS_H
#define EMBEDDED_SESSION_FILE_SESSION_SECTIONS_H

#include "embedded/Session.h"
#include "embedded/session_file/Json.h"
#include "embedded/session_file/JsonReader.h"

#include <array>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace embedded {

/** What a section of a session file is read with. Everything that fails throws JsonFault at the field. */
class SectionReader {
public:
    SectionReader(Session& session, const std::string& folder) : m_session(session), m_folder(folder) {}

    Session& session() const { return m_session; }
    /** A file name; one with a relative directory begins in the session file's own folder. */
    std::string path(const JsonField& field) const;
    /** The document with the name that the field gives. */
    Document document(const JsonField& field) const;
    /** The product at `{"document": NAME, "path": [INSTANCE, ...]}`; a missing or empty path means the document's root
     * product. */
    Product place(const JsonField& field) const;

private:
    Session& m_session;
    std::string m_folder; ///< with a separator at its end
};

/** A text that a section writes: throws SaveFault unless it is UTF-8. */
const std::string& checkedText(const std::string& text);
/** What SectionReader::place reads. */
Json placeOf(const Product& product);

/** Which of these the text is; a fault of the field when it is none of them. */
template <std::size_t N>
int indexOf(const JsonField& field, const std::array<const char*, N>& names) {
    for (std::size_t i = 0; i < N; ++i)
        if (field.text() == names[i]) return static_cast<int>(i);
    field.fail("nothing is called '" + field.text() + "' here");
}

/** What an object can lack, and the flag that is false when it does. */
using Part = std::pair<const char*, bool*>;
/** Reads the member "without" of an object, a list of names of parts. */
void readWithout(const JsonField& field, std::initializer_list<Part> parts);
/** Writes it, unless nothing is missing. */
void writeWithout(Json& object, std::initializer_list<std::pair<const char*, bool>> parts);

/** Why a session cannot be written. */
struct SaveFault {
    std::string message;
    std::string place = {}; ///< within the section: "[3]"
};

/** One topic's member of a session file. Stands in a source file as a static object; they are read and written in the
 * order of their ranks and keys. */
class SessionSection {
public:
    using Read = void (*)(const JsonField& field, const SectionReader& reader);
    /** Null when there is nothing to write. */
    using Write = Json (*)(Session& session);

    /** @param rank above that of every section whose objects this one names; those of the environment and of the
     * documents are below 0 */
    SessionSection(const char* key, Read read, Write write, int rank = 0);

    static const SessionSection* find(const std::string& key);
    static const std::vector<const SessionSection*>& all();

    const char* const key;
    const Read read;
    const Write write;
    const int rank;
};

} // namespace embedded

#endif
