#include "support/TestHome.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace gelvane::test {

TestHome::TestHome() {
    std::string tmpl = (fs::temp_directory_path() / "gelvane-test-XXXXXX").string();
    if (!mkdtemp(tmpl.data()))
        throw std::runtime_error("mkdtemp failed");
    m_path = tmpl;
    m_home.emplace("GELVANE_HOME", m_path);
}

TestHome::~TestHome() {
    std::error_code ec;
    fs::remove_all(m_path, ec);
}

std::string TestHome::write(std::string_view relative, std::string_view bytes) const {
    const fs::path p = fs::path(m_path) / std::string(relative);
    fs::create_directories(p.parent_path());
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return p.string();
}

std::string TestHome::read(std::string_view relative) const {
    std::ifstream in(fs::path(m_path) / std::string(relative), std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string ReadTestData(std::string_view relative) {
    std::ifstream in(fs::path(GELVANE_TEST_DATA) / std::string(relative), std::ios::binary);
    if (!in)
        throw std::runtime_error("missing test data: " + std::string(relative));
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::string CorpusPath(std::string_view relative) {
    const fs::path path = fs::path(GELVANE_TEST_DATA) / "corpus" / std::string(relative);
    if (!fs::is_regular_file(path))
        throw std::runtime_error("missing corpus file: " + path.string());
    return path.string();
}

} // namespace gelvane::test
