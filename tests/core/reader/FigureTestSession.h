#pragma once
// A session on a temporary home with scripted answers, for the figure and channel tests.
#include "core/app/OpenCommands.h"
#include "core/model/Session.h"
#include "core/model/Settings.h"
#include "support/ScriptedInteraction.h"
#include "support/TestHome.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace gelvane::test {

class FigureTestSession : public ::testing::Test {
protected:
    TestHome home;
    // The map reference check marks an open as modified; these tests watch the channel load alone.
    Settings settings = [] {
        Settings s;
        s.AutoCorrect = false;
        return s;
    }();
    ScriptedInteraction ui;
    Session session{settings, ui};
    int chooserCalls = 0;
    std::vector<std::string> offered; // the names the last choice showed

    // Copies a fixture of tests/data/figures into the home and makes it the waiting
    // path of a dropped file, so that an open shows no dialog.
    std::string Dropped(std::string_view name) {
        const std::string path = home.write(name, ReadTestData("figures/" + std::string(name)));
        session.CommandLineOpen = true;
        session.DialogFileName = path;
        return path;
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto &m : ui.messages())
            texts.push_back(m.Text);
        return texts;
    }
    int Questions() const { return static_cast<int>(std::ranges::count(Texts(), kLoadChannelsQuestion)); }
    std::vector<std::string> MaterialNames(size_t figure = 0) const {
        std::vector<std::string> names;
        for (const auto &m : session.Figures.at(figure).Materials)
            names.push_back(m.Name);
        return names;
    }
    FigureChooser Chooser(std::optional<int> answer) {
        return [this, answer](Session &, const FigureList &list) {
            ++chooserCalls;
            offered = list.FigureNames;
            return answer;
        };
    }
};

} // namespace gelvane::test
