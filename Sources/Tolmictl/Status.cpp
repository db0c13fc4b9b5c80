#include "Tolmictl/Status.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace {
std::string quoted(const std::string &text) {
    std::string json = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            json += '\\';
            json += character;
        } else if (static_cast<unsigned char>(character) < 0x20) {
            std::array<char, 8> escape {};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", unsigned(character));
            json += escape.data();
        } else {
            json += character;
        }
    }
    return json + '"';
}

/// With a point, whatever the locale.
std::string threeDecimals(double value) {
    std::array<char, 32> digits {};
    const auto end
        = std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 3).ptr;
    return { digits.data(), end };
}
} // namespace

std::string lineOf(const Status &status) {
    std::string line = status.state;
    if (status.state == "error" && !status.lastError.empty())
        line += ": " + status.lastError;
    for (char &character : line) {
        if (static_cast<unsigned char>(character) < 0x20)
            character = ' ';
    }
    return line;
}

std::string jsonOf(const Status &status) {
    std::string json = "{\"state\":" + quoted(status.state);
    if (status.level)
        json += ",\"level\":" + threeDecimals(*status.level);
    return json + ",\"lastError\":" + quoted(status.lastError) + ",\"version\":" + quoted(status.version)
        + '}';
}
