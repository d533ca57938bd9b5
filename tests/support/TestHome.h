#pragma once
// A temporary state folder (GELVANE_HOME) and scratch space, removed at the end.
#include "support/ScopedEnv.h"

#include <optional>
#include <string>
#include <string_view>

namespace gelvane::test {

class TestHome {
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome &) = delete;
    TestHome &operator=(const TestHome &) = delete;

    const std::string &path() const { return m_path; }
    // Writes `bytes` to path()/relative, creating folders; returns the full path.
    std::string write(std::string_view relative, std::string_view bytes) const;
    std::string read(std::string_view relative) const;
    std::string file(std::string_view relative) const { return m_path + "/" + std::string(relative); }

private:
    std::string m_path;
    std::optional<ScopedEnv> m_home;
};

// The bytes of a file under tests/data.
std::string ReadTestData(std::string_view relative);
// The path of a real library file under tests/data/corpus; a missing one fails the test.
std::string CorpusPath(std::string_view relative);

} // namespace gelvane::test
