#include "simulator/media/media_facts.h"

#include <libexif/exif-data.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <fstream>
#include <limits>
#include <memory>
#include <string>

#include "simulator/card/input_error.h"
#include "simulator/card/media_item.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/parseutils.h>
}

namespace simulator {

namespace {

struct CloseInput {
    void operator()(AVFormatContext* input) const { avformat_close_input(&input); }
};
using Input = std::unique_ptr<AVFormatContext, CloseInput>;

uint32_t numberOf(int64_t value) {
    return static_cast<uint32_t>(
        std::clamp<int64_t>(value, 0, std::numeric_limits<uint32_t>::max()));
}

uint32_t milliseconds(int64_t time, AVRational base) {
    return time == AV_NOPTS_VALUE ? 0 : numberOf(av_rescale_q(time, base, {1, 1000}));
}

[[noreturn]] void fail(int error) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(error, text.data(), text.size());
    throw InputError(text.data());
}

// The format is told, so that no other reader is tried on a file of unknown origin.
Input openInput(const std::filesystem::path& path, const char* format) {
    av_log_set_level(AV_LOG_QUIET);
    AVFormatContext* opened = nullptr;
    int error = avformat_open_input(&opened, ("file:" + path.string()).c_str(),
                                    av_find_input_format(format), nullptr);
    if (error < 0) {
        fail(error);
    }
    Input input(opened);
    error = avformat_find_stream_info(input.get(), nullptr);
    if (error < 0) {
        fail(error);
    }
    return input;
}

MediaFacts pictureFacts(AVFormatContext* input) {
    const int index = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (index < 0) {
        throw InputError("it holds no picture");
    }
    const AVStream& stream = *input->streams[index];
    if (stream.codecpar->width <= 0 || stream.codecpar->height <= 0) {
        throw InputError("its picture has no size");
    }
    return {.width = numberOf(stream.codecpar->width),
            .height = numberOf(stream.codecpar->height),
            .frameRateNumerator = numberOf(stream.avg_frame_rate.num),
            .frameRateDenominator = numberOf(stream.avg_frame_rate.den),
            .progressive = stream.codecpar->field_order == AV_FIELD_PROGRESSIVE};
}

MediaFacts videoFacts(const std::filesystem::path& path) {
    const Input input = openInput(path, "mp4");
    MediaFacts facts = pictureFacts(input.get());
    facts.durationMs = milliseconds(input->duration, AV_TIME_BASE_Q);
    const AVDictionaryEntry* created = av_dict_get(input->metadata, "creation_time", nullptr, 0);
    int64_t microseconds = 0;
    if (created != nullptr && av_parse_time(&microseconds, created->value, 0) == 0) {
        facts.created = numberOf(microseconds / AV_TIME_BASE);
    }
    for (unsigned i = 0; i < std::min<std::size_t>(input->nb_chapters, kHighlightsMax); ++i) {
        const AVChapter& chapter = *input->chapters[i];
        facts.highlights.push_back(milliseconds(chapter.start, chapter.time_base));
    }
    return facts;
}

uint32_t takenAt(const std::filesystem::path& path) {
    struct Unref {
        void operator()(ExifData* data) const { exif_data_unref(data); }
    };
    const std::unique_ptr<ExifData, Unref> data(exif_data_new_from_file(path.c_str()));
    if (data == nullptr) {
        return 0;
    }
    ExifEntry* const entry =
        exif_content_get_entry(data->ifd[EXIF_IFD_EXIF], EXIF_TAG_DATE_TIME_ORIGINAL);
    std::array<char, sizeof "2024:05:31 10:00:00"> text{};
    std::tm time{};
    if (entry == nullptr || exif_entry_get_value(entry, text.data(), text.size()) == nullptr ||
        strptime(text.data(), "%Y:%m:%d %H:%M:%S", &time) == nullptr) {
        return 0;
    }
    return numberOf(timegm(&time));
}

MediaFacts photoFacts(const std::filesystem::path& path) {
    MediaFacts facts = pictureFacts(openInput(path, "jpeg_pipe").get());
    facts.frameRateNumerator = 0;
    facts.frameRateDenominator = 0;
    facts.progressive = false;
    facts.created = takenAt(path);
    return facts;
}

bool isPlaceholder(const std::filesystem::path& path) {
    std::array<char, 16> start{};
    std::ifstream file(path, std::ios::binary);
    file.read(start.data(), start.size());
    return !file.bad() && std::ranges::count(start, '\0') == std::ssize(start);
}

}  // namespace

std::optional<MediaFacts> readMediaFacts(const std::filesystem::path& path) {
    if (isPlaceholder(path)) {
        return std::nullopt;
    }
    return path.extension() == ".JPG" ? photoFacts(path) : videoFacts(path);
}

}  // namespace simulator
