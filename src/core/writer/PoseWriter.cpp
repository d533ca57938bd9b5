#include "core/writer/PoseWriter.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/OutputFile.h"
#include "core/writer/MaterialBlockWriter.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace gelvane {
namespace {

bool IsLightOrCamera(const Actor &actor) {
    return actor.Type == "light" || actor.Type == "camera";
}

// Numbers that a file may lack are stored as value + 1.
std::string StoredValue(int16_t stored) {
    return NumberText(stored - 1);
}

void WriteFigureBlock(Session &session, int index, LineWriter &out) {
    const Figure &figure = session.Figures[static_cast<size_t>(index)];
    out.Line(1, "{");
    out.Line(1, "customMaterial ", NumberText(static_cast<long long>(figure.Materials.size())));
    WriteMaterialBlocks(session, index, out);
    out.Line(1, "}");
}

// The material blocks: the entries from the first actor entry on that stand for no actor
// (or all of them when channels aren't saved) get a block of their own.
void WriteMaterialOnlyBlocks(Session &session, int firstActorEntry, LineWriter &out) {
    std::unordered_set<std::string_view> actorNames;
    for (const Actor &actor : session.Actors)
        actorNames.insert(actor.Name);
    for (size_t i = static_cast<size_t>(firstActorEntry); i < session.Figures.size(); ++i) {
        std::string &name = session.Figures[i].Name;
        if (!session.Options.chkChannels && actorNames.count(name))
            continue;
        // Body parts hold the bare actor name; props, lights and cameras their keyword too.
        if (!StartsWith(name, "prop ") && !StartsWith(name, "light ") && !StartsWith(name, "camera ")) {
            out.Line(0, "actor ", name);
        } else {
            if (LCase(name).find("prop figurehair") != std::string::npos)
                name = "prop figureHair";
            out.Line(0, name);
        }
        WriteFigureBlock(session, static_cast<int>(i), out);
    }
}

void WriteChannels(const Actor &actor, LineWriter &out) {
    out.Line(1, "channels");
    out.Line(2, "{");
    for (const Channel &channel : actor.Channels) {
        out.Line(2, channel.Type, " ", channel.Name);
        out.Line(3, "{");
        if (channel.NameEnabled && !channel.DisplayName.empty())
            out.Line(3, "name ", channel.DisplayName);
        // A channel's hidden value keeps the leading blank of a signed number: "hidden  1".
        if (channel.HiddenEnabled && channel.Hidden >= 1)
            out.Line(3, "hidden ", SignedText(channel.Hidden - 1));
        if (channel.ValueEnabled) {
            out.Line(3, "keys");
            out.Line(4, "{");
            out.Line(4, "k  0  ", NumberText(channel.Value));
            out.Line(4, "}");
        }
        out.Line(3, "}");
    }
    out.Line(2, "}");
}

using FigureIndex = std::unordered_map<std::string_view, std::vector<int>>;

void WriteActor(Session &session, Actor &actor, const FigureIndex &figuresByName, LineWriter &out) {
    if (LCase(actor.Name) == "figurehair")
        actor.Name = "figureHair";
    const bool lightOrCamera = IsLightOrCamera(actor);
    out.Line(0, actor.Type, " ", actor.Name);
    out.Line(1, "{");
    if (lightOrCamera && !actor.StorageOffset.empty())
        out.Line(1, "storageOffset ", actor.StorageOffset);
    if (lightOrCamera && !actor.ObjFileGeom.empty())
        out.Line(1, "objFileGeom ", actor.ObjFileGeom);
    if (lightOrCamera && actor.GeomResource > 0)
        out.Line(1, "geomResource ", StoredValue(actor.GeomResource));
    if (lightOrCamera && actor.LightType > 0)
        out.Line(1, "lightType ", StoredValue(actor.LightType));
    if (actor.NameEnabled && !actor.DisplayName.empty())
        out.Line(1, "name ", actor.DisplayName);
    if (actor.OnOffEnabled && actor.OnOff == 2)
        out.Line(1, "on");
    else if (actor.OnOffEnabled && actor.OnOff == 1)
        out.Line(1, "off");
    if (actor.HiddenEnabled && actor.Hidden > 0)
        out.Line(1, "hidden ", StoredValue(actor.Hidden));
    if (!IsEmptyList(actor.Channels))
        WriteChannels(actor, out);
    if (auto found = figuresByName.find(actor.Name); found != figuresByName.end()) {
        for (int index : found->second) {
            const Figure &figure = session.Figures[static_cast<size_t>(index)];
            out.Line(1, "customMaterial ", NumberText(static_cast<long long>(figure.Materials.size())));
            WriteMaterialBlocks(session, index, out);
        }
    }
    if (actor.LockedEnabled && actor.Locked > 0)
        out.Line(1, "locked ", StoredValue(actor.Locked));
    if (actor.DepthMapSizeEnabled && actor.DepthMapSize > 0)
        out.Line(1, "depthMapSize ", StoredValue(actor.DepthMapSize));
    if (lightOrCamera && !actor.DepthCamera.empty())
        out.Line(1, "depthCamera ", actor.DepthCamera);
    if (actor.DoShadowEnabled && actor.DoShadow > 0)
        out.Line(1, "doShadow ", StoredValue(actor.DoShadow));
    if (actor.LightOnEnabled && actor.LightOn > 0)
        out.Line(1, "lightOn ", StoredValue(actor.LightOn));
    if (lightOrCamera && !actor.Port.empty())
        out.Line(1, "port ", actor.Port);
    if (lightOrCamera && !actor.CameraModel.empty())
        out.Line(1, "cameraModel ", actor.CameraModel);
    out.Line(1, "}");
}

// The channel blocks: the thigh length and every actor with its channels and custom materials.
void WriteActors(Session &session, int firstActorEntry, LineWriter &out) {
    if (!session.Options.chkDisableThighLength)
        out.Line(0, "thighLength ", NumberText(NumberValue(session.Options.txtThighLength)));
    FigureIndex figuresByName;
    if (firstActorEntry >= 0)
        for (size_t i = static_cast<size_t>(firstActorEntry); i < session.Figures.size(); ++i)
            figuresByName[session.Figures[i].Name].push_back(static_cast<int>(i));
    // An actor without a name is the empty element of a load that found none: a block
    // with a blank name would not read back.
    for (Actor &actor : session.Actors)
        if (!actor.Name.empty())
            WriteActor(session, actor, figuresByName, out);
}

// The prop section: the owners in front of the first actor entry, as one closing section.
void WriteClosingProps(Session &session, int firstActorEntry, LineWriter &out) {
    const size_t end = firstActorEntry < 0 ? session.Figures.size() : static_cast<size_t>(firstActorEntry);
    for (size_t i = 0; i < end; ++i) {
        const std::string &name = session.Figures[i].Name;
        if (session.IsHairFile || LCase(Left(name, 15)) == "prop figurehair")
            out.Line(0, "prop figureHair");
        else
            out.Line(0, name);
        out.Line(1, "{");
        WriteMaterialBlocks(session, static_cast<int>(i), out);
        out.Line(1, "}");
    }
}

} // namespace

int FirstActorEntry(const Session &session) {
    for (size_t i = 0; i < session.Figures.size(); ++i) {
        if (i >= session.cmbFigures.size())
            break;
        if (StartsWith(session.cmbFigures[i], "actor "))
            return static_cast<int>(i);
    }
    return -1;
}

void WritePose(Session &session, LineWriter &out) {
    const std::string &lineEnd = out.lineEnd();
    const int firstActorEntry = FirstActorEntry(session);
    out.Line(0, "{");
    // The comment keeps its own inner line ends; each line end of ours starts a new comment line.
    if (!session.FileComment.empty())
        out.Line(0, "# ", Replace(session.FileComment, lineEnd, lineEnd + "# "));
    out.Line(0, "version");
    out.Line(1, "{");
    out.Line(1, "number ", NumberTextOfText(session.OutputVersion));
    out.Line(1, "}");
    if (firstActorEntry >= 0)
        WriteMaterialOnlyBlocks(session, firstActorEntry, out);
    if (!session.Options.chkChannels)
        WriteActors(session, firstActorEntry, out);
    if (!session.Options.chkNoMaterialData)
        WriteClosingProps(session, firstActorEntry, out);
    out.Line(0, "}");
}

void WritePoseFile(Session &session) {
    const std::string lineEnd = session.Options.LineEnd();
    if (!Trim(session.DialogFileName).empty() && Trim(session.OutputPath).empty())
        session.OutputPath = session.DialogFileName;
    OutputFile file(session.OutputPath);
    LineWriter out(lineEnd, file);
    WritePose(session, out);
    out.flush();
    file.commit();
    session.PoserFileKind = KindPZ2;
    session.FileModified = false;
}

} // namespace gelvane
