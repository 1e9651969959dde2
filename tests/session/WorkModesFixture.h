#ifndef TESTS_SESSION_WORK_MODES_FIXTURE_H
#define TESTS_SESSION_WORK_MODES_FIXTURE_H

#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "VornToolsWorkModeServices.h"

#include "embedded/WorkModes.h"

/** An assembly with one part, the cache activated. */
class WorkModesTest : public PlatformTest {
protected:
    using Modes = VornToolsWorkModeServices;
    using WorkMode = embedded::WorkMode;

    void SetUp() override {
        PlatformTest::SetUp();
        Modes::setCatiaCacheActivated(1);
        bolt = session().product("/w/Root.CATProduct").root().add(partDocument("Bolt"), "Bolt.1");
        clearJournal();
    }
    void TearDown() override {
        Modes::setCatiaCacheActivated(0);
        PlatformTest::TearDown();
    }
    embedded::Document partDocument(const std::string& name) {
        embedded::Document document = session().part("/w/" + name + ".CATPart");
        document.root().masterShape("/w/" + name + ".CATPart").shape("Default " + name, "/w/" + name + ".CATPart");
        return document;
    }
    embedded::Product bolt;
};

#endif
