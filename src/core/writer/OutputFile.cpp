#include "core/writer/OutputFile.h"

#include "core/platform/Failure.h"
#include "core/platform/Paths.h"

#include <cstdio>
#include <sys/stat.h>

namespace gelvane {

OutputFile::OutputFile(std::string_view path) : m_target(path) {
    // Keep the on-disk spelling of an existing target or of its folder.
    if (auto real = ResolvePath(path))
        m_target = *real;
    else if (!FolderPart(path).empty())
        if (auto folder = ResolvePath(FolderPart(path)))
            m_target = JoinPath(*folder, FileNamePart(path));
    m_temp = m_target + ".gelvane-tmp";
    m_file = std::fopen(m_temp.c_str(), "wb");
    if (!m_file)
        Fail(ErrPathFileAccess);
    // A replaced file keeps its permissions.
    struct stat existing {};
    if (::stat(m_target.c_str(), &existing) == 0 && S_ISREG(existing.st_mode))
        ::fchmod(::fileno(m_file), existing.st_mode & 07777);
}

OutputFile::~OutputFile() {
    if (!m_done)
        discard();
}

void OutputFile::discard() {
    m_done = true;
    if (m_file)
        std::fclose(m_file);
    m_file = nullptr;
    std::remove(m_temp.c_str());
}

void OutputFile::commit() {
    const bool written = std::fflush(m_file) == 0 && !std::ferror(m_file);
    const bool closed = std::fclose(m_file) == 0;
    m_file = nullptr;
    if (!written || !closed || std::rename(m_temp.c_str(), m_target.c_str()) != 0) {
        discard();
        Fail(ErrPathFileAccess);
    }
    m_done = true;
}

} // namespace gelvane
