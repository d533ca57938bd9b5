#include "core/writer/WriterValues.h"

#include "core/model/Numbers.h"
#include "core/model/Text.h"
#include "core/platform/Failure.h"

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

namespace {

// Colours are written thousands of times over from 256 values: each text is made once.
void AppendChannel(std::string &out, int16_t channel) {
    static const std::vector<std::string> kTexts = [] {
        std::vector<std::string> texts;
        for (int c = 0; c < 256; ++c)
            texts.push_back(NumberText(RoundPlaces(c / 255.0, 6)));
        return texts;
    }();
    if (channel >= 0 && channel < 256)
        out += kTexts[static_cast<size_t>(channel)];
    else
        out += NumberText(RoundPlaces(channel / 255.0, 6));
}

} // namespace

std::string ChannelText(int16_t channel) {
    std::string out;
    AppendChannel(out, channel);
    return out;
}

std::string ColourText(const Rgb &colour) {
    std::string out;
    out.reserve(32);
    AppendChannel(out, colour.Red);
    out += ' ';
    AppendChannel(out, colour.Green);
    out += ' ';
    AppendChannel(out, colour.Blue);
    return out;
}

std::string PercentText(double percent) {
    // Most percentages are whole numbers of the model's range: each text is made once.
    static const std::vector<std::string> kWhole = [] {
        std::vector<std::string> texts;
        for (int p = -1000; p <= 1000; ++p)
            texts.push_back(NumberText(RoundPlaces(p / 100.0, 6)));
        return texts;
    }();
    if (percent >= -1000 && percent <= 1000 && percent == static_cast<int>(percent))
        return kWhole[static_cast<size_t>(static_cast<int>(percent) + 1000)];
    return NumberText(RoundPlaces(percent / 100.0, 6));
}

std::string PercentOfText(std::string_view percent) {
    return PercentText(StrictNumber(percent));
}

bool IsConnectedMap(bool enabled, std::string_view map) {
    return enabled && !EqualsNoCase(map, "no_map");
}

} // namespace gelvane
