#include "core/writer/LineWriter.h"

namespace gelvane {

LineWriter::LineWriter(std::string_view lineEnd) : m_lineEnd(lineEnd) {}

LineWriter::LineWriter(std::string_view lineEnd, OutputFile &file) : m_lineEnd(lineEnd), m_file(&file) {
    m_buffer.reserve(kBlock + 4096);
}

void LineWriter::flush() {
    if (!m_file || m_buffer.empty())
        return;
    m_file->write(m_buffer);
    m_buffer.clear();
}

} // namespace gelvane
