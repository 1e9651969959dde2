#include "embedded/session_file/SessionSections.h"
#include "embedded/structure/SessionWorkModes.h"

#include <array>

namespace embedded {

namespace {

constexpr std::array<const char*, 4> kModeNames = {"visualisation", "standard", "brep", "design"};
constexpr std::array<const char*, 5> kOutcomeNames = {"switched", "ignored", "refused", "error", "foreign"};

void readWorkModes(const JsonField& field, const SectionReader& reader) {
    field.expectKeys({"products", "switching"});
    SessionWorkModes& modes = SessionWorkModes::get();
    if (const auto switching = field.optional("switching"))
        modes.outcome = static_cast<SwitchOutcome>(indexOf(*switching, kOutcomeNames));
    const auto products = field.optional("products");
    if (!products) return;
    for (const JsonField& entry : products->elements()) {
        entry.expectKeys({"place", "mode"});
        const JsonField mode = entry.required("mode");
        setWorkMode(reader.place(entry.required("place")), static_cast<WorkMode>(indexOf(mode, kModeNames)));
    }
}

Json writeWorkModes(Session& session) {
    Json json;
    SessionWorkModes& modes = session.data().part<SessionWorkModes>();
    if (modes.outcome != SwitchOutcome::switched)
        json["switching"] = kOutcomeNames[static_cast<std::size_t>(modes.outcome)];
    for (const auto& product : session.data().products) {
        const auto mode = static_cast<std::size_t>(product->workMode());
        if (mode == static_cast<std::size_t>(WorkMode::design)) continue;
        if (mode >= kModeNames.size()) throw SaveFault{"a product has an unknown work mode"};
        json["products"].push_back({{"place", placeOf(Product(product.get()))}, {"mode", kModeNames[mode]}});
    }
    return json;
}

const SessionSection workModesSection("work_modes", readWorkModes, writeWorkModes);

} // namespace

} // namespace embedded
