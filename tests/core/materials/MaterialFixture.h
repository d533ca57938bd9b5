#pragma once
// A session with two figures and an actor row for the material page's tests.
#include "core/materials/MaterialPageState.h"
#include "support/SessionFixture.h"

namespace gelvane::test {

// A material with every property enabled and distinct values.
inline Material FullMaterial(const std::string &name, int16_t shade) {
    Material m;
    m.Name = name;
    m.KdColor = {shade, 0, 0};
    m.KsColor = {0, shade, 0};
    m.KaColor = {0, 0, shade};
    m.NsExponent = 40;
    m.tMin = 10;
    m.tExpo = 0.5f;
    m.TextureColor = "80";
    m.bumpStrength = "-20";
    m.textureMap = m.bumpMap = m.reflectionMap = m.transparencyMap = "NO_MAP";
    for (int p = 0; p < kPropertyCount; ++p)
        PropertyFlag(m, p) = true;
    return m;
}

// Two figures ("figure" with Skin, Eyes, Lips; "hat" with Band) and the row "actor hip",
// the first figure chosen as an open leaves it.
struct MaterialSession : TestSession {
    MaterialSession() {
        settings.PoserFolder = "/poser";
        settings.MainThumb = false;
        session.Figures = {{"figure", {FullMaterial("Skin", 10), FullMaterial("Eyes", 20), FullMaterial("Lips", 30)}},
                           {"hat", {FullMaterial("Band", 40)}}};
        session.cmbFigures = {"figure", "hat", "actor hip"};
        session.View.EnableMaterialControls();
        cmbFigures_Click(session, 0); // as an open leaves it
        session.FileModified = false;
    }

    Material &material(int row, int figure = 0) {
        return session.Figures[static_cast<size_t>(figure)].Materials[static_cast<size_t>(row)];
    }
    MaterialPageState &page() { return MaterialPageOf(session); }
    const std::string &box(int index) const { return session.View.TXT[static_cast<size_t>(index)]; }
};

struct MaterialFixture : ::testing::Test, MaterialSession {};

} // namespace gelvane::test
