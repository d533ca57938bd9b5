#include "core/platform/ProfileFile.h"

#include "core/platform/AsciiCase.h"
#include "core/platform/Failure.h"
#include "core/platform/OutputFile.h"
#include "core/platform/Paths.h"

#include <optional>
#include <vector>

namespace gelvane {
namespace {

std::string_view TrimWhite(std::string_view s) {
    const auto white = [](char c) { return c == ' ' || c == '\t'; };
    while (!s.empty() && white(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && white(s.back()))
        s.remove_suffix(1);
    return s;
}

// Any of "\r\n", "\n" or "\r" ends a line; a final line end adds no empty line.
std::vector<std::string> SplitLines(std::string_view bytes) {
    std::vector<std::string> lines;
    size_t i = 0;
    while (i < bytes.size()) {
        size_t j = bytes.find_first_of("\r\n", i);
        if (j == std::string_view::npos) {
            lines.emplace_back(bytes.substr(i));
            break;
        }
        lines.emplace_back(bytes.substr(i, j - i));
        i = j + ((bytes[j] == '\r' && j + 1 < bytes.size() && bytes[j + 1] == '\n') ? 2 : 1);
    }
    return lines;
}

// The name of a section line, or nothing when the line isn't one.
bool SectionName(std::string_view line, std::string_view &name) {
    line = TrimWhite(line);
    if (line.empty() || line.front() != '[')
        return false;
    const size_t close = line.find(']');
    name = TrimWhite(line.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
    return true;
}

// The key of an entry line; comment and blank lines have none.
bool EntryKey(std::string_view line, std::string_view &key) {
    line = TrimWhite(line);
    if (line.empty() || line.front() == ';')
        return false;
    key = TrimWhite(line.substr(0, line.find('=')));
    return true;
}

struct SectionSpan {
    size_t header = 0; // index of the "[...]" line
    size_t end = 0;    // index behind its last line
    bool found = false;
};

SectionSpan FindSection(const std::vector<std::string> &lines, std::string_view section) {
    SectionSpan span;
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string_view name;
        if (!SectionName(lines[i], name))
            continue;
        if (span.found) {
            span.end = i;
            return span;
        }
        if (EqualsNoCase(name, section)) {
            span.found = true;
            span.header = i;
        }
    }
    span.end = lines.size();
    return span;
}

size_t FindKey(const std::vector<std::string> &lines, const SectionSpan &span, std::string_view key) {
    for (size_t i = span.header + 1; i < span.end; ++i) {
        std::string_view k;
        if (EntryKey(lines[i], k) && EqualsNoCase(k, key))
            return i;
    }
    return std::string::npos;
}

std::string LoadFile(std::string_view fileName) {
    try {
        return ReadFileBytes(fileName);
    } catch (const Failure &) {
        return {};
    }
}

} // namespace

std::string ReadProfileString(std::string_view section, std::string_view key, std::string_view fileName,
                              std::string_view defaultValue, size_t bufferSize) {
    const size_t room = bufferSize > 0 ? bufferSize - 1 : 0;
    std::string result(defaultValue);
    const std::vector<std::string> lines = SplitLines(LoadFile(fileName));
    const SectionSpan span = FindSection(lines, section);
    if (span.found) {
        const size_t at = FindKey(lines, span, key);
        if (at != std::string::npos) {
            const std::string_view line = lines[at];
            const size_t eq = line.find('=');
            std::string_view value = eq == std::string_view::npos ? std::string_view{} : TrimWhite(line.substr(eq + 1));
            if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
                value = value.substr(1, value.size() - 2);
            result = std::string(value);
        }
    }
    if (result.size() > room)
        result.resize(room);
    return result;
}

std::optional<std::string> SetProfileString(std::string_view text, std::string_view section,
                                            const std::string_view *key, const std::string_view *value) {
    std::vector<std::string> lines = SplitLines(text);
    const SectionSpan span = FindSection(lines, section);
    if (!key) {
        if (span.found)
            lines.erase(lines.begin() + static_cast<long>(span.header), lines.begin() + static_cast<long>(span.end));
    } else if (!span.found) {
        if (!value)
            return std::nullopt;
        lines.push_back("[" + std::string(section) + "]");
        lines.push_back(std::string(*key) + "=" + std::string(*value));
    } else {
        const size_t at = FindKey(lines, span, *key);
        if (at != std::string::npos) {
            if (value)
                lines[at] = std::string(*key) + "=" + std::string(*value);
            else
                lines.erase(lines.begin() + static_cast<long>(at));
        } else if (value) {
            // Behind the section's last non-blank line, so blank separators stay in place.
            size_t insertAt = span.end;
            while (insertAt > span.header + 1 && TrimWhite(lines[insertAt - 1]).empty())
                --insertAt;
            lines.insert(lines.begin() + static_cast<long>(insertAt), std::string(*key) + "=" + std::string(*value));
        }
    }
    std::string bytes;
    for (const std::string &line : lines) {
        bytes += line;
        bytes += "\r\n";
    }
    return bytes;
}

std::string ReadProfileText(std::string_view fileName) {
    return LoadFile(fileName);
}

bool WriteProfileString(std::string_view section, const std::string_view *key, const std::string_view *value,
                        std::string_view fileName) {
    const std::optional<std::string> bytes = SetProfileString(LoadFile(fileName), section, key, value);
    if (!bytes)
        return true;
    try {
        WriteFileAtomic(fileName, *bytes);
    } catch (const Failure &) {
        return false;
    }
    return true;
}

} // namespace gelvane
