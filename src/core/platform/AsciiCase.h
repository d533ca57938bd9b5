#pragma once
// ASCII case folding: file names, profile keys and Poser keywords compare this way.
#include <string>
#include <string_view>

namespace gelvane {

char LowerChar(char c);
std::string LCase(std::string_view text);
std::string UCase(std::string_view text);
bool EqualsNoCase(std::string_view a, std::string_view b);

} // namespace gelvane
