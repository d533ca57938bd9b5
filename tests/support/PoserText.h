#pragma once
// Small Poser texts for the reader tests: line feeds only, no indentation.
#include <string>

namespace gelvane::test {

// A dial: its line ("rotateY yrot"), the value of its one key, and `lines` in front of the keys.
inline std::string DialBlock(const std::string &line, const std::string &value, const std::string &lines = "") {
    return line + "\n{\n" + lines + "keys\n{\nk  0  " + value + "\n}\n}\n";
}

// An actor: its line ("actor hip"), its dials in a channels block, and `tail` lines behind that block.
inline std::string ActorBlock(const std::string &line, const std::string &dials, const std::string &tail = "") {
    return line + "\n{\nchannels\n{\n" + dials + "}\n" + tail + "}\n";
}

// A whole file: `body` behind a version block.
inline std::string PoserFile(const std::string &body, const std::string &version = "4") {
    return "{\nversion\n{\nnumber " + version + "\n}\n" + body + "}\n";
}

} // namespace gelvane::test
