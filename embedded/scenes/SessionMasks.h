#ifndef EMBEDDED_SCENES_SESSION_MASKS_H
#define EMBEDDED_SCENES_SESSION_MASKS_H

#include "embedded/documents/SessionData.h"

#include <map>
#include <string>

namespace embedded {

constexpr int kGreatestMask = 10;

/** The masks of the session's products. */
class SessionMasks final : public SessionPart {
public:
    static constexpr const char* kName = "masks";

    explicit SessionMasks(SessionData&) {}
    static SessionMasks& get();

    bool hasManager = true;

    int of(const ProductObject* product) const {
        const auto found = m_masks.find(product);
        return found == m_masks.end() ? 0 : found->second;
    }
    void set(const ProductObject* product, int mask) {
        if (mask == 0)
            m_masks.erase(product);
        else
            m_masks[product] = mask;
    }
    const std::map<const ProductObject*, int>& all() const { return m_masks; }

    void addToDigest(std::string& text) const override;

private:
    std::map<const ProductObject*, int> m_masks;
};

} // namespace embedded

#endif
