#include "core/model/Numbers.h"

#include "core/model/Text.h"
#include "core/platform/Failure.h"

#include <cerrno>
#include <charconv>
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
    // The same correctly rounded conversion as strtod, without its locale work; only a
    // value out of range takes strtod, which tells an overflow from an underflow.
    const char *first = num.data() + (num[0] == '+' ? 1 : 0);
    double quick = 0;
    const auto converted = std::from_chars(first, num.data() + num.size(), quick);
    if (converted.ec == std::errc() && converted.ptr == num.data() + num.size())
        return quick;
    errno = 0;
    const double v = std::strtod(num.c_str(), nullptr);
    if (std::isinf(v) || (errno == ERANGE && std::fabs(v) > 1.0))
        Fail(ErrOverflow);
    return v;
}

namespace {

// printf's "%.*G" in the "C" locale, without its cost: the same digits, an upper-case exponent.
std::string GeneralText(double value, int digits) {
    if (value == 0)
        return "0";
    char buf[64];
    if (std::isfinite(value)) {
        // When the shortest digits that read back as the value are no more than asked for,
        // rounding the value to that many digits gives the same digits: only the layout is left.
        const auto shortest = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
        const std::string_view sci(buf, static_cast<size_t>(shortest.ptr - buf));
        const size_t e = sci.find('e');
        char mantissa[24];
        size_t count = 0;
        for (char c : sci.substr(0, e))
            if (c >= '0' && c <= '9' && count < sizeof mantissa)
                mantissa[count++] = c;
        if (count <= static_cast<size_t>(digits)) {
            int exponent = 0;
            std::from_chars(sci.data() + e + (sci[e + 1] == '+' ? 2 : 1), sci.data() + sci.size(), exponent);
            char out[48];
            size_t w = 0;
            if (value < 0)
                out[w++] = '-';
            if (exponent < -4 || exponent >= digits) {
                out[w++] = mantissa[0];
                if (count > 1) {
                    out[w++] = '.';
                    for (size_t i = 1; i < count; ++i)
                        out[w++] = mantissa[i];
                }
                const int magnitude = exponent < 0 ? -exponent : exponent;
                out[w++] = 'E';
                out[w++] = exponent < 0 ? '-' : '+';
                if (magnitude < 10)
                    out[w++] = '0';
                w = static_cast<size_t>(std::to_chars(out + w, out + sizeof out, magnitude).ptr - out);
            } else if (exponent < 0) {
                out[w++] = '0';
                out[w++] = '.';
                for (int i = -1; i > exponent; --i)
                    out[w++] = '0';
                for (size_t i = 0; i < count; ++i)
                    out[w++] = mantissa[i];
            } else {
                const size_t whole = static_cast<size_t>(exponent) + 1; // digits in front of the point
                for (size_t i = 0; i < whole; ++i)
                    out[w++] = i < count ? mantissa[i] : '0';
                if (count > whole) {
                    out[w++] = '.';
                    for (size_t i = whole; i < count; ++i)
                        out[w++] = mantissa[i];
                }
            }
            return std::string(out, w);
        }
    }
    const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, digits);
    std::string s(buf, result.ptr);
    for (char &ch : s)
        if (ch == 'e')
            ch = 'E';
        else if (ch == 'n' || ch == 'i' || ch == 'f' || ch == 'a')
            ch = static_cast<char>(ch - 'a' + 'A'); // "nan", "inf" as printf writes them in upper case
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
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const double scale = places >= 0 && places < 16 ? kPowers[places] : std::pow(10.0, places);
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
