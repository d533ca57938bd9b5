// Reads every include under src/ and fails on one against the layer order, naming
// the file and the line. Core areas rank platform 0, model 1, maps 2, reader and
// writer 3, materials, channels and reports 4, app 5: a file includes its own area
// and lower ranks, never a higher rank or another area of the same rank. The core
// never includes gui/ or Qt. A gui/<area> file includes the core, the gui/ root
// files and its own area; the gui/ root and main.cpp include anything.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const std::map<std::string, int> kRanks = {
    {"platform", 0}, {"model", 1},    {"maps", 2},     {"reader", 3}, {"writer", 3},
    {"materials", 4}, {"channels", 4}, {"reports", 4}, {"app", 5},
};

std::vector<std::string> Parts(const std::string &path) {
    std::vector<std::string> parts;
    for (const auto &part : fs::path(path))
        parts.push_back(part.string());
    return parts;
}

// Why `target` may not be included from `file` (both relative to src/), or empty.
std::string Verdict(const std::vector<std::string> &file, const std::string &target, bool quoted) {
    const std::vector<std::string> to = Parts(target);
    const bool inCore = file.size() >= 3 && file[0] == "core";
    const bool inGuiArea = file.size() >= 3 && file[0] == "gui";
    if (!quoted) {
        return inCore && target.starts_with("Q") ? "the core never includes Qt" : "";
    }
    if (to.empty() || (to[0] != "core" && to[0] != "gui"))
        return "includes are qualified from src (\"core/...\" or \"gui/...\")";
    if (to[0] == "core" && (to.size() < 3 || !kRanks.count(to[1])))
        return "no such core area";
    if (inCore) {
        if (to[0] == "gui")
            return "the core never includes gui/";
        if (!kRanks.count(file[1]))
            return "the file lies in no known core area";
        if (to[1] == file[1])
            return "";
        const int from = kRanks.at(file[1]), rank = kRanks.at(to[1]);
        if (rank == from)
            return "areas of the same layer don't include each other";
        return rank > from ? "against the layer order" : "";
    }
    if (inGuiArea && to[0] == "gui" && to.size() > 2 && to[1] != file[1])
        return "a gui area includes the core, gui/ root files and itself only";
    return "";
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::cerr << "usage: CheckIncludes SRC_FOLDER\n";
        return 2;
    }
    const fs::path src = argv[1];
    if (!fs::is_directory(src / "core")) {
        std::cerr << src << " holds no core folder\n";
        return 2;
    }
    const std::regex include(R"(^\s*#\s*include\s*([<"])([^">]+)[">])");
    int files = 0, bad = 0;
    for (const auto &entry : fs::recursive_directory_iterator(src)) {
        const std::string extension = entry.path().extension().string();
        if (!entry.is_regular_file() || (extension != ".h" && extension != ".cpp"))
            continue;
        ++files;
        const std::string relative = fs::relative(entry.path(), src).generic_string();
        const std::vector<std::string> parts = Parts(relative);
        std::ifstream in(entry.path());
        std::string line;
        for (int number = 1; std::getline(in, line); ++number) {
            std::smatch match;
            if (!std::regex_search(line, match, include))
                continue;
            const std::string why = Verdict(parts, match[2].str(), match[1].str() == "\"");
            if (!why.empty()) {
                std::cerr << "src/" << relative << ":" << number << ": " << match[2].str() << ": " << why << "\n";
                ++bad;
            }
        }
    }
    if (files == 0) {
        std::cerr << "no sources found under " << src << "\n";
        return 2;
    }
    std::cout << files << " files read, " << bad << " includes against the layer order\n";
    return bad == 0 ? 0 : 1;
}
