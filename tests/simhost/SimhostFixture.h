// A fresh simhost per test, with one in-process plug-in ("the test") that API
// calls made directly from the test are attributed to.
#pragma once

#include "simhost/Simhost.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

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

    /// Adds another in-process plug-in.
    int addOther(const std::string& sig) {
        simhost::InProcessPlugin p;
        p.name = sig;
        p.signature = sig;
        return host->addPlugin(p);
    }

    std::unique_ptr<simhost::Host> host;
    int me = -1;
};

/// X-Plane 12.1's own list of datarefs ("DataRefs.txt": name, type, writable) or of commands
/// ("Commands.txt": name), from ../shared/xplane, else from the repository's copy in simhost/data/: the
/// fields of each row, name first.
inline std::vector<std::vector<std::string>> xplaneList(const std::string& file) {
    const bool commands = file == "Commands.txt";
    std::ifstream in(std::string(KALVORA_SOURCE_DIR) + "/../shared/xplane/" + file);
    const bool copy = !in;
    if (copy)
        in.open(std::string(KALVORA_SOURCE_DIR) + "/simhost/data/" +
                (commands ? "commands.tsv" : "datarefs.tsv"));
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#' || (!commands && line.find('\t') == std::string::npos)) continue;
        std::vector<std::string> fields;
        std::istringstream s(line);
        for (std::string f; std::getline(s, f, '\t');)
            fields.push_back(f);
        if (commands && !copy) fields = {line.substr(0, line.find(' '))};
        rows.push_back(fields);
    }
    return rows;
}
