#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATUnicodeString.h"
#include "VornToolsCommon.h"

namespace {

const std::string kCommon = "VornToolsCommon::";

/** r.CATProduct holds g.1 (g.CATProduct with the component c.1, which holds p.1) and x.1, which is not loaded. */
class ProductStructureTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        part = session().part("/w/p.CATPart");
        group = session().product("/w/g.CATProduct").root();
        component = group.addComponent("comp", "c.1");
        inComponent = component.add(part, "p.1");
        root = session().product("/w/r.CATProduct").root();
        groupInstance = root.add(session().product("/w/g.CATProduct"), "g.1");
        broken = root.addUnresolved("x.1");
        occurrence = root.at({"g.1", "c.1", "p.1"});
    }

    static std::string path(const embedded::Product& product, HRESULT expected = S_OK) {
        CATUnicodeString text("before");
        EXPECT_EQ(VornToolsCommon::getProductPath(product.get(), text), expected);
        return text.ConvertToChar();
    }
    /** The product that a navigation hands out, null for none; its reference is given back. */
    template <class Method>
    static CATIProduct* reached(Method method, const embedded::Product& from, HRESULT expected) {
        CATIProduct* found = embedded::Session::current().documentAt(0).root().get(); // is to be cleared
        EXPECT_EQ(method(from.get(), found), expected);
        if (found) found->Release();
        return found;
    }
    template <class Question>
    static int answer(Question question, HRESULT expected = S_OK) {
        unsigned char result = 7;
        EXPECT_EQ(question(result), expected);
        return result;
    }
    static int isComponent(const embedded::Product& product, HRESULT expected = S_OK) {
        return answer([&](auto& result) { return VornToolsCommon::isComponent(product.get(), result); }, expected);
    }
    static int isForeign(const embedded::Product& product, HRESULT expected = S_OK) {
        return answer([&](auto& result) { return VornToolsCommon::isAForeignFile(product.get(), result); }, expected);
    }

    embedded::Document part;
    embedded::Product group, component, inComponent, root, groupInstance, broken, occurrence;
};

TEST_F(ProductStructureTest, TypesFollowTheSuffix) {
    const std::pair<const char*, int> suffixes[] = {
        {"CATPRODUCT", 1},  {"CATPART", 2}, {"CATDRAWING", 3}, {"CATPROCESS", 4}, {"CATANALYSIS", 5},
        {"DESIGNTABLE", 7}, {"CATALOG", 8}, {"TXT", 9},        {"XLS", 10},       {"XLSX", 11},
        {"XLSM", 12},       {"MODEL", -1},  {"catpart", -1},   {"CATPART ", -1},  {"", -1}};
    for (const auto& [suffix, type] : suffixes) {
        std::string text = suffix;
        EXPECT_EQ(VornToolsCommon::getDocumentTypeFromExtension(&text[0]), type) << suffix;
    }
    EXPECT_EQ(VornToolsCommon::getDocumentTypeFromExtension(nullptr), -1);

    const std::pair<const char*, int> names[] = {{"a.catpart", 2},     {"D:\\x.y\\a.b.CATProduct", 1},
                                                 {"a.model", -1},      {"CATPART", 2},
                                                 {"catPart", 2},       {".xls", 10},
                                                 {"a.CATPart.v4", -1}, {"xls.x", -1},
                                                 {"a.XlsX", 11},       {"", -1},
                                                 {"...", -1},          {"a.\xC3\xA4\xC3\xB6\xC3\xBC", -1},
                                                 {"\xFF.txt", 9}};
    for (const auto& [name, type] : names) EXPECT_EQ(VornToolsCommon::returnDocumentType(name), type) << name;
    // Fewer than three characters behind the dot: the search goes past it, to the dot before or to the whole name.
    EXPECT_EQ(VornToolsCommon::returnDocumentType("catalog."), -1);
    EXPECT_EQ(VornToolsCommon::returnDocumentType("a.b.c"), -1);
}

TEST_F(ProductStructureTest, AProductIsNamedByItsDocument) {
    CATDocument* const other = session().find("/w/g.CATProduct").get();
    const auto name = [&](const embedded::Product& product, CATDocument* expected, HRESULT code = S_OK) {
        CATDocument* document = other;
        CATUnicodeString text("before");
        EXPECT_EQ(VornToolsCommon::getDocumentFileName(product.get(), document, text), code);
        EXPECT_EQ(document, expected);
        return std::string(text.ConvertToChar());
    };
    EXPECT_EQ(name(occurrence, part.get()), "/w/p.CATPart");
    EXPECT_EQ(name(root, session().find("/w/r.CATProduct").get()), "/w/r.CATProduct");
    EXPECT_EQ(name(broken, nullptr), "r\\x.1") << "nothing is loaded";
    inComponent.withoutLinkableObject();
    EXPECT_EQ(name(occurrence, other), "r\\g.1\\c.1\\p.1") << "the caller's document stays";
    clearJournal();
    EXPECT_EQ(name(embedded::Product(), nullptr, E_FAIL), "");
    EXPECT_EQ(messages(), Texts({"ipi_the_product is NULL"}));
}

TEST_F(ProductStructureTest, PathsLeadFromTheRootToTheProduct) {
    EXPECT_EQ(path(root), "r");
    EXPECT_EQ(path(occurrence), "r\\g.1\\c.1\\p.1");
    EXPECT_EQ(path(group.at({"c.1", "p.1"})), "g\\c.1\\p.1");
    EXPECT_EQ(path(embedded::Product(), E_FAIL), "");
    EXPECT_EQ(reports(), Texts({kCommon + "getProductPath 9001 ipi_product"}));
}

TEST_F(ProductStructureTest, ParentsAndInstancesComeWithAReference) {
    EXPECT_EQ(reached(&VornToolsCommon::getParent, occurrence, S_OK), occurrence.father().get());
    EXPECT_EQ(reached(&VornToolsCommon::getParent, root, S_OK), nullptr);
    EXPECT_EQ(reached(&VornToolsCommon::getParent, embedded::Product(), E_FAIL), nullptr);

    const auto instance = &VornToolsCommon::getInstanceInFirstProductParent;
    EXPECT_EQ(reached(instance, groupInstance, S_OK), groupInstance.get()) << "the father is a reference";
    EXPECT_EQ(reached(instance, root.at({"g.1", "c.1"}), S_OK), group.at({"c.1"}).get());
    EXPECT_EQ(reached(instance, occurrence, S_OK), component.reference().at({"p.1"}).get());
    EXPECT_EQ(reached(instance, root, E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getParent 9001 ipi_product"}));
    EXPECT_EQ(reached(instance, embedded::Product(), E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getInstanceInFirstProductParent 9001 ipi_product"}));
}

TEST_F(ProductStructureTest, AComponentHasNoDocumentOfItsOwn) {
    EXPECT_EQ(isComponent(root.at({"g.1", "c.1"})), 1);
    EXPECT_EQ(isComponent(component), 1);
    EXPECT_EQ(isComponent(groupInstance), 0);
    EXPECT_EQ(isComponent(occurrence), 0);
    EXPECT_EQ(isComponent(root), 0);
    EXPECT_EQ(isComponent(broken), 0);
    EXPECT_EQ(reports(), Texts());
    component.withoutLinkableObject();
    EXPECT_EQ(isComponent(component, E_FAIL), 0);
    EXPECT_EQ(isComponent(embedded::Product(), E_FAIL), 0);
    EXPECT_EQ(reports(),
              Texts({kCommon + "isComponent 9002 pi_linkable_object", kCommon + "isComponent 9001 ipi_product"}));
}

TEST_F(ProductStructureTest, ShapesComeFromFiles) {
    const auto text = [](auto call, HRESULT expected) {
        CATUnicodeString result("before");
        EXPECT_EQ(call(result), expected);
        return std::string(result.ConvertToChar());
    };
    const auto master = [&](const embedded::Product& product, HRESULT expected) {
        return text(
            [&](auto& out) { return VornToolsCommon::getMasterShapeRepresentationPathName(product.get(), out); },
            expected);
    };
    const auto shape = [&](const embedded::Product& product, const char* name, HRESULT expected) {
        return text([&](auto& out) { return VornToolsCommon::getShapePathName(product.get(), name, out); }, expected);
    };
    EXPECT_EQ(master(component, E_FAIL), "");
    EXPECT_EQ(isForeign(component), 0) << "no file shows it";
    EXPECT_EQ(reports(), Texts()) << "products without a shape are nothing to report";
    component.masterShape("/w/c.CATPart");
    EXPECT_EQ(isForeign(component), 0);
    component.masterShape("/w/c.cgr").shape("low", "/w/low.cgr").shape("high", "/w/high.cgr");
    EXPECT_EQ(isForeign(component), 1);
    EXPECT_EQ(master(root.at({"g.1", "c.1"}), S_OK), "/w/c.cgr");
    EXPECT_EQ(shape(component, "high", S_OK), "/w/high.cgr");
    EXPECT_EQ(shape(component, "", S_OK), "/w/low.cgr");
    CATUnicodeString both("high");
    EXPECT_EQ(VornToolsCommon::getShapePathName(component.get(), both, both), S_OK);
    EXPECT_STREQ(both.ConvertToChar(), "/w/high.cgr");
    EXPECT_EQ(reports(), Texts());

    EXPECT_EQ(shape(component, "none", E_FAIL), "");
    EXPECT_EQ(shape(root, "", E_FAIL), "");
    EXPECT_EQ(shape(embedded::Product(), "low", E_FAIL), "");
    EXPECT_EQ(master(embedded::Product(), E_FAIL), "");
    EXPECT_EQ(isForeign(embedded::Product(), E_FAIL), 0);
    EXPECT_EQ(answer([](auto& result) { return VornToolsCommon::isAForeignFile("", result); }, E_FAIL), 0);
    EXPECT_EQ(
        reports(),
        Texts({kCommon + "getShapePathName 9004 GetShapePathName",
               kCommon + "getShapePathName 9004 GetDefaultShapeName", kCommon + "getShapePathName 9001 ipi_product",
               kCommon + "getMasterShapeRepresentationPathName 9001 ipi_product",
               kCommon + "isAForeignFile 9001 ipi_product", kCommon + "isAForeignFile 9001 i_file_name"}));
    for (const char* const method : {"isAForeignFile", "getMasterShapeRepresentationPathName", "getShapePathName"}) {
        EXPECT_TRUE(failAt("QueryInterface(CATIAProduct)", 1, [&] {
            const std::string asked = method;
            if (asked == "isAForeignFile")
                EXPECT_EQ(isForeign(component, E_FAIL), 0);
            else
                EXPECT_EQ(asked == "getShapePathName" ? shape(component, "low", E_FAIL) : master(component, E_FAIL),
                          "");
        }));
        EXPECT_EQ(reports(), Texts{kCommon + method + " 9002 pi_automation_product"});
    }
    EXPECT_EQ(answer([](auto& result) { return VornToolsCommon::isAForeignFile("a.CATPart", result); }), 0);
    EXPECT_EQ(answer([](auto& result) { return VornToolsCommon::isAForeignFile("a.model", result); }), 1);
}

TEST_F(ProductStructureTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    component.masterShape("/w/c.cgr").shape("low", "/w/low.cgr");
    const auto sweepQuestion = [](const char* name, auto question) {
        sweepFailures({kCommon + name,
                       [=] {
                           unsigned char result = 7;
                           const HRESULT code = question(result);
                           return SweepOutcome{code, result == 0, result};
                       },
                       {},
                       {},
                       {0}});
    };
    const auto sweepText = [](const char* name, auto question) {
        sweepFailures({kCommon + name, [=] {
                           CATUnicodeString text("before");
                           const HRESULT code = question(text);
                           return outcomeOf(code, text);
                       }});
    };
    const auto sweepProduct = [](const char* name, auto question) {
        sweepFailures({kCommon + name, [=] {
                           CATIProduct* product = nullptr;
                           const HRESULT code = question(product);
                           const SweepOutcome outcome = outcomeOf(code, product);
                           if (product) product->Release();
                           return outcome;
                       }});
    };
    CATIProduct* const p = occurrence.get();
    CATIProduct* const c = component.get();
    sweepProduct("getParent", [=](auto& out) { return VornToolsCommon::getParent(p, out); });
    sweepProduct("getInstanceInFirstProductParent",
                 [=](auto& out) { return VornToolsCommon::getInstanceInFirstProductParent(p, out); });
    for (CATIProduct* const asked : {c, p}) {
        sweepQuestion("isComponent", [=](auto& out) { return VornToolsCommon::isComponent(asked, out); });
        sweepQuestion("isAForeignFile", [=](auto& out) { return VornToolsCommon::isAForeignFile(asked, out); });
    }
    sweepText("getMasterShapeRepresentationPathName",
              [=](auto& out) { return VornToolsCommon::getMasterShapeRepresentationPathName(c, out); });
    sweepText("getShapePathName", [=](auto& out) { return VornToolsCommon::getShapePathName(c, "", out); });
    sweepText("getProductPath", [=](auto& out) { return VornToolsCommon::getProductPath(p, out); });
    sweepText("getDocumentFileName", [=](auto& out) {
        CATDocument* document = nullptr;
        return VornToolsCommon::getDocumentFileName(p, document, out);
    });
}

} // namespace
