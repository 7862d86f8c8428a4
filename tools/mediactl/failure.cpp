#include "tools/mediactl/failure.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "tools/mediactl/progress.h"

namespace mediactl {

namespace {

struct Free {
    void operator()(char* memory) const { std::free(memory); }
};

}  // namespace

std::string Failure::sentence() const {
    return remedy.empty() ? cause : cause + ": " + remedy;
}

int fail(const Failure& failure) {
    Json error = {{"condition", failure.condition}, {"cause", failure.cause}};
    if (!failure.remedy.empty()) {
        error["remedy"] = failure.remedy;
    }
    error.update(failure.details);
    hideProgress();
    endWithError(error);
    if (!printsJson()) {
        std::fprintf(stderr, "mediactl: %s\n", failure.sentence().c_str());
    }
    return kFailed;
}

int fail(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char* formatted = nullptr;
    const int length = vasprintf(&formatted, format, arguments);
    va_end(arguments);
    const std::unique_ptr<char, Free> text(length < 0 ? nullptr : formatted);
    return fail(Failure{"failed", text ? text.get() : format, ""});
}

int refuseCall(const std::string& cause, const std::string& remedy) {
    (void)fail(Failure{"wrong_call", cause, remedy});
    return kWrongCall;
}

}  // namespace mediactl
