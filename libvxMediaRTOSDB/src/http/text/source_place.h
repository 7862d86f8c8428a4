// A place in the source, for a log line that names another place than its own.
#pragma once

struct SourcePlace {
    const char* file;  // with its folders
    int line;
};

// Returns the place of the call; as a default argument, the place where the function is called.
constexpr SourcePlace here(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return {file, line};
}
