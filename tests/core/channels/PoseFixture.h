#pragma once
// A session whose actors stand in the pose page as a load leaves them.
#include "../writer/WriterModels.h"

#include "core/channels/PosePageState.h"
#include "support/SessionFixture.h"

#include <gtest/gtest.h>

#include <vector>

namespace gelvane::test {

struct PoseFixture : SessionFixture {
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
    Strings ActorNames() const { return NamesOf(session.Actors); }
    Strings ChannelNames(size_t actor) const { return NamesOf(session.Actors.at(actor).Channels); }
};

} // namespace gelvane::test
