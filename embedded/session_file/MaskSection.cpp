#include "embedded/Masks.h"
#include "embedded/scenes/SessionMasks.h"
#include "embedded/session_file/SessionSections.h"

#include <map>
#include <string>

namespace embedded {

namespace {

void readMasks(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"without", "products"});
    readWithout(field, {{"manager", &SessionMasks::get().hasManager}});
    const auto products = field.optional("products");
    if (!products) return;
    for (const JsonField& product : products->elements()) {
        product.expectKeys({"place", "mask"});
        const JsonField place = product.required("place");
        const Product marked = reader.place(place);
        if (maskOf(marked) != 0) place.fail("given twice");
        setMask(marked, product.required("mask").integer(1, kGreatestMask));
    }
}

Json writeMasks(Session& session) {
    const SessionMasks& masks = session.data().part<SessionMasks>();
    std::map<std::string, Json> products; // by place: the same session gives the same text
    for (const auto& mask : masks.all()) {
        const Json place = placeOf(Product(const_cast<ProductObject*>(mask.first)));
        products[place.dump()] = Json{{"place", place}, {"mask", mask.second}};
    }
    Json json;
    writeWithout(json, {{"manager", masks.hasManager}});
    for (const auto& product : products) json["products"].push_back(product.second);
    return json;
}

const SessionSection masksSection("masks", readMasks, writeMasks);

} // namespace

} // namespace embedded
