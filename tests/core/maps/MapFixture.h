#pragma once
// A session whose Poser folder is a temporary one.
#include "support/SessionFixture.h"

#include <string>

namespace gelvane::test {

class MapFixture : public SessionFixture {
protected:
    MapFixture() { settings.PoserFolder = home.path() + "/Poser"; }

    // Creates a file under the Poser folder and returns its full path.
    std::string poserFile(const std::string &relative, const std::string &bytes = "x") {
        return home.write("Poser/" + relative, bytes);
    }
    std::string poser() const { return settings.PoserFolder; }
    std::string textures() const { return poser() + "/Runtime/Textures"; }
};

} // namespace gelvane::test
