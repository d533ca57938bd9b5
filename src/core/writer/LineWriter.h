#pragma once
// Byte output of the writers: every line is written with its tabs and the one
// line end of the file. Writes either into a string (tests, small outputs) or,
// in blocks, into an open file.
#include "core/platform/OutputFile.h"

#include <string>
#include <string_view>

namespace gelvane {

class LineWriter {
public:
    // Collects everything into text().
    explicit LineWriter(std::string_view lineEnd);
    // Streams into `file` (not owned) in blocks; flush() hands over the rest.
    LineWriter(std::string_view lineEnd, OutputFile &file);
    LineWriter(const LineWriter &) = delete;
    LineWriter &operator=(const LineWriter &) = delete;

    const std::string &lineEnd() const { return m_lineEnd; }

    // `tabs` tab characters, the parts one behind the other, then the line end.
    template <class... Parts> void Line(int tabs, const Parts &...parts) {
        m_buffer.append(static_cast<size_t>(tabs), '\t');
        (m_buffer.append(std::string_view(parts)), ...);
        m_buffer.append(m_lineEnd);
        if (m_file && m_buffer.size() >= kBlock)
            flush();
    }

    // Writes what is buffered to the file; a write error is its SaveFailure.
    // Without a file it does nothing.
    void flush();

    // Everything written so far (string mode), or the unflushed rest (file mode).
    const std::string &text() const { return m_buffer; }

private:
    static constexpr size_t kBlock = 1 << 16;
    std::string m_lineEnd;
    OutputFile *m_file = nullptr;
    std::string m_buffer;
};

} // namespace gelvane
