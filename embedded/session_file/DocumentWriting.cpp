#include "embedded/session_file/DocumentSection.h"

#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"
#include "embedded/structure/Places.h"
#include "embedded/text/Characters.h"

#include <map>
#include <unordered_map>
#include <vector>

namespace embedded {

namespace {

class DocumentWriter {
public:
    explicit DocumentWriter(const SessionData& session) : m_session(session), m_own(ownOccurrences(session)) {}

    Json write() {
        Json documents = Json::array();
        for (const auto& document : m_session.documents) {
            m_place = "[" + std::to_string(documents.size()) + "]";
            documents.push_back(writeDocument(*document));
        }
        return documents;
    }

private:
    const std::string& checked(const std::string& text) const {
        if (!isWellFormed(text)) throw SaveFault{"a text is not UTF-8", m_place};
        return text;
    }
    void write(Json& object, const char* key, const std::string& text, const std::string& usual = {}) const {
        if (text != usual) object[key] = checked(text);
    }
    static void write(Json& object, const char* key, bool flag, bool usual) {
        if (flag != usual) object[key] = flag;
    }
    void writeList(Json& object, const char* key, const std::vector<std::string>& texts) const {
        for (const std::string& text : texts) object[key].push_back(checked(text));
    }

    Json writeDocument(DocumentObject& document) {
        Json object = Json::object();
        object["name"] = checked(document.name());
        write(object, "type", document.type(), suffixOf(document.name()));
        object["uuid"] = document.uuidText();
        write(object, "saved", document.saved, true);
        write(object, "on_disk", document.onDisk, hasDirectory(document.name()));
        write(object, "up_to_date", document.upToDate, true);
        writeWithout(object, {{"descriptor", document.hasDescriptor},
                              {"automation", document.hasAutomation},
                              {"roots", document.hasRoots}});
        m_components.clear();
        if (const ProductObject* const root = document.rootProduct()) writeReference(object, *root->reference(), 0);
        return object;
    }

    void writeReference(Json& object, const Reference& reference, int depth) {
        if (depth > kDeepestComponent) throw SaveFault{"components nested too deeply", m_place};
        object["part_number"] = checked(reference.partNumber);
        write(object, "description_ref", reference.description);
        write(object, "master_shape", reference.masterShape);
        for (const auto& shape : reference.shapes)
            object["shapes"].push_back(Json{{"name", checked(shape.first)}, {"path", checked(shape.second)}});
        writeWithout(object,
                     {{"properties", reference.node->hasProperties()}, {"linkable_object", reference.linkable}});
        if (reference.node->childCount() == 0) return;
        Json& children = object["children"] = Json::array();
        for (std::size_t i = 0; i < reference.node->childCount(); ++i)
            children.push_back(writeInstance(*reference.node->child(i), depth));
    }

    Json writeInstance(const ProductObject& instance, int depth) {
        Json object = Json::object();
        object["instance"] = checked(instance.instanceName());
        const Reference* const reference = instance.reference();
        if (!reference)
            object["unresolved"] = true;
        else if (!reference->component)
            object["document"] = checked(reference->document->name());
        else
            object["component"] = writeComponent(*reference, depth);
        write(object, "description", instance.description());
        writeWithout(object, {{"properties", instance.hasProperties()}});
        const auto own = m_own.find(&instance);
        if (own == m_own.end()) return object;
        for (const ProductObject* occurrence : own->second)
            object["occurrences"].push_back(writeOccurrence(*occurrence));
        return object;
    }

    /** The first time all about a component, later its id. */
    Json writeComponent(const Reference& reference, int depth) {
        const auto known = m_components.find(&reference);
        if (known != m_components.end()) return known->second;
        Json object = Json::object();
        if (reference.usedIn.size() > 1)
            object["id"] =
                m_components.emplace(&reference, "c" + std::to_string(m_components.size() + 1)).first->second;
        writeReference(object, reference, depth + 1);
        return object;
    }

    Json writeOccurrence(const ProductObject& occurrence) const {
        Json object = Json::object();
        writeList(object, "path", namesBelowInstance(occurrence));
        if (occurrence.ownDescription()) object["description"] = checked(*occurrence.ownDescription());
        writeWithout(object, {{"properties", occurrence.hasProperties()}});
        return object;
    }

    const SessionData& m_session;
    const std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> m_own;
    std::map<const Reference*, std::string> m_components; ///< ids of the document being written
    std::string m_place;                                  ///< of the document being written
};

} // namespace

Json writeDocuments(Session& session) { return DocumentWriter(session.data()).write(); }

} // namespace embedded
