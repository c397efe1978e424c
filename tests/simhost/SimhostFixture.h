// A fresh simhost per test, with one in-process plug-in ("the test") that API
// calls made directly from the test are attributed to.
#pragma once

#include "simhost/Simhost.h"

#include <gtest/gtest.h>

#include <memory>

class SimhostTest : public ::testing::Test {
protected:
    void SetUp() override { start(simhost::HostOptions{}); }
    void TearDown() override { host.reset(); }

    /// Restarts the host with other options.
    void start(const simhost::HostOptions& options) {
        host.reset();
        host = std::make_unique<simhost::Host>(options);
        simhost::InProcessPlugin p;
        p.name = "Test";
        p.signature = "test.simhost.self";
        p.description = "the test itself";
        me = host->addPlugin(p);
        host->setDirectCaller(me);
    }

    /// Adds another in-process plug-in with a receive function.
    int addOther(const std::string& sig, std::function<void(int, int, void*)> receive = nullptr) {
        simhost::InProcessPlugin p;
        p.name = sig;
        p.signature = sig;
        p.receive = std::move(receive);
        return host->addPlugin(p);
    }

    std::unique_ptr<simhost::Host> host;
    int me = -1;
};
