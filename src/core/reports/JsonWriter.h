#pragma once
// A small JSON writer for the command line's machine-readable output. Texts are the
// program's bytes, one a character (Latin-1): each byte from 0x80 up goes out as the
// \u00XX escape of its code point, so the result is plain ASCII and valid UTF-8.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

class JsonWriter {
public:
    // A container opened with `oneLine` (and everything inside it) stays on one line;
    // the others put each member on a line of its own, indented by two blanks a level.
    void BeginObject(bool oneLine = false) { Begin('{', oneLine); }
    void EndObject() { End('}'); }
    void BeginArray(bool oneLine = false) { Begin('[', oneLine); }
    void EndArray() { End(']'); }
    // The name of the next member of an object.
    void Key(std::string_view name);
    void String(std::string_view bytes);
    void Number(int64_t value);
    void Null();

    const std::string &text() const { return m_text; }

private:
    struct Level {
        bool OneLine;
        bool Empty = true;
    };
    void Begin(char open, bool oneLine);
    void End(char close);
    // Before a member: the comma behind the previous one and the line break or blank.
    void Separate();
    void BeforeValue();

    std::string m_text;
    std::vector<Level> m_levels;
    bool m_afterKey = false;
};

// `bytes` as a quoted JSON string.
std::string JsonString(std::string_view bytes);

} // namespace gelvane
