// What the companion services keep (journal, reports, messages, typed maps), and the books on references.
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "EMHManager.h"
#include "ENVManager.h"
#include "JNLManager.h"
#include "PROCManager.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "TYPMapIntPVoid.h"
#include "TYPVectorCATUnicodeString.h"
#include "UTILMatrix.h"
#include "UTILThreads.h"
#include "UTILTime.h"
#include "VornEnvConfig.h"
#include "VornIHMMessageDialog.h"
#include "tests/support/Fixture.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace {

class RecordsTest : public PlatformTest {};

TEST_F(RecordsTest, TheJournalKeepsLinesOfAnyLengthAndWatchesItsFrames) {
    JNLManager* const journal = JNLManager::getInstance();
    embedded::Journal& record = embedded::Journal::get();
    const std::string longText(100000, 'j');
    journal->writeFunctionBegin("A::", "");
    journal->writeMsg("%s is %d", "x", 7);
    journal->writeMsg("%s|", longText.c_str());
    journal->writeMsg("%s", std::string(255, 'k').c_str());
    journal->writeMsg("");
    journal->writeFunctionEnd("A::", -1);
    journal->writeFunctionBegin("B::", "");
    journal->writeFunctionEnd("B::", 0);
    EXPECT_EQ(record.lines(),
              Texts({"> A::", "x is 7", longText + "|", std::string(255, 'k'), "", "< A::", "> B::", "< B:: 0"}));
    EXPECT_EQ(messages(), Texts({"x is 7", longText + "|", std::string(255, 'k'), ""}));
    EXPECT_TRUE(record.contains("x is 7"));
    EXPECT_FALSE(record.contains("x is"));
    EXPECT_EQ(record.line(8), "");
    journal->writeFunctionBegin("A::", "");
    journal->writeFunctionBegin("B::", "");
    EXPECT_EQ(record.open(), 2);
    journal->writeFunctionEnd("A::", -1);
    EXPECT_EQ(record.mismatches(), 1);
    journal->writeFunctionEnd("A::", -1);
    journal->writeFunctionEnd("C::", -1);
    EXPECT_EQ(record.open(), 0);
    EXPECT_EQ(record.mismatches(), 2);
    EXPECT_EQ(record.repeats(), 0);
    journal->writeFunctionBegin("A::", "");
    journal->writeFunctionBegin("A::b", "");
    journal->writeFunctionEnd("A::b", 0);
    journal->writeFunctionEnd("A::b", -1);
    EXPECT_EQ(record.open(), 1) << "a repeated closing line closes nothing";
    EXPECT_EQ(record.repeats(), 1);
    journal->writeFunctionEnd("A::", -1);
    EXPECT_EQ(record.mismatches(), 2);
    clearJournal();
    EXPECT_EQ(record.size(), 0U);
}

TEST_F(RecordsTest, ReportsAndMessagesAreKeptUntilTaken) {
    EMHManager* const list = EMHManager::getInstance();
    list->writeMsg("A::f", 9003, "g");
    list->writeMsg("A::h", 9003, "");
    EXPECT_EQ(reports(), Texts({"A::f 9003 g", "A::h 9003 "}));
    EXPECT_EQ(reports(), Texts());
    const auto* const last = static_cast<embedded::ErrorReport*>(list->get_error_list()->find(9003, "ErrorReport"));
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->function, "A::h");
    VornIHMMessageDialog::addDynamicLocalizedMessage(0, 11208, 11125);
    VornIHMMessageDialog::addDynamicUnlocalizedMessage(11208, "NAME", 0);
    EXPECT_EQ(embedded::Messages::get().take(), Texts({"localized 0 11208 11125", "unlocalized 11208 0 NAME"}));
}

TEST_F(RecordsTest, InlineAccessorsReadTheFieldsThatTheCompanionsLayOut) {
    double row[] = {0.5, 1.5};
    double* table[] = {row, row, row};
    const struct {
        int rows;
        int columns;
        double** table;
    } fields = {3, 2, table};
    UTILMatrix matrix(0, 0, nullptr);
    static_assert(sizeof matrix == sizeof fields, "nothing else is in it");
    std::memcpy(static_cast<void*>(&matrix), &fields, sizeof matrix);
    EXPECT_EQ(matrix.get_nblig(), 3);
    EXPECT_EQ(matrix.get_nbcol(), 2);
    EXPECT_EQ(matrix.get_pp_mat(), table);

    EMHManager* const errors = EMHManager::getInstance();
    TYPMapIntPVoid* first = nullptr;
    std::memcpy(&first, static_cast<const void*>(errors), sizeof first);
    EXPECT_EQ(errors->get_error_list(), first);

    UTILTime time, otherTime;
    EXPECT_EQ(&(time = otherTime), &time);
    EXPECT_EQ(&(time = std::move(otherTime)), &time);
    UTILThreads threads, otherThreads;
    EXPECT_EQ(&(threads = otherThreads), &threads);
    EXPECT_EQ(&(threads = std::move(otherThreads)), &threads);
}

TEST_F(RecordsTest, ManagersAnswerTheEnvironmentUnlessMissingOrFailing) {
    environment().filesDirectory = "/files/";
    environment().configurationDirectory = "/conf";
    environment().separator = "/";
    environment().commandImport = true;
    environment().releaseCacheDirectories = {"/a/", "/b/"};
    EXPECT_STREQ(ENVManager::getInstance()->getFilesDirectory().ConvertToChar(), "/files/");
    EXPECT_STREQ(VornEnvConfig::getInstance()->getEnvFullFilename("x").ConvertToChar(), "/conf/x");
    EXPECT_EQ(PROCManager::getInstance()->isCommandImport(), 1);
    CATListValCATUnicodeString directories;
    EXPECT_EQ(ENVManager::getInstance()->getReleaseCacheDirectories(directories), S_OK);
    EXPECT_EQ(directories.Size(), 2);
    embedded::Failures::get().arm(2, true, embedded::FaultFlavour::code);
    ENVManager* const manager = ENVManager::getInstance();
    EXPECT_TRUE(manager->getFilesDirectory().IsNull());
    EXPECT_EQ(manager->getReleaseCacheDirectories(directories), E_FAIL);
    EXPECT_EQ(directories.Size(), 0);
    EXPECT_EQ(PROCManager::getInstance(), nullptr);
    EXPECT_EQ(embedded::Failures::get().firedAt(), "ENVManager::getFilesDirectory");
    EXPECT_EQ(embedded::Failures::get().calls(), 4);
    embedded::Failures::get().disarm();
    environment().missingManagers = {"ENVManager", "VornEnvConfig"};
    EXPECT_EQ(ENVManager::getInstance(), nullptr);
    EXPECT_EQ(VornEnvConfig::getInstance(), nullptr);
    EXPECT_NE(PROCManager::getInstance(), nullptr);
    EXPECT_NE(JNLManager::getInstance(), nullptr);
    environment().missingManagers = {"JNLManager", "EMHManager"};
    EXPECT_EQ(JNLManager::getInstance(), nullptr);
    EXPECT_EQ(EMHManager::getInstance(), nullptr);
    environment().missingManagers.clear();
    embedded::Journal::get().setWanted(false);
    EXPECT_EQ(JNLManager::getInstance(), nullptr);
    embedded::Journal::get().setWanted(true);
    EXPECT_NE(JNLManager::getInstance(), nullptr);
}

TEST_F(RecordsTest, MapsKeepTheirEntriesInOrderThroughRenames) {
    constexpr int count = 1000;
    static int values[count];
    TYPMapCATUnicodeStringPVoid map;
    const auto key = [](int number) { return CATUnicodeString(("document " + std::to_string(number)).c_str()); };
    for (int i = 0; i < count; ++i) map.insert(key(i), &values[i], i % 2 ? "int" : "CATDocument");
    for (int i = 0; i < count; i += 3) {
        EXPECT_EQ(map.erase(key(i)), 1);
        EXPECT_EQ(map.erase(key(i)), 0);
        map.insert(key(count + i), &values[i], "int");
    }
    ASSERT_EQ(map.size(), count);
    std::vector<int> order;
    for (int i = 0; i < count; ++i)
        if (i % 3 != 0) order.push_back(i);
    for (int i = 0; i < count; i += 3) order.push_back(count + i);
    for (int i = 0; i < count; ++i) {
        const int number = order[static_cast<std::size_t>(i)];
        EXPECT_TRUE(map.keyAt(i) == key(number)) << i;
        EXPECT_EQ(map.valueAt(i), &values[number % count]);
        EXPECT_EQ(map.find(key(number), ""), &values[number % count]);
    }
    EXPECT_EQ(map.find(key(0), nullptr), nullptr);
    EXPECT_EQ(map.contains(key(3)), 0);
    while (map.size() > 1) EXPECT_EQ(map.erase(CATUnicodeString(map.keyAt(map.size() % 2))), 1);
    map.insert("k", &values[0], "int");
    map.insert("k", &values[1], "CATDocument");
    EXPECT_EQ(map.size(), 2);
    EXPECT_EQ(map.find("k", "int"), nullptr);
    EXPECT_EQ(map.find("k", "CATDocument"), &values[1]);
    EXPECT_EQ(map.find("K", ""), nullptr);
    EXPECT_STREQ(map.classNameAt(1), "CATDocument");
    EXPECT_EQ(map.valueAt(2), nullptr);
    EXPECT_EQ(map.valueAt(-1), nullptr);
    EXPECT_TRUE(map.keyAt(2).IsNull());
    TYPVectorCATUnicodeString texts;
    texts.push_back("a");
    EXPECT_TRUE(texts.at(0) == "a");
    EXPECT_TRUE(texts.at(1).IsNull() && texts.at(-1).IsNull());
}

TEST_F(RecordsTest, BreachesAreNamedOnce) {
    CATListValCATUnicodeString list;
    list.Append("a");
    EXPECT_TRUE(list[2].IsNull());
    EXPECT_THROW(CATBaseUnknown_var()->IsA(), std::logic_error);
    auto root = session().product("/w/Root.CATProduct").root();
    CATIProduct* const borrowed = root.get();
    borrowed->AddRef();
    EXPECT_EQ(embedded::Accounting::get().live().references, 1);
    EXPECT_EQ(embedded::Accounting::get().holders().size(), 1U);
    EXPECT_EQ(borrowed->Release(), 0U);
    borrowed->Release();
    EXPECT_EQ(embedded::Accounting::get().live().references, 0);
    const Texts breaches = embedded::Accounting::get().takeBreaches();
    ASSERT_EQ(breaches.size(), 3U);
    EXPECT_EQ(breaches[0], "position 2 in a list of 1");
    EXPECT_EQ(breaches[1], "use of a null handle");
    EXPECT_EQ(breaches[2].find("double release of "), 0U);
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(), Texts());
}

TEST_F(RecordsTest, AnObjectHasOneIdentity) {
    auto root = session().product("/w/Root.CATProduct").root();
    root.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
    CATListValCATBaseUnknown_var* const children = root.get()->GetChildren();
    ASSERT_NE(children, nullptr);
    const CATIProduct_var bolt((*children)[1]);
    delete children;
    CATIProduct* const child = bolt;
    ASSERT_NE(child, nullptr);
    void* unknown = nullptr;
    EXPECT_EQ(child->QueryInterface(IID_CATBaseUnknown, &unknown), S_OK);
    EXPECT_EQ(static_cast<CATBaseUnknown*>(unknown), child->GetImpl());
    EXPECT_EQ(child->IsEqual(static_cast<CATBaseUnknown*>(unknown)), 1);
    EXPECT_EQ(child->IsEqual(root.get()), 0);
    static_cast<CATBaseUnknown*>(unknown)->Release();
    for (const auto flavour :
         {embedded::FaultFlavour::code, embedded::FaultFlavour::codeWithOutput, embedded::FaultFlavour::nullOutput}) {
        embedded::Failures::get().arm(1, false, flavour);
        const long before = embedded::Accounting::get().live().references;
        const HRESULT result = child->QueryInterface(IID_CATIProduct, &unknown);
        EXPECT_EQ(SUCCEEDED(result), flavour == embedded::FaultFlavour::nullOutput);
        EXPECT_EQ(unknown != nullptr, flavour == embedded::FaultFlavour::codeWithOutput);
        EXPECT_EQ(embedded::Accounting::get().live().references, before);
        EXPECT_EQ(embedded::Failures::get().firedAt(), "QueryInterface(CATIProduct)");
        embedded::Failures::get().disarm();
    }
}

} // namespace
