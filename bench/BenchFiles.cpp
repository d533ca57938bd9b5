#include "BenchFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <unistd.h>

namespace benchfiles {
namespace {

namespace fs = std::filesystem;

// The folder of this run's inputs.
class Folder {
public:
    Folder() {
        if (const char *dir = std::getenv("GELVANE_BENCH_DIR"); dir && *dir) {
            m_path = dir;
            m_keep = true;
        } else {
            m_path = fs::temp_directory_path() / ("gelvane-benchfiles-" + std::to_string(::getpid()));
        }
        fs::create_directories(m_path);
    }
    ~Folder() {
        std::error_code ec;
        if (!m_keep)
            fs::remove_all(m_path, ec);
    }
    std::string Path(const std::string &name) const { return (m_path / name).string(); }

private:
    fs::path m_path;
    bool m_keep = false;
};

std::string Crlf(const std::string &lf) {
    std::string out;
    out.reserve(lf.size() * 21 / 20);
    for (char c : lf) {
        if (c == '\n')
            out += '\r';
        out += c;
    }
    return out;
}

std::string Material(int n) {
    const std::string i = std::to_string(n);
    return "\t\tmaterial Material_" + i +
           "\n\t\t\t{\n\t\t\tKdColor 1 0.5 0.25 1\n\t\t\tKaColor 0 0 0 1\n\t\t\tKsColor 1 1 1 1\n"
           "\t\t\tTextureColor 1 1 1 1\n\t\t\tNsExponent 50\n\t\t\ttMin 0\n\t\t\ttMax 1\n\t\t\ttExpo 0.6\n"
           "\t\t\tbumpStrength 0.5\n\t\t\tksIgnoreTexture 0\n\t\t\treflectThruLights 0\n\t\t\treflectThruKd 0\n"
           "\t\t\ttextureMap \":Runtime:Textures:Bench:skin_" +
           i +
           ".jpg\"\n\t\t\t\t0 0\n\t\t\tbumpMap NO_MAP\n\t\t\treflectionMap NO_MAP\n\t\t\ttransparencyMap NO_MAP\n"
           "\t\t\tReflectionColor 1 1 1 1\n\t\t\treflectionStrength 1\n\t\t\t}\n";
}

const std::string kPoseHead = "{\nversion\n\t{\n\tnumber 4.01\n\t}\n";
constexpr size_t kTenMegabytes = 10'000'000;

// `unit` repeated until the text reaches `size`.
std::string Repeated(const std::string &unit, size_t size) {
    std::string text;
    text.reserve(size + unit.size());
    while (text.size() < size)
        text += unit;
    return text;
}

// Numbered lines: `prefix` + number + `suffix`, until the text reaches `size`.
std::string Numbered(const std::string &prefix, const std::string &suffix, size_t size) {
    std::string text;
    text.reserve(size + 64);
    for (int n = 0; text.size() < size; ++n)
        text += prefix + std::to_string(n) + suffix;
    return text;
}

} // namespace

std::string File(const std::string &name, const std::function<std::string()> &make) {
    static Folder folder;
    static std::map<std::string, std::string> written;
    auto &path = written[name];
    if (path.empty()) {
        path = folder.Path(name);
        std::ofstream(path, std::ios::binary) << make();
    }
    return path;
}

std::string PoseWithProps(int props, int materials) {
    std::string text = kPoseHead;
    for (int p = 0; p < props; ++p) {
        text += "prop owner_" + std::to_string(p) + "\n\t{\n";
        for (int m = 0; m < materials; ++m)
            text += Material(p * materials + m);
        text += "\t}\n";
    }
    return Crlf(text + "}\n");
}

std::string ChannelSection(int channels, int perActor) {
    std::string text = "thighLength 0.5\n";
    const int actors = (channels + perActor - 1) / perActor;
    for (int a = 0; a < actors; ++a) {
        text += "actor part_" + std::to_string(a) + "\n{\nname Part " + std::to_string(a) +
                "\non\nhidden 0\nbend 1\nparent BODY\nchannels\n{\n";
        for (int c = 0; c < perActor && a * perActor + c < channels; ++c) {
            const std::string name = "dial_" + std::to_string(100000 + c);
            text += (c % 3 == 0   ? "targetGeom "
                     : c % 3 == 1 ? "valueParm "
                                  : "rotateY ") +
                    name + "\n{\nname " + name +
                    "\ninitValue 0\nhidden 0\nforceLimits 0\nmin -100000\nmax 100000\ntrackingScale 0.004\nkeys\n{\n"
                    "static  0\nk  0  " +
                    std::to_string(c % 7) + "\n}\ninterpStyleLocked 0\n}\n";
        }
        text += "}\nendPoint 0 0 0\norigin 0 0 0\n";
        if (a % 50 == 0)
            text += "customMaterial 2\nmaterial Skin\n{\nKdColor 1 1 1 1\ntextureMap NO_MAP\n}\n"
                    "material Nails\n{\nKdColor 1 0 0 1\n}\n";
        else
            text += "customMaterial 0\n";
        text += "locked 0\n}\n";
    }
    return text;
}

std::string Character(size_t megabytes) {
    const size_t targets = megabytes * 1024 * 1024 / 20500;
    const size_t actors = targets / 50 + 1;
    std::string deltas = "\t\t\tdeltas\n\t\t\t\t{\n";
    for (int i = 0; i < 520; ++i)
        deltas += "\t\t\t\td " + std::to_string(i) + " 0.0123456 -0.0234567 0.0345678\n";
    deltas += "\t\t\t\t}\n";

    std::string text = "{\n\nversion\n\t{\n\tnumber 4.01\n\t}\n";
    const std::string resFile = "figureResFile :Runtime:Geometries:Bench:bench.obj\n";
    text += resFile;
    for (size_t a = 0; a < actors; ++a)
        text += "actor part" + std::to_string(a) + ":1\n\t{\n\tstorageOffset 0 0 0\n\tgeomHandlerGeom 13 part" +
                std::to_string(a) + "\n\t}\n";
    text += resFile;
    size_t target = 0;
    for (size_t a = 0; a < actors; ++a) {
        text += "actor part" + std::to_string(a) + ":1\n\t{\n\tname\tPart " + std::to_string(a) +
                "\n\ton\n\tchannels\n\t\t{\n";
        for (int t = 0; t < 50 && target < targets; ++t, ++target) {
            const std::string name = "morph" + std::to_string(target);
            text += "\t\ttargetGeom " + name + "\n\t\t\t{\n\t\t\tname " + name +
                    "\n\t\t\tkeys\n\t\t\t\t{\n\t\t\t\tstatic  0\n\t\t\t\tk  0  0.25\n\t\t\t\t}\n" +
                    "\t\t\tindexes 520\n\t\t\tnumbDeltas 520\n" + deltas + "\t\t\t}\n";
        }
        text += "\t\trotateX xrot\n\t\t\t{\n\t\t\tname xRot\n\t\t\tkeys\n\t\t\t\t{\n\t\t\t\tstatic  0\n"
                "\t\t\t\tk  0  12\n\t\t\t\t}\n\t\t\t}\n\t\t}\n\t}\n";
    }
    text += "figure \n\t{\n\tname    Bench\n\troot\tpart0:1\n\tfigureType 1\n";
    for (int m = 0; m < 20; ++m)
        text += "\tmaterial Mat" + std::to_string(m) +
                "\n\t\t{\n\t\tKdColor 1 0.8 0.6 1\n\t\tKaColor 0 0 0 1\n\t\tKsColor 0.2 0.2 0.2 1\n"
                "\t\tTextureColor 1 1 1 1\n\t\tNsExponent 40\n\t\ttExpo 0.6\n\t\tbumpStrength 1\n"
                "\t\ttextureMap \":Runtime:Textures:Bench:mat.jpg\"\n\t\t0 0\n\t\tbumpMap NO_MAP\n"
                "\t\treflectionMap NO_MAP\n\t\ttransparencyMap NO_MAP\n\t\tReflectionColor 1 1 1 1\n\t\t}\n";
    text += "\tdisplayMode USEPARENT\n\t}\n\tsetGeomHandlerOffset 0 0.35 0\n}\n";
    return Crlf(text);
}

std::vector<Shape> AdversarialShapes() {
    return {
        // One line of "material " words inside a material block: every word opens a block
        // that runs to the same "}", and every name is the rest of that line.
        {"material-words-300k.pz2",
         [] {
             return kPoseHead + "figure\n{\nmaterial Skin\n{\nKdColor 1 1 1 1\n" + Repeated("material ", 33'000 * 9) +
                    "\ntextureMap NO_MAP\n}\n}\n}\n";
         }},
        {"material-words-10m.pz2",
         [] {
             return kPoseHead + "figure\n{\nmaterial Skin\n{\n" + Repeated("material ", kTenMegabytes) +
                    "\nKdColor 1 1 1 1\n}\n}\n}\n";
         }},
        // Material lines that all stand inside the first block and share its lines.
        {"material-lines-10m.pz2",
         [] {
             return kPoseHead + "figure\n{\nmaterial Skin\n{\n" + Numbered("material m", "\n", kTenMegabytes) +
                    "KdColor 1 1 1 1\ntextureMap \"a.jpg\"\n}\n}\n}\n";
         }},
        // Many props: each owner is searched for and cut out of the text.
        {"props-10m.pz2",
         [] {
             return kPoseHead +
                    Numbered("prop owner_", "\n{\nmaterial Skin\n{\nKdColor 1 1 1 1\ntextureMap NO_MAP\n}\n}\n",
                             kTenMegabytes) +
                    "}\n";
         }},
        // Prop lines that all run to the one "{" behind them.
        {"prop-lines-one-brace.pz2",
         [] { return kPoseHead + Numbered("prop p", "\n", 2'000'000) + "{\nmaterial x\n{\n}\n}\n}\n"; }},
        // A pose of many actors with a few channels each.
        {"actors-10m.pz2",
         [] {
             return kPoseHead +
                    Numbered("actor a",
                             "\n{\nname A\nchannels\n{\nrotateY yrot\n{\nkeys\n{\nk  0  1\n}\n}\n}\nlocked 0\n}\n",
                             kTenMegabytes) +
                    "}\n";
         }},
        // One line of "actor " words: every opening's name is the rest of that line.
        {"actor-words-line.pz2", [] { return kPoseHead + Repeated("actor ", kTenMegabytes) + "\n}\n"; }},
        // Openings that all run to the one "}" behind them: their headers are the same text.
        {"headers-one-brace.pz2",
         [] { return kPoseHead + Numbered("actor a", "\nname n\n", kTenMegabytes) + "}\nchannels\n{\n}\n}\n"; }},
        // One actor with a channels block of 100,000 dials, every other without keys.
        {"channels-one-actor.pz2",
         [] {
             std::string text = kPoseHead + "actor hip\n{\nchannels\n{\n";
             for (int c = 0; c < 100'000; ++c)
                 text += "targetGeom t" + std::to_string(c) + "\n{\nname t" + std::to_string(c) +
                         (c % 2 ? "\n}\n" : "\nkeys\n{\nk  0  1\n}\n}\n");
             return text + "}\n}\n}\n";
         }},
        // Actors of 60 named dials each: every dial is looked for again behind itself, and
        // that search mostly runs to the end of its block.
        {"named-dials-small-blocks.pz2",
         [] {
             std::string actor = "\n\t{\n\tchannels\n\t\t{\n";
             for (int c = 0; c < 60; ++c)
                 actor += "\t\ttargetGeom Morph" + std::to_string(c) + "\n\t\t\t{\n\t\t\tname Morph " +
                          std::to_string(c) + "\n\t\t\tkeys\n\t\t\t\t{\n\t\t\t\tk  0  0.5\n\t\t\t\t}\n\t\t\t}\n";
             actor += "\t\t}\n\t}\n";
             return kPoseHead + Numbered("actor a", actor, kTenMegabytes) + "}\n";
         }},
        // One block of dials whose names begin with a blank, which the dial index can't look
        // up: each second search scans the rest of the block, a long run of one letter.
        {"unindexed-dials-one-block.pz2",
         [] {
             const std::string fill = Repeated(std::string(200, 'a') + "\n", 20 * 201);
             return kPoseHead + "actor a0:1\n{\nchannels\n{\n" +
                    Numbered("aaaa  " + std::string(40, 'a') + "b", "x\n{\nname x\nkeys\n{\nk  0  1\n}\n}\n" + fill,
                             kTenMegabytes) +
                    "}\n}\n}\n";
         }},
        // A long line without a line end.
        {"long-line.pz2", [] { return kPoseHead + Repeated("abc def {} ", kTenMegabytes) + "\n}\n"; }},
    };
}

} // namespace benchfiles
