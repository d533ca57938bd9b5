#include "support/SessionFixture.h"

namespace gelvane::test {

void FillTwoFigures(Session &session) {
    const auto owner = [](const std::string &name, const Strings &materials) {
        Figure figure{name, std::vector<Material>(materials.size())};
        for (size_t i = 0; i < materials.size(); ++i)
            figure.Materials[i].Name = materials[i];
        return figure;
    };
    session.Figures = {owner("figure", {"Skin", "Eyes", "Lips"}), owner("hat", {"Band"})};
    session.cmbFigures = {"figure", "hat", "actor hip"};
    session.Actors[0].Name = "hip";
}

} // namespace gelvane::test
