#include "core/model/Text.h"

#include "core/platform/Failure.h"

#include <algorithm>
#include <cstring>

namespace gelvane {

size_t InStr(std::string_view text, std::string_view find, size_t start) {
    if (start < 1)
        Fail(ErrInvalidCall);
    if (start > text.size() + 1)
        return 0;
    if (find.empty())
        return start;
    const size_t from = start - 1;
    const void *hit = memmem(text.data() + from, text.size() - from, find.data(), find.size());
    return hit ? static_cast<size_t>(static_cast<const char *>(hit) - text.data()) + 1 : 0;
}

size_t InStrRev(std::string_view text, std::string_view find, size_t start) {
    if (start == 0 || start > text.size())
        start = text.size();
    if (find.empty())
        return start;
    if (find.size() > text.size())
        return 0;
    // The match must lie entirely within the first `start` characters.
    if (start < find.size())
        return 0;
    // Backwards from the last place where the whole of it fits, one first character at a
    // time; when that character is common, forwards instead, where a search skips ahead.
    const char *data = text.data();
    size_t limit = start - find.size() + 1; // candidate places lie in [0, limit)
    for (int tries = 0; limit > 0 && tries < 64; ++tries) {
        const void *hit = memrchr(data, find[0], limit);
        if (!hit)
            return 0;
        const size_t at = static_cast<size_t>(static_cast<const char *>(hit) - data);
        if (std::memcmp(data + at + 1, find.data() + 1, find.size() - 1) == 0)
            return at + 1;
        limit = at;
    }
    size_t last = 0;
    for (size_t from = 0; from < limit;) {
        const void *hit = memmem(data + from, limit - from + find.size() - 1, find.data(), find.size());
        if (!hit)
            break;
        last = static_cast<size_t>(static_cast<const char *>(hit) - data) + 1;
        from = last;
    }
    return last;
}

size_t InStrNoCase(std::string_view text, std::string_view find, size_t start) {
    if (start < 1)
        Fail(ErrInvalidCall);
    if (start > text.size() + 1)
        return 0;
    if (find.empty())
        return start;
    auto eq = [](char a, char b) { return LowerChar(a) == LowerChar(b); };
    auto it = std::search(text.begin() + static_cast<long>(start - 1), text.end(), find.begin(), find.end(), eq);
    return it == text.end() ? 0 : static_cast<size_t>(it - text.begin()) + 1;
}

std::string_view Mid(std::string_view text, long long start, long long length) {
    if (start < 1)
        Fail(ErrInvalidCall);
    if (length < 0)
        Fail(ErrInvalidCall);
    const size_t from = static_cast<size_t>(start - 1);
    if (from >= text.size())
        return {};
    return text.substr(from, static_cast<size_t>(std::min<long long>(length, static_cast<long long>(text.size()))));
}

std::string_view Left(std::string_view text, long long length) {
    if (length < 0)
        Fail(ErrInvalidCall);
    return text.substr(0, std::min(text.size(), static_cast<size_t>(length)));
}

std::string_view Right(std::string_view text, long long length) {
    if (length < 0)
        Fail(ErrInvalidCall);
    const size_t n = std::min(text.size(), static_cast<size_t>(length));
    return text.substr(text.size() - n);
}

std::string Replace(std::string_view text, std::string_view find, std::string_view with) {
    if (find.empty())
        return std::string(text);
    std::string out;
    out.reserve(text.size());
    size_t pos = 0;
    while (true) {
        const size_t hit = text.find(find, pos);
        if (hit == std::string_view::npos)
            break;
        out.append(text, pos, hit - pos);
        out.append(with);
        pos = hit + find.size();
    }
    out.append(text, pos);
    return out;
}

std::string ReplaceUntilNone(std::string_view text, std::string_view find, std::string_view with) {
    std::string out(text);
    if (find.empty() || with.find(find) != std::string_view::npos)
        return Replace(text, find, with); // would never end; one pass is all that can be done
    while (out.find(find) != std::string::npos)
        out = Replace(out, find, with);
    return out;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

bool EndsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

std::string_view LTrim(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view RTrim(std::string_view text) {
    const size_t last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view Trim(std::string_view text) {
    return RTrim(LTrim(text));
}

std::string StripControls(std::string_view text) {
    // Blanks are trimmed first: what is left is copied without its tabs and line ends.
    std::string out(text.size(), '\0');
    char *w = out.data();
    for (char c : text) {
        *w = c;
        w += c != '\t' && c != '\r' && c != '\n';
    }
    out.resize(static_cast<size_t>(w - out.data()));
    const size_t first = out.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    out.erase(out.find_last_not_of(' ') + 1);
    out.erase(0, first);
    return out;
}

std::string CrToLf(std::string_view text) {
    std::string out(text);
    std::replace(out.begin(), out.end(), kCr, kLf);
    return out;
}

} // namespace gelvane
