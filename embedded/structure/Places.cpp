#include "embedded/structure/Places.h"

#include "embedded/documents/SessionData.h"

#include <algorithm>

namespace embedded {

namespace {

bool isRoot(const ProductObject& product) { return product.father() == nullptr; }

bool isDirectInstance(const ProductObject& product) { return product.isDirectInstance(); }

/** What each place answers, from below the one where the way begins down to the product. */
template <class Begins, class Answer>
auto onTheWay(const ProductObject& product, Begins begins, Answer answer) {
    std::vector<std::decay_t<decltype(answer(product))>> way;
    for (const ProductObject* place = &product; !begins(*place); place = place->father()) way.push_back(answer(*place));
    std::reverse(way.begin(), way.end());
    return way;
}

const std::string& instanceNameOf(const ProductObject& product) { return product.instanceName(); }

std::size_t indexOf(const ProductObject& product) { return product.index(); }

} // namespace

const ProductObject& rootOf(const ProductObject& product) {
    const ProductObject* root = &product;
    while (root->father()) root = root->father();
    return *root;
}

std::vector<std::string> namesBelowRoot(const ProductObject& product) {
    return onTheWay(product, isRoot, instanceNameOf);
}

std::vector<std::size_t> indicesBelowRoot(const ProductObject& product) { return onTheWay(product, isRoot, indexOf); }

std::vector<std::string> namesBelowInstance(const ProductObject& product) {
    return onTheWay(product, isDirectInstance, instanceNameOf);
}

std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> ownOccurrences(const SessionData& session) {
    std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> result;
    for (const auto& product : session.products) {
        if (product->isReference() || product->isDirectInstance()) continue;
        if (!product->ownDescription() && product->hasProperties()) continue;
        const ProductObject* instance = product.get();
        while (!instance->isDirectInstance()) instance = instance->father();
        result[instance].push_back(product.get());
    }
    for (auto& below : result)
        std::sort(below.second.begin(), below.second.end(), [](const ProductObject* left, const ProductObject* right) {
            return onTheWay(*left, isDirectInstance, indexOf) < onTheWay(*right, isDirectInstance, indexOf);
        });
    return result;
}

} // namespace embedded
