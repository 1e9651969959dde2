#include "tools/vorntools/RunValues.h"

#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsInstanceProperty.h"

#include "embedded/Parameters.h"

#include <map>

namespace {

int runProperties(bool json, const ValueOptions& options) {
    std::vector<ListedProduct> products;
    Assignments assignments;
    if (!chooseProducts(options.object, products) || !parseAssignments(options.assignments, assignments))
        return ExitUnusable;
    int code = ExitFine;
    Listing listing(json, {"product", "name", "value"});
    for (const ListedProduct& listed : products) {
        if (assignments.names.Size() > 0 &&
            FAILED(VornToolsCommon::setUserProperties(listed.product.get(), assignments.names, assignments.values,
                                                      assignments.types))) {
            complain("not every property of " + listed.path + " can be set");
            code = ExitFindings;
        }
        CATListValCATUnicodeString found, texts;
        VornToolsCommon::getUserProperties(listed.product.get(), found, texts);
        for (int i = 1; i <= found.Size(); ++i) listing.add({listed.path, bytesOf(found[i]), bytesOf(texts[i])});
    }
    listing.print();
    return saveSession(options.save, code);
}

CATISpecObject* featureOf(const embedded::Product& product) {
    return embedded::parametersOf(product.reference()).get();
}

int runParameters(bool json, const ValueOptions& options) {
    std::vector<ListedProduct> products;
    Assignments assignments;
    if (!chooseProducts(options.object, products) || !parseAssignments(options.assignments, assignments))
        return ExitUnusable;
    for (int i = 1; i <= assignments.names.Size(); ++i) {
        const ParameterList parameters(featureOf(products.front().product));
        if (parameters.update(assignments.names[i], assignments.values[i], assignments.types[i])) continue;
        complain("no parameter " + bytesOf(assignments.names[i]) + " that takes this value");
        return ExitUnusable;
    }
    Listing listing(json, {"product", "name", "value", "type", "read_only"});
    for (const ListedProduct& listed : products) {
        const ParameterList list(featureOf(listed.product));
        for (int i = 1; i <= list.names.Size(); ++i)
            listing.add({listed.path, bytesOf(list.names[i]), bytesOf(list.values[i]), bytesOf(list.types[i]),
                         bytesOf(list.flags[i]) == "true"});
    }
    listing.print();
    return saveSession(options.save, ExitFine);
}

constexpr const char* kInstanceName = "InstanceName";
constexpr const char* kDescription = "DescriptionInst";

/** The platform's own name and description of an instance go one way, the properties of the PDM side another. */
HRESULT writeToInstance(CATIProduct* instance, const CATUnicodeString& name, const CATUnicodeString& value, char type) {
    using Property = VornToolsInstanceProperty;
    if (name == kInstanceName || name == kDescription) {
        CATListValCATUnicodeString names, values;
        names.Append(name);
        values.Append(value);
        return VornToolsCommon::setInstanceProperties(instance, names, values);
    }
    const std::map<char, Property::EnumPropertyType> types = {{'s', Property::PropertyString},
                                                              {'i', Property::PropertyInteger},
                                                              {'b', Property::PropertyBoolean},
                                                              {'d', Property::PropertyReal}};
    return Property::setAttribute(instance, name, types.at(type), value);
}

void listInstance(CATIProduct* instance, Listing& listing) {
    CATUnicodeString path;
    VornToolsCommon::getProductPath(instance, path);
    void* received = nullptr;
    if (SUCCEEDED(instance->QueryInterface(IID_CATIPrdProperties, &received)) && received) {
        auto* const properties = static_cast<CATIPrdProperties*>(received);
        CATUnicodeString description;
        properties->GetDescriptionInst(description);
        properties->Release();
        if (!description.IsNull()) listing.add({bytesOf(path), kDescription, bytesOf(description)});
    }
    CATListValCATUnicodeString names, values;
    VornToolsInstanceProperty::getAllMaroInstancePropertiesNamesAndValues(instance, names, values);
    for (int i = 1; i <= names.Size(); ++i) listing.add({bytesOf(path), bytesOf(names[i]), bytesOf(values[i])});
}

int runInstances(bool json, const ValueOptions& options) {
    std::vector<ListedProduct> products;
    Assignments assignments;
    if (!chooseProducts(options.object, products) || !parseAssignments(options.assignments, assignments))
        return ExitUnusable;
    int code = ExitFine;
    for (int i = 1; i <= assignments.names.Size(); ++i) {
        const CATUnicodeString& name = assignments.names[i];
        const char type = bytesOf(assignments.types[i]).front();
        if (SUCCEEDED(writeToInstance(products.front().product.get(), name, assignments.values[i], type))) continue;
        complain(bytesOf(name) + " of " + products.front().path + " cannot be set");
        code = ExitFindings;
    }
    Listing listing(json, {"product", "name", "value"});
    for (const ListedProduct& listed : products)
        if (FAILED(listed.product.get()->IsReference())) listInstance(listed.product.get(), listing);
    listing.print();
    return saveSession(options.save, code);
}

} // namespace

void addPropertyTopics(Topics& topics) {
    addValueTopic(topics, "properties", "User properties of every product", "--product", "PRODUCT", runProperties);
    addValueTopic(topics, "parameters", "Parameters in the set of every product", "--product", "PRODUCT",
                  runParameters);
    addValueTopic(topics, "instances", "Descriptions of the instances, and what the PDM attached to them", "--product",
                  "PRODUCT", runInstances);
}
