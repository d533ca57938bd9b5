#include "core/model/Numbers.h"

#include "core/model/Text.h"
#include "core/platform/Failure.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace gelvane {
namespace {

bool IsSkipped(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

// Value of a "&H" / "&O" literal: 16-bit when it fits in 16 bits, else 32-bit, both signed.
double RadixValue(std::string_view digits, int radix) {
    unsigned long long v = 0;
    bool any = false;
    for (char c : digits) {
        if (IsSkipped(c))
            continue;
        int d;
        if (c >= '0' && c <= '9')
            d = c - '0';
        else if (radix == 16 && c >= 'a' && c <= 'f')
            d = c - 'a' + 10;
        else if (radix == 16 && c >= 'A' && c <= 'F')
            d = c - 'A' + 10;
        else
            break;
        if (d >= radix)
            break;
        v = v * static_cast<unsigned>(radix) + static_cast<unsigned>(d);
        any = true;
        if (v > 0xFFFFFFFFull)
            Fail(ErrOverflow);
    }
    if (!any)
        return 0;
    if (v <= 0xFFFF)
        return static_cast<double>(static_cast<int16_t>(static_cast<uint16_t>(v)));
    return static_cast<double>(static_cast<int32_t>(static_cast<uint32_t>(v)));
}

} // namespace

double NumberValue(std::string_view text) {
    size_t i = 0;
    auto skip = [&] {
        while (i < text.size() && IsSkipped(text[i]))
            ++i;
    };
    skip();
    if (i + 1 < text.size() && text[i] == '&') {
        const char r = LowerChar(text[i + 1]);
        if (r == 'h')
            return RadixValue(text.substr(i + 2), 16);
        if (r == 'o')
            return RadixValue(text.substr(i + 2), 8);
    }
    // Gather the numeric prefix without the skipped characters, then convert it.
    std::string num;
    auto peek = [&]() -> char {
        skip();
        return i < text.size() ? text[i] : '\0';
    };
    char c = peek();
    if (c == '+' || c == '-') {
        num.push_back(c);
        ++i;
    }
    bool digits = false;
    while ((c = peek()) >= '0' && c <= '9') {
        num.push_back(c);
        digits = true;
        ++i;
    }
    if (peek() == '.') {
        num.push_back('.');
        ++i;
        while ((c = peek()) >= '0' && c <= '9') {
            num.push_back(c);
            digits = true;
            ++i;
        }
    }
    if (!digits)
        return 0;
    c = peek();
    if (c == 'e' || c == 'E' || c == 'd' || c == 'D') {
        const size_t save = i;
        std::string exp = "e";
        ++i;
        char s = peek();
        if (s == '+' || s == '-') {
            exp.push_back(s);
            ++i;
        }
        bool expDigits = false;
        while ((s = peek()) >= '0' && s <= '9') {
            exp.push_back(s);
            expDigits = true;
            ++i;
        }
        if (expDigits)
            num += exp;
        else
            i = save;
    }
    errno = 0;
    const double v = std::strtod(num.c_str(), nullptr);
    if (std::isinf(v) || (errno == ERANGE && std::fabs(v) > 1.0))
        Fail(ErrOverflow);
    return v;
}

namespace {

std::string GeneralText(double value, int digits) {
    if (value == 0)
        return "0";
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*G", digits, value);
    std::string s(buf);
    for (char &ch : s)
        if (ch == ',')
            ch = '.';
    return s;
}

} // namespace

std::string NumberText(double value) {
    return GeneralText(value, 15);
}

std::string NumberText(float value) {
    return GeneralText(static_cast<double>(value), 7);
}

std::string NumberText(int value) {
    return std::to_string(value);
}

std::string NumberText(long long value) {
    return std::to_string(value);
}

std::string NumberTextOfText(std::string_view text) {
    std::string s(text);
    for (char &ch : s)
        if (ch == ',')
            ch = '.';
    return s;
}

double RoundHalfEven(double value) {
    return std::nearbyint(value); // default rounding mode: to nearest, ties to even
}

double RoundPlaces(double value, int places) {
    const double scale = std::pow(10.0, places);
    return RoundHalfEven(value * scale) / scale;
}

int16_t ToInt16(double value) {
    const double r = RoundHalfEven(value);
    if (!(r >= -32768.0 && r <= 32767.0))
        Fail(ErrOverflow);
    return static_cast<int16_t>(r);
}

int32_t ToInt32(double value) {
    const double r = RoundHalfEven(value);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        Fail(ErrOverflow);
    return static_cast<int32_t>(r);
}

std::string SignedText(long long value) {
    std::string text = std::to_string(value);
    if (value >= 0)
        text.insert(text.begin(), ' ');
    return text;
}

} // namespace gelvane
