#pragma once
// A session for the figure and channel tests: fixtures of tests/data/figures dropped
// on it, the channel question counted, the figure choice scripted.
#include "core/app/OpenCommands.h"
#include "support/SessionFixture.h"

#include <algorithm>

namespace gelvane::test {

class FigureTestSession : public SessionFixture {
protected:
    // The map reference check marks an open as modified; these tests watch the channel load alone.
    FigureTestSession() { settings.AutoCorrect = false; }

    // Copies a fixture into the home and makes it the waiting path of a dropped file,
    // so that an open shows no dialog.
    std::string Dropped(std::string_view name) {
        const std::string path = home.write(name, ReadTestData("figures/" + std::string(name)));
        session.CommandLineOpen = true;
        session.DialogFileName = path;
        return path;
    }
    int Questions() const { return static_cast<int>(std::ranges::count(Texts(), kLoadChannelsQuestion)); }
    FigureChooser Chooser(std::optional<int> answer) {
        return [this, answer](Session &, const FigureList &list) {
            ++chooserCalls;
            offered = list.FigureNames;
            return answer;
        };
    }

    int chooserCalls = 0;
    Strings offered; // the names the last choice showed
};

} // namespace gelvane::test
