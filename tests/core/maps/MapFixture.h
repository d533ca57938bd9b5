#pragma once
// A temporary Poser folder, settings pointing at it, a scripted user and a session.
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <string>

namespace gelvane::test {

class MapFixture : public ::testing::Test {
protected:
    MapFixture() { settings.PoserFolder = home.path() + "/Poser"; }

    // Creates a file under the Poser folder and returns its full path.
    std::string poserFile(const std::string &relative, const std::string &bytes = "x") {
        return home.write("Poser/" + relative, bytes);
    }
    std::string poser() const { return settings.PoserFolder; }

    TestHome home;
    Settings settings;
    ScriptedInteraction ui;
    Session session{settings, ui};
};

} // namespace gelvane::test
