#pragma once
// An output file that is written beside its target and renamed over it only
// when complete, so that a failed save leaves the previous file as it was.
#include <cstdio>
#include <string>
#include <string_view>

namespace gelvane {

class OutputFile {
public:
    // Opens the temporary file beside `path`; "Path/File access error" (75) when
    // it can't be created.
    explicit OutputFile(std::string_view path);
    // Without commit() the temporary file is removed.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    std::FILE *file() const { return m_file; }
    // Closes the file and renames it over the target; failure 75 when that fails,
    // and the temporary file is gone then too.
    void commit();

private:
    void discard();
    std::string m_target;
    std::string m_temp;
    std::FILE *m_file = nullptr;
    bool m_done = false;
};

} // namespace gelvane
