#include "tools/mediactl/argument_forms.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>

#include <mediacheckd/vxMediaRTOSDB/db_requests.h>

namespace mediactl {

namespace {

constexpr size_t kGumiDigits = 2 * kGumiSize;

// A leading zero is refused: it would be read as octal.
bool isNumber(const std::string& text) {
    uint32_t value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end && (text[0] != '0' || text.size() == 1);
}

// A comparison with what is not a number is false.
bool isSeconds(const std::string& text) {
    constexpr double kMost = 1e9;
    double value = -1;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end && 0 <= value && value <= kMost;
}

bool isDirectory(const std::string& text) {
    return text.size() == kDirNameSize && text.find('/') == std::string::npos;
}

bool isFile(const std::string& text) {
    return text.size() == kDirNameSize + 1 + kFileNameSize && text.find('/') == kDirNameSize &&
           text.rfind('/') == kDirNameSize;
}

bool isGumi(const std::string& text) {
    return text.size() == kGumiDigits &&
           std::all_of(text.begin(), text.end(),
                       [](unsigned char digit) { return std::isxdigit(digit); });
}

}  // namespace

const Form kNumber = {"a decimal number of 32 bits", isNumber};
const Form kSeconds = {"a number of seconds up to 1000000000", isSeconds};
const Form kDirectory = {"a directory name of 8 characters", isDirectory};
const Form kFile = {"a directory of 8 and a file of 12 characters", isFile};
const Form kGumi = {"32 hexadecimal digits", isGumi};
const Form kQuery = {"a query string", [](const std::string&) { return true; }};

std::string directoryOf(const std::string& path) {
    return path.substr(0, kDirNameSize);
}

std::string fileOf(const std::string& path) {
    return path.substr(kDirNameSize + 1);
}

}  // namespace mediactl
