#include "CATIParmPublisher.h"
#include "CATSessionServices.h"
#include "VornCache.h"
#include "embedded/Parameters.h"
#include "embedded/Records.h"
#include "embedded/SessionFile.h"
#include "embedded/Windows.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr int kUsable = 7;

/** Runs when everything of static storage that came into being after it is gone. */
void useTheServices() {
    auto& session = embedded::Session::current();
    const auto part = embedded::parametersOf(session.part("/w/Late.CATPart"), "MechanicalPart", "Late");
    const CATIParmPublisher_var publisher(static_cast<CATBaseUnknown*>(part.get()));
    std::string text;
    const bool works = embedded::Journal::get().contains("> VornCache::release") && publisher != NULL_var &&
                       embedded::sessionText(text).ok && embedded::loadSessionText("s", text).ok &&
                       ListDocuments()->Size() == 2;
    std::_Exit(works ? kUsable : EXIT_FAILURE);
}

/** A host may keep what it likes to the end of the process: a test in a process of its own, since others have used the
 * platform before. */
TEST(LifetimeDeathTest, ThePlatformsServicesOutliveObjectsOfStaticStorage) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::atexit(useTheServices);
            static VornCache cache;
            for (int i = 0; i < 100; ++i) cache.addDocument("/w/Bolt.CATPart", nullptr);
            embedded::Session::current().part("/w/Bolt.CATPart");
            std::exit(EXIT_SUCCESS);
        },
        testing::ExitedWithCode(kUsable), "");
}

} // namespace
