#pragma once
// Small models for the writer tests, built directly without a reader.
#include "support/SessionFixture.h"

#include <string>

namespace gelvane::test {

// A material "Skin" with every flag set, a texture map and the other maps "NO_MAP".
inline Material SkinMaterial(const std::string &name = "Skin") {
    Material m;
    m.Name = name;
    m.KdColor = {255, 128, 0};
    m.KaColor = {0, 0, 0};
    m.KsColor = {255, 255, 255};
    m.ReflectionColor = {255, 255, 255};
    m.TextureColor = "100";
    m.NsExponent = 51;
    m.tMin = 0;
    m.tMax = 100;
    m.tExpo = 0.6f;
    m.bumpStrength = "50";
    m.reflectionStrength = "100";
    m.textureMap = ":Runtime:textures:My Skin.jpg";
    m.bumpMap = m.reflectionMap = m.transparencyMap = "NO_MAP";
    m.KdColorEnabled = m.KsColorEnabled = m.KaColorEnabled = m.ReflectionColorEnabled = true;
    m.NsExponentEnabled = m.tMinEnabled = m.tMaxEnabled = m.tExpoEnabled = true;
    m.textureMapEnabled = m.bumpMapEnabled = m.reflectionMapEnabled = m.transparencyMapEnabled = true;
    m.TextureColorEnabled = m.bumpStrengthEnabled = m.reflectionStrengthEnabled = true;
    m.ksIgnoreTextureEnabled = m.reflectThruLightsEnabled = m.reflectThruKdEnabled = true;
    return m;
}

inline Material Named(const std::string &name) {
    Material m;
    m.Name = name;
    return m;
}

// A material with nothing but a white diffuse colour.
inline Material WhiteMaterial(const std::string &name) {
    Material m = Named(name);
    m.KdColor = {255, 255, 255};
    m.KdColorEnabled = true;
    return m;
}

inline Figure MakeFigure(const std::string &name, std::vector<Material> materials) {
    Figure f;
    f.Name = name;
    f.Materials = std::move(materials);
    return f;
}

inline Channel KeyedChannel(const std::string &type, const std::string &name, double value) {
    Channel c;
    c.Type = type;
    c.Name = name;
    c.Value = value;
    c.ValueEnabled = true;
    return c;
}

inline Actor MakeActor(const std::string &type, const std::string &name, std::vector<Channel> channels = {Channel{}}) {
    Actor a;
    a.Type = type;
    a.Name = name;
    a.Channels = std::move(channels);
    return a;
}

// A session whose output version is set, as an open leaves it.
struct WriterSession : TestSession {
    WriterSession() { session.OutputVersion = "4.01"; }
};

} // namespace gelvane::test
