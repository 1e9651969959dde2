#include "examples/library/Examples.h"

#include "CATICkeParameterSet.h"
#include "CATISpecObject.h"
#include "CATListOfCATUnicodeString.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "VornToolsAssyConfig.h"
#include "VornToolsCADDOCProperties.h"
#include "VornToolsCADDOCPropertiesPX1.h"
#include "VornToolsCommon.h"
#include "VornToolsInstanceProperty.h"
#include "VornToolsLibraryLoader.h"
#include "VornToolsSpreadsheet.h"

#include <cstdio>

void useVornToolsAssyConfig() {
    //! [VornToolsAssyConfig]
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    CATListValCATUnicodeString names, values, types;
    names.Append("MaroAssyConfigDatasetUID");
    values.Append("DS-7");
    types.Append("s");
    VornToolsCommon::setUserProperties(shaft.get(), names, values, types); // as the PDM side does
    CATUnicodeString itemRevision, dataset, namedReference, fileName;
    VornToolsAssyConfig::hasMaroAssyConfigProperty(shaft.get(), itemRevision, dataset, namedReference, fileName);
    std::printf("%s, dataset %s\n", VornToolsAssyConfig::isAssyConfigRootProduct(shaft.get()) ? "root" : "no root",
                dataset.ConvertToChar());
    //! [VornToolsAssyConfig]
}

void useVornToolsCADDOCProperties() {
    //! [VornToolsCADDOCProperties]
    const std::unique_ptr<VornToolsCADDOCProperties, Release> service(VornToolsCADDOCProperties::getInstance());
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    const CATIProduct_var reference = shaft->GetReferenceProduct();
    const CATISpecObject_var feature(reference);
    CATListValCATUnicodeString names, values, types, flags;
    names.Append("Length");
    values.Append("260mm");
    types.Append("d");
    service->setReferenceProductParameters("Shaft.CATPart", static_cast<CATISpecObject*>(feature), names, values,
                                           types);

    CATICkeParameterSet* received = nullptr;
    service->getParameterSet(static_cast<CATISpecObject*>(feature), received);
    const std::unique_ptr<CATICkeParameterSet, Release> set(received);
    CATListValCATBaseUnknown_var* members = nullptr;
    service->getListOfParameters(set.get(), members, names, values, types, flags);
    delete members;
    for (int i = 1; i <= names.Size(); ++i)
        std::printf("%s = %s (%s)%s\n", names[i].ConvertToChar(), values[i].ConvertToChar(), types[i].ConvertToChar(),
                    flags[i] == "true" ? ", read-only" : "");
    //! [VornToolsCADDOCProperties]
}

void useVornToolsCADDOCPropertiesDflt() {
    //! [VornToolsCADDOCPropertiesDflt]
    // Where the environment says that the platform has no PDM connection, getInstance makes this one.
    const std::unique_ptr<VornToolsCADDOCProperties, Release> service(VornToolsCADDOCProperties::getInstance());
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    CATListValCATUnicodeString names, values;
    names.Append("partNumber");
    values.Append("GP-101");
    const HRESULT code = service->setReferenceProperties(shaft.get(), names, values);
    std::printf("part number %s\n", SUCCEEDED(code) ? shaft->GetPartNumber().ConvertToChar() : "refused");
    //! [VornToolsCADDOCPropertiesDflt]
}

void useVornToolsCADDOCPropertiesPX1() {
    //! [VornToolsCADDOCPropertiesPX1]
    // Where the environment says that the platform has a PDM connection, getInstance makes this one.
    const std::unique_ptr<VornToolsCADDOCProperties, Release> service(VornToolsCADDOCProperties::getInstance());
    auto* const connected = dynamic_cast<VornToolsCADDOCPropertiesPX1*>(service.get());
    if (!connected) return;
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    CATListValCATUnicodeString names, values;
    names.Append("source");
    values.Append("made");
    const HRESULT code = connected->setProductProperties(shaft.get(), "GP-101", names, values);
    std::printf("part number and source are %s\n", SUCCEEDED(code) ? "the item's" : "refused");
    //! [VornToolsCADDOCPropertiesPX1]
}

void useVornToolsInstanceProperty() {
    //! [VornToolsInstanceProperty]
    using Property = VornToolsInstanceProperty;
    const ProductPtr gear = productShowing("DriveGear.CATPart");
    CATIProduct* received = nullptr;
    if (FAILED(VornToolsCommon::getParent(gear.get(), received)) || !received) return;
    const ProductPtr component(received);
    Property::setAttribute(component.get(), "Weight", Property::PropertyReal, "1.25");
    CATListValCATUnicodeString names, values;
    Property::getAllMaroInstancePropertiesNamesAndValues(component.get(), names, values);
    for (int i = 1; i <= names.Size(); ++i)
        std::printf("%s = %s\n", names[i].ConvertToChar(), values[i].ConvertToChar());
    //! [VornToolsInstanceProperty]
}

void useVornToolsLibraryLoader() {
    //! [VornToolsLibraryLoader]
    const auto read = VornToolsLibraryLoader::getElectricalParametersFuncPtr();
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    CATListValCATUnicodeString parameters;
    if (read) read(shaft.get(), &parameters);
    std::printf("%s, %d parameters\n", read ? "there" : "not installed", parameters.Size());
    //! [VornToolsLibraryLoader]
}

void useVornToolsSpreadsheet() {
    //! [VornToolsSpreadsheet]
    CATUnicodeString geometry;
    VornToolsSpreadsheet::getOptionValueFromImportSprdSht(VornToolsSpreadsheet::_CteMENU_GEO_COMPUTE_OPTION_INDEX,
                                                          geometry);
    std::printf("geometry option: %s\n", geometry.ConvertToChar());
    TYPMapCATUnicodeStringPVoid options;
    VornToolsSpreadsheet::getCATPartMainBodyOption(options);
    for (int i = 0; i < options.size(); ++i) {
        const std::unique_ptr<CATUnicodeString> option(static_cast<CATUnicodeString*>(options.valueAt(i)));
        std::printf("main body of %s: %s\n", options.keyAt(i).ConvertToChar(), option->ConvertToChar());
    }
    //! [VornToolsSpreadsheet]
}
