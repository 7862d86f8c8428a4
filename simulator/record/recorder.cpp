#include "simulator/record/recorder.h"

#include <stdexcept>

namespace simulator {

Recorder::Recorder(const std::string& path) : mPath(path), mFile(path, std::ios::trunc) {
    mFile << "# seconds channel request [after=ms] [message]... [closed]" << std::endl;
    requireGood();
}

std::chrono::microseconds Recorder::time() const {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                 mStart);
}

void Recorder::write(const RecordedExchange& exchange) {
    mFile << formatExchange(exchange) << std::endl;
    requireGood();
}

void Recorder::requireGood() const {
    if (!mFile) {
        throw std::runtime_error(mPath + ": the recording cannot be written");
    }
}

}  // namespace simulator
