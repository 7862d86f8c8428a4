// The forms that arguments have. A value of another form is a wrong call.
#pragma once

#include <string>

namespace mediactl {

struct Form {
    const char* expected;  // completes "is not ..."
    bool (*holds)(const std::string& text);
};

// A decimal number of 32 bits.
extern const Form kNumber;

// A number of seconds, with a fraction or without.
extern const Form kSeconds;

// The name of a directory on the card: 8 characters.
extern const Form kDirectory;

// A file on the card: directory, a slash and a name of 12 characters.
extern const Form kFile;

// 32 hexadecimal digits.
extern const Form kGumi;

// The query string of an HTTP request: any text.
extern const Form kQuery;

// The two names in an argument of the form kFile.
std::string directoryOf(const std::string& path);
std::string fileOf(const std::string& path);

}  // namespace mediactl
