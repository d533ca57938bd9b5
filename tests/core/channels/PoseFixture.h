#pragma once
// A session whose actors stand in the pose page as a load leaves them.
#include "../writer/WriterModels.h"

#include "core/channels/PosePageState.h"

#include <gtest/gtest.h>

#include <vector>

namespace gelvane::test {

struct PoseFixture : ::testing::Test {
    Settings settings;
    ScriptedInteraction ui;
    Session session{settings, ui};
    PoseView &pose = session.Pose;

    void Load(std::vector<Actor> actors) {
        session.Actors = std::move(actors);
        pose.lstActors.clear();
        for (const Actor &a : session.Actors)
            pose.lstActors.push_back({a.Name, a.Type, false});
        FillDialList(session, 0);
        ShowLoadedChannelPage(pose, true);
    }
    // The rows (1-based) that are selected.
    static std::vector<int> Selected(const std::vector<ListRow> &rows) {
        std::vector<int> selected;
        for (size_t i = 0; i < rows.size(); ++i)
            if (rows[i].Selected)
                selected.push_back(static_cast<int>(i) + 1);
        return selected;
    }
    std::vector<std::string> ActorNames() const {
        std::vector<std::string> names;
        for (const Actor &a : session.Actors)
            names.push_back(a.Name);
        return names;
    }
    std::vector<std::string> ChannelNames(size_t actor) const {
        std::vector<std::string> names;
        for (const Channel &c : session.Actors.at(actor).Channels)
            names.push_back(c.Name);
        return names;
    }
};

} // namespace gelvane::test
