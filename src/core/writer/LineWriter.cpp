#include "core/writer/LineWriter.h"

#include "core/platform/Failure.h"

namespace gelvane {

LineWriter::LineWriter(std::string_view lineEnd) : m_lineEnd(lineEnd) {}

LineWriter::LineWriter(std::string_view lineEnd, std::FILE *file) : m_lineEnd(lineEnd), m_file(file) {
    m_buffer.reserve(kBlock + 4096);
}

void LineWriter::flush() {
    if (!m_file || m_buffer.empty())
        return;
    const size_t size = m_buffer.size();
    const size_t written = std::fwrite(m_buffer.data(), 1, size, m_file);
    m_buffer.clear();
    if (written != size)
        Fail(ErrPathFileAccess);
}

} // namespace gelvane
