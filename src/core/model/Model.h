#pragma once
// The records of one loaded Poser file. Values are kept as the window shows them
// (colours 0..255, strengths in percent, optional numbers as file value + 1).
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

struct Rgb {
    int16_t Red = 0;
    int16_t Green = 0;
    int16_t Blue = 0;
    bool operator==(const Rgb &) const = default;
};

struct Material {
    std::string Name;
    Rgb KdColor, KsColor, KaColor, ReflectionColor;
    int16_t NsExponent = 0;
    int16_t tMin = 0;
    int16_t tMax = 0;
    float tExpo = 0.0f;
    std::string textureMap, bumpMap, reflectionMap, transparencyMap;
    std::string TextureColor, bumpStrength, reflectionStrength;
    bool ksIgnoreTexture = false;
    bool reflectThruLights = false;
    bool reflectThruKd = false;
    bool KdColorEnabled = false;
    bool KsColorEnabled = false;
    bool KaColorEnabled = false;
    bool ReflectionColorEnabled = false;
    bool NsExponentEnabled = false;
    bool tMinEnabled = false;
    bool tMaxEnabled = false;
    bool tExpoEnabled = false;
    bool textureMapEnabled = false;
    bool bumpMapEnabled = false;
    bool reflectionMapEnabled = false;
    bool transparencyMapEnabled = false;
    bool TextureColorEnabled = false;
    bool bumpStrengthEnabled = false;
    bool reflectionStrengthEnabled = false;
    bool ksIgnoreTextureEnabled = false;
    bool reflectThruLightsEnabled = false;
    bool reflectThruKdEnabled = false;
    bool Omit = false;
    bool operator==(const Material &) const = default;
};

// One owner of materials: one row of the figure/object list.
struct Figure {
    std::string Name;
    std::vector<Material> Materials{1};
    bool operator==(const Figure &) const = default;
};

struct Channel {
    std::string Name;
    std::string DisplayName;
    std::string Type;
    double Value = 0.0;
    int16_t Hidden = 0;
    bool NameEnabled = false;
    bool HiddenEnabled = false;
    bool ValueEnabled = false;
    bool operator==(const Channel &) const = default;
};

struct Actor {
    std::string Name;
    std::string DisplayName;
    std::vector<Channel> Channels{1};
    int16_t OnOff = 0;
    int16_t Hidden = 0;
    int16_t Locked = 0;
    std::string StorageOffset;
    int16_t GeomResource = 0;
    int16_t DepthMapSize = 0;
    std::string DepthCamera;
    int16_t DoShadow = 0;
    int16_t LightOn = 0;
    std::string Port;
    std::string CameraModel;
    int16_t LightType = 0;
    std::string ObjFileGeom;
    std::string Type;
    bool NameEnabled = false;
    bool OnOffEnabled = false;
    bool HiddenEnabled = false;
    bool LockedEnabled = false;
    bool DoShadowEnabled = false;
    bool DepthMapSizeEnabled = false;
    bool LightOnEnabled = false;
    bool operator==(const Actor &) const = default;
};

// A list that "holds nothing" keeps one element with an empty Name.
template <class T> bool IsEmptyList(const std::vector<T> &list) {
    return list.empty() || list[0].Name.empty();
}

// Fills element 0 when the list holds nothing, otherwise grows it; returns the new element.
template <class T> T &AppendElement(std::vector<T> &list, T element = T{}) {
    if (IsEmptyList(list)) {
        if (list.empty())
            list.emplace_back();
        list[0] = std::move(element);
        return list[0];
    }
    list.push_back(std::move(element));
    return list.back();
}

template <class T> void ResetList(std::vector<T> &list) {
    list.assign(1, T{});
}

// True when an actor of exactly this name is loaded.
inline bool ActorExists(const std::vector<Actor> &actors, std::string_view name) {
    return std::any_of(actors.begin(), actors.end(), [name](const Actor &a) { return a.Name == name; });
}

enum PoserFileKind : int16_t {
    KindCR2 = 0,
    KindPZ2 = 1,
    KindPP2 = 2,
    KindHR2 = 3,
    KindCM2 = 4,
    KindFC2 = 5,
    KindHD2 = 6,
    KindLT2 = 7,
};

inline bool IsFigureLikeKind(int kind) {
    return kind == KindCR2 || kind == KindPP2 || kind == KindHR2;
}

} // namespace gelvane
