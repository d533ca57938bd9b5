#include "core/model/CommandText.h"

#include "core/model/Model.h"
#include "core/model/Text.h"

#include <array>

namespace gelvane {

std::string UnquotedCommand(std::string_view commandText) {
    return std::string(Trim(Replace(commandText, "\"", "")));
}

bool IsSilentCommand(std::string_view commandText) {
    return StartsWith(LCase(Trim(commandText)), "-s ");
}

std::string CommandPath(std::string_view commandText) {
    const std::string text = UnquotedCommand(commandText);
    return IsSilentCommand(commandText) ? std::string(Trim(Mid(text, 4))) : text;
}

int FileKindOfExtension(std::string_view extension) {
    static constexpr std::array<std::string_view, 8> kLetters{"cr2", "pz2", "pp2", "hr2", "cm2", "fc2", "hd2", "lt2"};
    const std::string lowered = LCase(extension);
    for (size_t kind = 0; kind < kLetters.size(); ++kind)
        if (lowered == kLetters[kind])
            return static_cast<int>(kind);
    return -1;
}

int FileKindOfCommand(std::string_view commandText) {
    return FileKindOfExtension(Right(UnquotedCommand(commandText), 3));
}

bool HasPoseLikeExtension(std::string_view path) {
    const std::string_view tail = Right(path, 4);
    if (tail.size() < 4 || tail[0] != '.')
        return false;
    const int kind = FileKindOfExtension(tail.substr(1));
    return kind >= 0 && !IsFigureLikeKind(kind);
}

} // namespace gelvane
