#include "core/reports/JsonWriter.h"

namespace gelvane {

std::string JsonString(std::string_view bytes) {
    static const char kHex[] = "0123456789abcdef";
    std::string out = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (byte < 0x20 || byte >= 0x7F) {
                out += "\\u00";
                out += kHex[byte >> 4];
                out += kHex[byte & 0x0F];
            } else {
                out += c;
            }
        }
    }
    return out + '"';
}

void JsonWriter::Separate() {
    if (m_levels.empty())
        return;
    Level &level = m_levels.back();
    if (!level.Empty)
        m_text += ',';
    if (level.OneLine) {
        if (!level.Empty)
            m_text += ' ';
    } else {
        m_text += '\n';
        m_text.append(2 * m_levels.size(), ' ');
    }
    level.Empty = false;
}

void JsonWriter::BeforeValue() {
    if (m_afterKey)
        m_afterKey = false;
    else
        Separate();
}

void JsonWriter::Begin(char open, bool oneLine) {
    BeforeValue();
    m_text += open;
    m_levels.push_back({oneLine || (!m_levels.empty() && m_levels.back().OneLine)});
}

void JsonWriter::End(char close) {
    const Level level = m_levels.back();
    m_levels.pop_back();
    if (!level.Empty && !level.OneLine) {
        m_text += '\n';
        m_text.append(2 * m_levels.size(), ' ');
    }
    m_text += close;
}

void JsonWriter::Key(std::string_view name) {
    Separate();
    m_text += JsonString(name) + ": ";
    m_afterKey = true;
}

void JsonWriter::String(std::string_view bytes) {
    BeforeValue();
    m_text += JsonString(bytes);
}

void JsonWriter::Number(int64_t value) {
    BeforeValue();
    m_text += std::to_string(value);
}

void JsonWriter::Null() {
    BeforeValue();
    m_text += "null";
}

} // namespace gelvane
