// An output that lives as long as its scope.
#pragma once

#include <mediacheckd/vxMediaRTOSDB/media_db_output.h>

class MediaDBOutputGuard {
  public:
    explicit MediaDBOutputGuard(void* outputHandle)
        : mResult(vxMediaDBOutputCtor(&mOutput, outputHandle)) {}
    ~MediaDBOutputGuard() { vxMediaDBOutputDtor(&mOutput); }
    MediaDBOutputGuard(const MediaDBOutputGuard&) = delete;
    MediaDBOutputGuard& operator=(const MediaDBOutputGuard&) = delete;

    // Negative when there was no memory.
    [[nodiscard]] int result() const { return mResult; }

    [[nodiscard]] vxMediaDBOutput* get() { return &mOutput; }

  private:
    vxMediaDBOutput mOutput;
    int mResult;
};
