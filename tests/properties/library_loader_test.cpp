#include "VornToolsLibraryLoader.h"

#include "CATDocument.h"
#include "CATListOfCATUnicodeString.h"
#include "VornToolsCADDOCProperties.h"
#include "foundation/DynamicLibrary.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

struct VornToolsLibraryLoaderTestAccess {
    static void forget() {
        VornToolsLibraryLoader::_electrical_interfaces_module = nullptr;
        VornToolsLibraryLoader::_electrical_interfaces_module_initialized = false;
        VornToolsLibraryLoader::_electrical_parameters_func = nullptr;
        VornToolsLibraryLoader::_electrical_parameters_func_initialized = false;
    }
};

namespace {

const std::string kPlatform = "CATElectricalInterfaces";
const std::string kOptional = "VornAPIOptElectricalInterfaces";

/** Loads a library of a folder: the system then finds it by its bare name, as if it were installed. */
void* load(const std::string& folder, const std::string& name) {
    return vorntools::loadLibrary((std::string(ELECTRICAL_LIBRARIES) + "/" + folder + "/" + name).c_str());
}

void unload(void* library) {
    if (!library) return;
#if defined(_WIN32)
    FreeLibrary(static_cast<HMODULE>(library));
#else
    dlclose(library);
#endif
}

class LibraryLoaderTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        VornToolsLibraryLoaderTestAccess::forget();
    }
    void TearDown() override {
        // What the loader took for good is given back here, so that the next test finds nothing installed.
        for (const std::string& name : {kOptional, kPlatform})
            for (void* found = vorntools::loadLibrary(name.c_str()); found && count < 100; ++count) {
                unload(found);
                unload(found);
                found = vorntools::loadLibrary(name.c_str());
            }
        EXPECT_LT(count, 100) << "a library that does not go";
        VornToolsLibraryLoaderTestAccess::forget();
        PlatformTest::TearDown();
    }
    Texts parameters(const embedded::Document& document, HRESULT expected) {
        CATListValCATUnicodeString list;
        list.Append("before");
        EXPECT_EQ(VornToolsCADDOCProperties::getElectricalParameters(document.get(), list), expected);
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
        return result;
    }
    int count = 0;
};

TEST_F(LibraryLoaderTest, WithoutTheLibrariesThereAreNoParameters) {
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalInterfacesModule(), nullptr);
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalParametersFuncPtr(), nullptr);
    EXPECT_EQ(parameters(session().part("/w/Bolt.CATPart"), S_OK), Texts());
    session().part("/w/Bare.CATPart").withoutRoots();
    EXPECT_EQ(parameters(session().find("/w/Bare.CATPart"), E_FAIL), Texts());
    ASSERT_NE(load("with", kPlatform), nullptr);
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalInterfacesModule(), nullptr) << "looked for once";
}

TEST_F(LibraryLoaderTest, WithoutThePlatformsLibraryTheOtherIsNotTried) {
    ASSERT_NE(load("with", kOptional), nullptr);
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalParametersFuncPtr(), nullptr);
}

TEST_F(LibraryLoaderTest, ALibraryWithoutTheFunctionGivesNone) {
    ASSERT_NE(load("without", kPlatform), nullptr);
    ASSERT_NE(load("without", kOptional), nullptr);
    EXPECT_NE(VornToolsLibraryLoader::getElectricalInterfacesModule(), nullptr);
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalParametersFuncPtr(), nullptr);
    EXPECT_EQ(parameters(session().part("/w/Bolt.CATPart"), S_OK), Texts());
}

TEST_F(LibraryLoaderTest, TheFunctionIsCalledForParts) {
    ASSERT_NE(load("with", kPlatform), nullptr);
    void* const library = load("with", kOptional);
    ASSERT_NE(library, nullptr);
    const auto function = VornToolsLibraryLoader::getElectricalParametersFuncPtr();
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(VornToolsLibraryLoader::getElectricalParametersFuncPtr(), function);
    const embedded::Document part = session().part("/w/Bolt.CATPart");
    EXPECT_EQ(parameters(part, S_FALSE), (Texts{"Wire", "0.5"}));
    EXPECT_EQ(parameters(session().document("/w/Sheet.CATDrawing"), E_INVALIDARG), Texts());
    EXPECT_EQ(parameters(session().product("/w/Root.CATProduct"), E_INVALIDARG), Texts());
    EXPECT_EQ(parameters(embedded::Document(), E_INVALIDARG), Texts());
    sweepFailures({"VornToolsCADDOCProperties::getElectricalParameters", [&] {
                       CATListValCATUnicodeString list;
                       const HRESULT code = VornToolsCADDOCProperties::getElectricalParameters(part.get(), list);
                       return outcomeOf(code, list);
                   }});
    session().part("/w/Bare.CATPart").withoutRoots();
    EXPECT_EQ(parameters(session().find("/w/Bare.CATPart"), E_FAIL), Texts());
    vorntools::functionOf(library, "breakDown")();
    EXPECT_EQ(parameters(part, E_FAIL), Texts()) << "the first one was there already";
    reports();
}

} // namespace
