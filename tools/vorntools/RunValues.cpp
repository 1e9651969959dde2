#include "tools/vorntools/RunValues.h"

#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "VornToolsCADDOCProperties.h"

#include "embedded/SessionFile.h"

bool parseAssignments(const std::vector<std::string>& texts, Assignments& assignments) {
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const std::size_t colon = text.rfind(':');
        if (equals == std::string::npos || equals == 0 || colon == std::string::npos || colon < equals ||
            colon + 2 != text.size() || std::string("sibd").find(text.back()) == std::string::npos) {
            complain("NAME=VALUE:TYPE is expected, not " + text);
            return false;
        }
        assignments.names.Append(textOf(text.substr(0, equals)));
        assignments.values.Append(textOf(text.substr(equals + 1, colon - equals - 1)));
        assignments.types.Append(textOf(text.substr(colon + 1)));
    }
    return true;
}

int saveSession(const std::string& file, int code) {
    if (file.empty() || code == ExitUnusable) return code;
    const embedded::SessionFileResult saved = embedded::saveSession(file);
    if (!saved.ok) complain(saved.error);
    return saved.ok ? code : int{ExitUnusable};
}

bool chooseProducts(const std::string& path, std::vector<ListedProduct>& products) {
    if (path.empty()) {
        products = allProducts();
        return true;
    }
    const embedded::Product product = findProduct(path);
    products.assign(1, {product, path});
    return static_cast<bool>(product);
}

ParameterList::ParameterList(CATISpecObject* feature) {
    VornToolsCADDOCProperties* const service = VornToolsCADDOCProperties::getInstance();
    if (!service) return;
    CATICkeParameterSet* set = nullptr;
    if (feature) service->getParameterSet(feature, set);
    CATListValCATBaseUnknown_var* received = nullptr;
    if (set) service->getListOfParameters(set, received, names, values, types, flags);
    if (set) set->Release();
    m_parameters.reset(received);
    service->Release();
}

bool ParameterList::update(const CATUnicodeString& name, const CATUnicodeString& value,
                           const CATUnicodeString& type) const {
    const int index = names.Locate(name);
    if (!m_parameters || index < 1 || index > m_parameters->Size()) return false;
    CATBaseUnknown* const object = (*m_parameters)[index];
    void* received = nullptr;
    if (!object || FAILED(object->QueryInterface(IID_CATICkeParm, &received)) || !received) return false;
    auto* const parameter = static_cast<CATICkeParm*>(received);
    const HRESULT code = VornToolsCADDOCProperties::updateParameter(parameter, name, value, type);
    parameter->Release();
    return SUCCEEDED(code);
}

void addValueTopic(Topics& topics, const char* name, const char* description, const char* option, const char* path,
                   int (*run)(bool json, const ValueOptions& options)) {
    const auto common = topics.options();
    const auto options = std::make_shared<ValueOptions>();
    Command& topic = topics.add(name, description, [common, options, run] { return run(common->json, *options); });
    topic.value(option, path, "Only this one, by the name that is shown", &options->object);
    topic
        .value("--set", "NAME=VALUE:TYPE", "New value; types: s text, i integer, b truth value, d number",
               &options->assignments)
        .needs(option);
    topic.value("--save", "FILE", "Session file that receives the session as it is afterwards", &options->save);
}
