#include "core/writer/WriterValues.h"

#include "core/model/Failure.h"
#include "core/model/Numbers.h"
#include "core/model/Text.h"

#include <vector>

namespace gelvane {
namespace {

bool IsDigit(char c, int radix = 10) {
    if (radix == 8)
        return c >= '0' && c <= '7';
    if (radix == 16) {
        const char l = LowerChar(c);
        return (c >= '0' && c <= '9') || (l >= 'a' && l <= 'f');
    }
    return c >= '0' && c <= '9';
}

// True when all of `text` is one number in the forms the lenient reader knows.
bool IsWholeNumber(std::string_view text) {
    size_t i = 0;
    const size_t n = text.size();
    auto digits = [&](int radix) {
        const size_t start = i;
        while (i < n && IsDigit(text[i], radix))
            ++i;
        return i > start;
    };
    if (n >= 2 && text[0] == '&') {
        const char r = LowerChar(text[1]);
        if (r != 'h' && r != 'o')
            return false;
        i = 2;
        return digits(r == 'h' ? 16 : 8) && i == n;
    }
    if (i < n && (text[i] == '+' || text[i] == '-'))
        ++i;
    bool any = digits(10);
    if (i < n && text[i] == '.') {
        ++i;
        any = digits(10) || any;
    }
    if (!any)
        return false;
    if (i < n && (LowerChar(text[i]) == 'e' || LowerChar(text[i]) == 'd')) {
        ++i;
        if (i < n && (text[i] == '+' || text[i] == '-'))
            ++i;
        if (!digits(10))
            return false;
    }
    return i == n;
}

} // namespace

double StrictNumber(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    if (!IsWholeNumber(text))
        Fail(ErrTypeMismatch);
    return NumberValue(text);
}

std::string ChannelText(int16_t channel) {
    // Colours are written thousands of times over from 256 values: each text is made once.
    static const std::vector<std::string> kTexts = [] {
        std::vector<std::string> texts;
        for (int c = 0; c < 256; ++c)
            texts.push_back(NumberText(RoundPlaces(c / 255.0, 6)));
        return texts;
    }();
    if (channel >= 0 && channel < 256)
        return kTexts[static_cast<size_t>(channel)];
    return NumberText(RoundPlaces(channel / 255.0, 6));
}

std::string ColourText(const Rgb &colour) {
    return ChannelText(colour.Red) + ' ' + ChannelText(colour.Green) + ' ' + ChannelText(colour.Blue);
}

std::string PercentText(double percent) {
    return NumberText(RoundPlaces(percent / 100.0, 6));
}

std::string PercentOfText(std::string_view percent) {
    return PercentText(StrictNumber(percent));
}

bool IsConnectedMap(bool enabled, std::string_view map) {
    return enabled && !EqualsNoCase(map, "no_map");
}

} // namespace gelvane
