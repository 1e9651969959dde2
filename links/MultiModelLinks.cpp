#include "links/MultiModelLinks.h"

#include "links/StoredText.h"

#include <algorithm>
#include <unordered_map>

namespace vorntools {

namespace {

/** Finds the part file that an input belongs to: the one whose record its repository points to, else the one as far
 * down the list as the repository is. */
class PartFilesOfInputs {
public:
    explicit PartFilesOfInputs(const std::vector<const LinkedDocument*>& i_part_files)
        : m_count(static_cast<std::uint32_t>(i_part_files.size())) {
        for (std::uint32_t i = 0; i < m_count; ++i)
            if (i_part_files[i]->symbol != 0) m_of_symbol.emplace(i_part_files[i]->symbol, i);
    }

    std::uint32_t of(const ImportedElements::Input& i_input) const {
        const auto meant = m_of_symbol.find(i_input.symbol);
        if (meant != m_of_symbol.end()) return meant->second;
        return i_input.repository < m_count ? i_input.repository : MultiModelLinks::noDocument;
    }

private:
    std::uint32_t m_count;
    std::unordered_map<std::int32_t, std::uint32_t> m_of_symbol;
};

/** Texts for each byte of the image, by the largest list that is made of them: the publications, or the tags with the
 * names of their documents. An input takes seven bytes and may mean a text and a name that take most of the image. */
constexpr std::size_t kTextsPerByte = 16;

class TextAllowance {
public:
    explicit TextAllowance(std::size_t i_image_size) : m_left(kTextsPerByte * i_image_size) {}

    /** @param ip_document null for none */
    bool take(const MultiModelLinks::Element& i_element, const LinkedDocument* ip_document) {
        const std::size_t name = ip_document ? ip_document->name.size() : 0;
        const std::size_t taken = (std::max)(i_element.publication.size(), i_element.tag.size() + name);
        if (taken > m_left) return false;
        m_left -= taken;
        return true;
    }

private:
    std::size_t m_left;
};

} // namespace

MultiModelLinks multiModelLinks(const ImportedElements& i_imported,
                                const std::vector<const LinkedDocument*>& i_part_files,
                                const std::vector<ImportUse>& i_uses, std::size_t i_image_size) {
    MultiModelLinks found;
    for (const std::string_view path : i_imported.paths)
        found.elements.push_back({decoded(std::string(path)), decoded(std::string(elementOf(path)))});
    const PartFilesOfInputs part_files(i_part_files);
    TextAllowance allowance(i_image_size);
    found.links.reserve(i_imported.inputs.size() + i_uses.size());
    for (const ImportedElements::Input& input : i_imported.inputs) {
        const std::uint32_t document = part_files.of(input);
        const bool known = document != MultiModelLinks::noDocument;
        if (!allowance.take(found.elements[input.path], known ? i_part_files[document] : nullptr)) break;
        found.links.push_back({input.path, document});
    }
    for (std::size_t i = 0; i < i_uses.size(); ++i) {
        if (i_uses[i].kind != ImportUse::OlderForm || i_uses[i].tag.empty()) continue;
        found.links.push_back(
            {static_cast<std::uint32_t>(found.elements.size()), static_cast<std::uint32_t>(i_part_files.size() + i)});
        found.elements.push_back({i_uses[i].tag, i_uses[i].tag});
    }
    return found;
}

} // namespace vorntools
