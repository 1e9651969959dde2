#include "embedded/documents/Digest.h"

#include "embedded/documents/SessionData.h"
#include "embedded/structure/Places.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace embedded {

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + "\" ";
}

class Digest {
public:
    explicit Digest(const SessionData& session) : m_own(ownOccurrences(session)) {
        for (const auto& document : session.documents) addDocument(*document);
    }
    std::string take() { return std::move(m_text); }

private:
    void addFlag(bool set, const char* name) {
        if (set) m_text.append(name).append(" ");
    }

    void addDocument(DocumentObject& document) {
        m_text += "document " + quoted(document.name()) + quoted(document.type()) + document.uuidText() + " ";
        addFlag(document.saved, "saved");
        addFlag(document.onDisk, "on_disk");
        addFlag(document.upToDate, "up_to_date");
        addFlag(!document.hasDescriptor, "without_descriptor");
        addFlag(!document.hasAutomation, "without_automation");
        addFlag(!document.hasRoots, "without_roots");
        m_text += "\n";
        if (ProductObject* const root = document.rootProduct()) addStructure(*root->reference());
    }

    void addStructure(const Reference& root) {
        m_references = {&root};
        m_numbers.clear();
        for (std::size_t next = 0; next < m_references.size(); ++next) addReference(*m_references[next]);
    }

    void addReference(const Reference& reference) {
        m_text += " reference " + quoted(reference.partNumber) + quoted(reference.description) +
                  quoted(reference.masterShape);
        for (const auto& shape : reference.shapes) m_text += quoted(shape.first) + quoted(shape.second);
        addFlag(!reference.linkable, "without_linkable_object");
        addFlag(!reference.node->hasProperties(), "without_properties");
        m_text += "\n";
        for (std::size_t i = 0; i < reference.node->childCount(); ++i) addInstance(*reference.node->child(i));
    }

    void addInstance(const ProductObject& instance) {
        m_text += "  instance " + quoted(instance.instanceName()) + nameOf(instance.reference());
        addOwn(instance);
        const auto own = m_own.find(&instance);
        if (own == m_own.end()) return;
        for (const ProductObject* occurrence : own->second) {
            m_text += "   occurrence ";
            for (const std::string& name : namesBelowInstance(*occurrence)) m_text += quoted(name);
            addOwn(*occurrence);
        }
    }

    void addOwn(const ProductObject& place) {
        if (!place.isDirectInstance() && place.ownDescription()) m_text += "own ";
        m_text += quoted(place.description());
        addFlag(!place.hasProperties(), "without_properties");
        m_text += "\n";
    }

    /** Components have no name of their own: they are counted as they are met. */
    std::string nameOf(const Reference* reference) {
        if (!reference) return "unresolved ";
        if (!reference->component) return quoted(reference->document->name());
        const auto number = m_numbers.emplace(reference, m_references.size());
        if (number.second) m_references.push_back(reference);
        return "component " + std::to_string(number.first->second) + " ";
    }

    const std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> m_own;
    std::vector<const Reference*> m_references;
    std::unordered_map<const Reference*, std::size_t> m_numbers;
    std::string m_text;
};

} // namespace

std::string digestOf(const SessionData& session) { return Digest(session).take(); }

} // namespace embedded
