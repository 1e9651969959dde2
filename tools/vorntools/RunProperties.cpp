#include "tools/vorntools/RunCommand.h"

#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"

#include "embedded/Parameters.h"
#include "embedded/SessionFile.h"

#include <memory>

namespace {

/** What the topics of this file share. */
struct ValueOptions {
    std::string product;
    std::vector<std::string> assignments; ///< "name=value:type"
    std::string save;
};

struct Assignment {
    CATUnicodeString name, value, type;
};

/** The type stands behind the last colon, one letter; the name in front of the first equals sign. */
bool parse(const std::string& text, Assignment& assignment) {
    const std::size_t equals = text.find('=');
    const std::size_t colon = text.rfind(':');
    if (equals == std::string::npos || equals == 0 || colon == std::string::npos || colon < equals ||
        colon + 2 != text.size()) {
        complain("NAME=VALUE:TYPE is expected, not " + text);
        return false;
    }
    assignment = {textOf(text.substr(0, equals)), textOf(text.substr(equals + 1, colon - equals - 1)),
                  textOf(text.substr(colon + 1))};
    return true;
}

bool parseAll(const std::vector<std::string>& texts, std::vector<Assignment>& assignments) {
    for (const std::string& text : texts) {
        assignments.emplace_back();
        if (!parse(text, assignments.back())) return false;
    }
    return true;
}

int save(const std::string& file, int code) {
    if (file.empty() || code == ExitUnusable) return code;
    const embedded::SessionFileResult saved = embedded::saveSession(file);
    if (!saved.ok) complain(saved.error);
    return saved.ok ? code : int{ExitUnusable};
}

/** All products, or the one that is asked for; false when there is none of that name. */
bool chooseProducts(const std::string& path, std::vector<ListedProduct>& products) {
    products = allProducts();
    if (path.empty()) return true;
    const embedded::Product product = findProduct(path);
    products.assign(1, {product, path});
    return static_cast<bool>(product);
}

int runProperties(bool json, const ValueOptions& options) {
    std::vector<ListedProduct> products;
    std::vector<Assignment> assignments;
    if (!chooseProducts(options.product, products) || !parseAll(options.assignments, assignments)) return ExitUnusable;
    CATListValCATUnicodeString names, values, types;
    for (const Assignment& assignment : assignments) {
        names.Append(assignment.name);
        values.Append(assignment.value);
        types.Append(assignment.type);
    }
    int code = ExitFine;
    Listing listing(json, {"product", "name", "value"});
    for (const ListedProduct& listed : products) {
        if (names.Size() > 0 &&
            FAILED(VornToolsCommon::setUserProperties(listed.product.get(), names, values, types))) {
            complain("not every property of " + listed.path + " can be set");
            code = ExitFindings;
        }
        CATListValCATUnicodeString found, texts;
        VornToolsCommon::getUserProperties(listed.product.get(), found, texts);
        for (int i = 1; i <= found.Size(); ++i) listing.add({listed.path, bytesOf(found[i]), bytesOf(texts[i])});
    }
    listing.print();
    return save(options.save, code);
}

/** The parameter set of the reference that a product shows, with its parameters as parallel lists. */
class ParameterList {
public:
    explicit ParameterList(const embedded::Product& product) {
        VornToolsCADDOCProperties* const service = VornToolsCADDOCProperties::getInstance();
        CATISpecObject* const feature = embedded::parametersOf(product.reference()).get();
        if (!service) return;
        CATICkeParameterSet* set = nullptr;
        if (feature) service->getParameterSet(feature, set);
        CATListValCATBaseUnknown_var* received = nullptr;
        if (set) service->getListOfParameters(set, received, names, values, types, flags);
        if (set) set->Release();
        m_parameters.reset(received);
        service->Release();
    }

    /** Gives the parameter of a name another value; false when there is none or it refuses. */
    bool update(const Assignment& assignment) const {
        for (int i = 1; m_parameters && i <= m_parameters->Size() && i <= names.Size(); ++i) {
            if (names[i] != assignment.name) continue;
            CATBaseUnknown* const object = (*m_parameters)[i];
            void* received = nullptr;
            if (!object || FAILED(object->QueryInterface(IID_CATICkeParm, &received)) || !received) return false;
            auto* const parameter = static_cast<CATICkeParm*>(received);
            const HRESULT code = VornToolsCADDOCProperties::updateParameter(parameter, assignment.name,
                                                                            assignment.value, assignment.type);
            parameter->Release();
            return SUCCEEDED(code);
        }
        return false;
    }

    CATListValCATUnicodeString names, values, types, flags;

private:
    std::unique_ptr<CATListValCATBaseUnknown_var> m_parameters;
};

int runParameters(bool json, const ValueOptions& options) {
    std::vector<ListedProduct> products;
    std::vector<Assignment> assignments;
    if (!chooseProducts(options.product, products) || !parseAll(options.assignments, assignments)) return ExitUnusable;
    if (!assignments.empty()) {
        const ParameterList parameters(products.front().product);
        for (const Assignment& assignment : assignments) {
            if (parameters.update(assignment)) continue;
            complain("no parameter " + bytesOf(assignment.name) + " that takes this value");
            return ExitUnusable;
        }
    }
    Listing listing(json, {"product", "name", "value", "type", "read_only"});
    for (const ListedProduct& listed : products) {
        const ParameterList list(listed.product);
        for (int i = 1; i <= list.names.Size(); ++i)
            listing.add({listed.path, bytesOf(list.names[i]), bytesOf(list.values[i]), bytesOf(list.types[i]),
                         bytesOf(list.flags[i]) == "true"});
    }
    listing.print();
    return save(options.save, ExitFine);
}

void addValueTopic(Topics& topics, const char* name, const char* description,
                   int (*run)(bool json, const ValueOptions& options)) {
    const auto common = topics.options();
    const auto options = std::make_shared<ValueOptions>();
    CLI::App& topic = topics.add(name, description, [common, options, run] { return run(common->json, *options); });
    CLI::Option* const product =
        topic.add_option("--product", options->product, "Only this product, by the path that is shown")
            ->type_name("PRODUCT");
    topic.add_option("--set", options->assignments, "New value; types: s text, i integer, b truth value, d number")
        ->needs(product)
        ->type_name("NAME=VALUE:TYPE");
    topic.add_option("--save", options->save, "Session file that receives the session as it is afterwards")
        ->type_name("FILE");
}

} // namespace

void addPropertyTopics(Topics& topics) {
    addValueTopic(topics, "properties", "User properties of every product", runProperties);
    addValueTopic(topics, "parameters", "Parameters in the set of every product", runParameters);
}
