#include "core/platform/AsciiCase.h"

namespace gelvane {

char LowerChar(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string LCase(std::string_view text) {
    std::string out(text);
    for (char &c : out) // without a branch, so that the compiler does it many bytes at a time
        c = static_cast<char>(c + ((c >= 'A' && c <= 'Z') ? 'a' - 'A' : 0));
    return out;
}

std::string UCase(std::string_view text) {
    std::string out(text);
    for (char &c : out)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return out;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (LowerChar(a[i]) != LowerChar(b[i]))
            return false;
    return true;
}

} // namespace gelvane
